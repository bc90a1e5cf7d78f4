// Each change in each form of a text, with the text that a person would write. MX0304 has the
// channels AI 1 to AI 4; "Mains suppression" is a parameter of the module, the others are those of
// its channels.
#include <mxstation/StationEdit.h>

#include "../StatedStation.h"

#include <gmock/gmock.h>

namespace {

using mxmodule::Origin;
using mxstation::AddModule;
using mxstation::AddReserve;
using mxstation::MoveEntry;
using mxstation::NameEntry;
using mxstation::NoteChannel;
using mxstation::PinAll;
using mxstation::PinEntry;
using mxstation::RemoveEntry;
using mxstation::SetReserve;
using mxstation::SetValue;
using testing::HasSubstr;

std::string after(const std::string& source, const mxstation::StationEdit& edit)
{
    return mxstation::edited(statedStation(source), edit);
}

// Its findings as "LINE:COLUMN TEXT", or "request TEXT".
std::vector<std::string> refused(const std::string& source, const mxstation::StationEdit& edit)
{
    try {
        return {"done: " + after(source, edit)};
    } catch (const mxmodule::Failure& failure) {
        std::vector<std::string> shown;
        for (const auto& finding : failure.findings()) {
            const std::size_t file = finding.place.find("line.yaml");
            const std::string place = finding.place.substr(file + std::string("line.yaml").size());
            shown.push_back((finding.origin == Origin::Request ? "request" : place.substr(1)) +
                            " " + finding.text);
        }
        return shown;
    }
}

TEST(StationEdit, AddsModulesToLines)
{
    const std::string row = R"(# The row
modules:
  # doors
  - MX0116.bin # all of them
  # valves
  - {module: MX0208.bin}
  # - MX0404.bin
modbus: {parameters: {address: 0}}
)";
    EXPECT_EQ(after(row, AddModule{0, "../mx/a.yaml", ""}), R"(# The row
modules:
  - ../mx/a.yaml
  # doors
  - MX0116.bin # all of them
  # valves
  - {module: MX0208.bin}
  # - MX0404.bin
modbus: {parameters: {address: 0}}
)");
    EXPECT_EQ(after(row, AddModule{1, "5a030304", "Level: 1"}), R"(# The row
modules:
  # doors
  - MX0116.bin # all of them
  - module: 5a030304
    name: "Level: 1"
  # valves
  - {module: MX0208.bin}
  # - MX0404.bin
modbus: {parameters: {address: 0}}
)");
    EXPECT_EQ(after(row, AddReserve{2, 4, 0, "flow meter"}), R"(# The row
modules:
  # doors
  - MX0116.bin # all of them
  # valves
  - {module: MX0208.bin}
  - reserve: {in: 4, name: flow meter}
  # - MX0404.bin
modbus: {parameters: {address: 0}}
)");
}

TEST(StationEdit, KeepsBlankLinesBetweenEntries)
{
    const std::string row = "modules:\n- a.bin\n\n- module: b.bin\n  name: B\n\n- c.bin\n\n# end\n";
    EXPECT_EQ(after(row, AddModule{1, "x.bin", ""}),
              "modules:\n- a.bin\n\n- x.bin\n\n- module: b.bin\n  name: B\n\n- c.bin\n\n# end\n");
    EXPECT_EQ(after(row, AddModule{0, "x.bin", ""}),
              "modules:\n- x.bin\n\n- a.bin\n\n- module: b.bin\n  name: B\n\n- c.bin\n\n# end\n");
    EXPECT_EQ(after(row, AddModule{3, "x.bin", ""}),
              "modules:\n- a.bin\n\n- module: b.bin\n  name: B\n\n- c.bin\n\n- x.bin\n\n# end\n");
    EXPECT_EQ(after(row, RemoveEntry{0}),
              "modules:\n- module: b.bin\n  name: B\n\n- c.bin\n\n# end\n");
    EXPECT_EQ(after(row, RemoveEntry{1}), "modules:\n- a.bin\n\n- c.bin\n\n# end\n");
    EXPECT_EQ(after(row, RemoveEntry{2}),
              "modules:\n- a.bin\n\n- module: b.bin\n  name: B\n\n# end\n");
    EXPECT_EQ(after("modules:\n- a.bin\n\n- b.bin\n", RemoveEntry{1}), "modules:\n- a.bin\n");
    EXPECT_EQ(after(row, MoveEntry{0, 2}),
              "modules:\n- module: b.bin\n  name: B\n\n- a.bin\n\n- c.bin\n\n# end\n");
    EXPECT_EQ(after(row, MoveEntry{2, 0}),
              "modules:\n- c.bin\n\n- a.bin\n\n- module: b.bin\n  name: B\n\n# end\n");
    EXPECT_EQ(after(row, MoveEntry{1, 3}),
              "modules:\n- a.bin\n\n- c.bin\n\n- module: b.bin\n  name: B\n\n# end\n");
}

// Those directly above an entry, and those further to the right than its dash.
TEST(StationEdit, MovesAndRemovesComments)
{
    const std::string row = R"(modules:
  # free

  # doors
  # of the entrance
  - MX0116.bin # all of them
    # later: more
  # valves
  -
    # within
    module: MX0208.bin
    name: Valves
  # end
)";
    EXPECT_EQ(after(row, MoveEntry{1, 0}), R"(modules:
  # free

  # valves
  -
    # within
    module: MX0208.bin
    name: Valves
  # doors
  # of the entrance
  - MX0116.bin # all of them
    # later: more
  # end
)");
    EXPECT_EQ(after(row, MoveEntry{0, 2}), after(row, MoveEntry{1, 0}));
    EXPECT_EQ(after(row, RemoveEntry{0}), R"(modules:
  # free

  # valves
  -
    # within
    module: MX0208.bin
    name: Valves
  # end
)");
    EXPECT_EQ(after(row, RemoveEntry{1}), R"(modules:
  # free

  # doors
  # of the entrance
  - MX0116.bin # all of them
    # later: more
  # end
)");
    EXPECT_EQ(after(row, MoveEntry{1, 1}), row);
    EXPECT_EQ(after(row, MoveEntry{1, 2}), row);
}

TEST(StationEdit, KeepsLineEndsAndAMissingLastOne)
{
    const std::string row = "modules:\r\n- a.bin # a\r\n- b.bin";
    EXPECT_EQ(after(row, AddModule{2, "x.bin", "Xa"}),
              "modules:\r\n- a.bin # a\r\n- b.bin\r\n- module: x.bin\r\n  name: Xa");
    EXPECT_EQ(after(row, MoveEntry{1, 0}), "modules:\r\n- b.bin\r\n- a.bin # a");
    EXPECT_EQ(after(row, RemoveEntry{1}), "modules:\r\n- a.bin # a");
    EXPECT_EQ(after(row, PinEntry{1, 4, {}}),
              "modules:\r\n- a.bin # a\r\n- module: b.bin\r\n  at: {in: 4}");
    EXPECT_EQ(after("modules:\r\n- module: b.bin\r\n  name: B", NameEntry{0, ""}),
              "modules:\r\n- module: b.bin");
}

TEST(StationEdit, ChangesBrackets)
{
    const std::string row = "modules: [a.bin, {module: b.bin, name: it's}, *c ] # row\n";
    const std::string anchored = "modules: [&a a.bin, {module: b.bin, name: it's}, *a ] # row\n";
    EXPECT_EQ(after(anchored, AddModule{1, "x.bin", ""}),
              "modules: [&a a.bin, x.bin, {module: b.bin, name: it's}, *a ] # row\n");
    EXPECT_EQ(after(anchored, AddReserve{3, 0, 2, ""}),
              "modules: [&a a.bin, {module: b.bin, name: it's}, *a, {reserve: {out: 2}} ] # row\n");
    EXPECT_EQ(after(anchored, MoveEntry{1, 3}),
              "modules: [&a a.bin, *a, {module: b.bin, name: it's} ] # row\n");
    EXPECT_EQ(after(anchored, RemoveEntry{2}),
              "modules: [&a a.bin, {module: b.bin, name: it's} ] # row\n");
    EXPECT_EQ(after(anchored, RemoveEntry{1}), "modules: [&a a.bin, *a ] # row\n");
    EXPECT_EQ(after(anchored, NameEntry{1, "Bee"}),
              "modules: [&a a.bin, {module: b.bin, name: Bee}, *a ] # row\n");
    EXPECT_EQ(after("modules: [a.bin]", RemoveEntry{0}), "modules: []");
    EXPECT_EQ(after("modules: [a.bin,]", RemoveEntry{0}), "modules: []");
    EXPECT_EQ(after("modules: [a.bin, # a\n  b.bin # b\n]", RemoveEntry{1}),
              "modules: [a.bin # a\n   # b\n]");
}

TEST(StationEdit, KeepsJson)
{
    const std::string row = R"({
  "modules": [
    "a.bin",
    {
      "module": "b.bin"
    }
  ]
}
)";
    EXPECT_EQ(after(row, AddModule{2, "../x.bin", "X"}), R"({
  "modules": [
    "a.bin",
    {
      "module": "b.bin"
    },
    {"module": "../x.bin", "name": "X"}
  ]
}
)");
    EXPECT_EQ(after(row, AddModule{0, "x.bin", ""}), R"({
  "modules": [
    "x.bin",
    "a.bin",
    {
      "module": "b.bin"
    }
  ]
}
)");
    EXPECT_EQ(after(row, MoveEntry{1, 0}), R"({
  "modules": [
    {
      "module": "b.bin"
    },
    "a.bin"
  ]
}
)");
    EXPECT_EQ(after(row, RemoveEntry{1}), "{\n  \"modules\": [\n    \"a.bin\"\n  ]\n}\n");
    EXPECT_EQ(after(row, NoteChannel{0, "1", "P_101", ""}), R"({
  "modules": [
    {"module": "a.bin", "channels": {"1": {"alias": "P_101"}}},
    {
      "module": "b.bin"
    }
  ]
}
)");
}

TEST(StationEdit, AddsTheFirstModule)
{
    const AddModule first{0, "a.bin", ""};
    EXPECT_EQ(after("", first), "modules:\n  - a.bin\n");
    EXPECT_EQ(after("# nothing yet", first), "# nothing yet\nmodules:\n  - a.bin");
    EXPECT_EQ(after("station: A # x\r\n", first), "station: A # x\r\nmodules:\r\n  - a.bin\r\n");
    EXPECT_EQ(after("---\nstation: A\n...\n", first),
              "---\nstation: A\nmodules:\n  - a.bin\n...\n");
    EXPECT_EQ(after("modules: [] # none\nlayout: plain\n", first),
              "modules: # none\n  - a.bin\nlayout: plain\n");
    EXPECT_EQ(after("modules:", first), "modules:\n  - a.bin");
    EXPECT_EQ(after("modules: []\n    # later\n", first), "modules:\n    - a.bin\n    # later\n");
    EXPECT_EQ(after("modules: ~\n", first), "modules:\n  - a.bin\n");
    EXPECT_EQ(after("modules:\n# later\nlayout: plain\n", first),
              "modules:\n  - a.bin\n# later\nlayout: plain\n");
    EXPECT_EQ(after("modules: [ # none\n]", first), "modules: [a.bin # none\n]");
    EXPECT_EQ(after("{}", first), "{modules: [a.bin]}");
    EXPECT_EQ(after("{\"station\": \"A\"}", first),
              "{\"station\": \"A\", \"modules\": [\"a.bin\"]}");
    EXPECT_EQ(after("{\"modules\": []}", first), "{\"modules\": [\"a.bin\"]}");
    EXPECT_EQ(after("{modules: null, station: A}", first), "{modules: [a.bin], station: A}");
    EXPECT_EQ(after("modules:\n  # doors\n  - a.bin # x\n# end\n", RemoveEntry{0}),
              "modules: []\n# end\n");
}

TEST(StationEdit, NamesEntries)
{
    EXPECT_EQ(after("modules:\n- a.bin # x\n", NameEntry{0, "Größe"}),
              "modules:\n- module: a.bin # x\n  name: Größe\n");
    EXPECT_EQ(after("modules:\n- module: a.bin\n  name: 'A' # x\n", NameEntry{0, "yes"}),
              "modules:\n- module: a.bin\n  name: \"yes\" # x\n");
    EXPECT_EQ(after("modules:\n- module: a.bin\n  name: 'A' # x\n", NameEntry{0, ""}),
              "modules:\n- module: a.bin\n  # x\n");
    EXPECT_EQ(after("modules:\n- name: A\n  module: a.bin\n", NameEntry{0, ""}),
              "modules:\n- module: a.bin\n");
    EXPECT_EQ(after("modules:\n- name: A # x\n  # y\n  module: a.bin\n", NameEntry{0, ""}),
              "modules:\n- # x\n  # y\n  module: a.bin\n");
    EXPECT_EQ(after("modules: [{name: A, module: a.bin}]", NameEntry{0, ""}),
              "modules: [{module: a.bin}]");
    EXPECT_EQ(after("modules:\n- reserve: {in: 4}\n", NameEntry{0, "later"}),
              "modules:\n- reserve: {in: 4, name: later}\n");
    EXPECT_EQ(after("modules:\n- reserve:\n    name: later\n    in: 4\n", NameEntry{0, ""}),
              "modules:\n- reserve:\n    in: 4\n");
}

TEST(StationEdit, PinsEntries)
{
    EXPECT_EQ(after("modules:\n- a.bin # x\n", PinEntry{0, 3, 4}),
              "modules:\n- module: a.bin # x\n  at: {in: 3, out: 4}\n");
    EXPECT_EQ(
        after("modules:\n- module: a.bin\n  at: {in: 0x10, out: 7} # x\n", PinEntry{0, 16, 8}),
        "modules:\n- module: a.bin\n  at: {in: 0x10, out: 8} # x\n");
    EXPECT_EQ(after("modules:\n- module: a.bin\n  at: {in: 1} # x\n", PinEntry{0, {}, 8}),
              "modules:\n- module: a.bin\n  at: {out: 8} # x\n");
    EXPECT_EQ(after("modules:\n- module: a.bin\n  at:\n    # first\n    in: 1 # x\n",
                    PinEntry{0, {}, {}}),
              "modules:\n- module: a.bin\n  # first\n  # x\n");
    EXPECT_EQ(after("modules: [{reserve: {in: 1}, at: {in: 1}}]", PinEntry{0, {}, {}}),
              "modules: [{reserve: {in: 1}}]");
    EXPECT_EQ(after("modules: [{reserve: {in: 1}, at: {in: 1}}]", PinEntry{0, 1, {}}),
              "modules: [{reserve: {in: 1}, at: {in: 1}}]");
    EXPECT_EQ(after("modules: [MX0116.bin, MX0208.bin]", PinAll{}),
              "modules: [{module: MX0116.bin, at: {in: 0}}, {module: MX0208.bin, at: {in: 2, out: "
              "0}}]");
}

TEST(StationEdit, SetsReservedPlaces)
{
    EXPECT_EQ(after("modules:\n- reserve: {in: 4, name: x}\n", SetReserve{0, 0, 6}),
              "modules:\n- reserve: {name: x, out: 6}\n");
    EXPECT_EQ(after("modules:\n- a.bin\n", SetReserve{0, 4, 0}),
              "modules:\n- module: a.bin\n  reserve: {in: 4}\n");
    EXPECT_EQ(
        after("modules:\n- module: a.bin\n  reserve: {in: 4, name: x}\n", SetReserve{0, 0, 0}),
        "modules:\n- module: a.bin\n");
}

TEST(StationEdit, ReplacesValuesWhereTheyAreStated)
{
    const std::string row = R"(modules:
- module: MX0304.bin
  parameters:
    Mains suppression: 60 # as in Boston
    AI 1: {Upper limit: 9 V, Signal range: "4-20 mA"}
    AI 2/Upper limit: 8 V
    "#7": 2
)";
    const auto with = [&row](const std::string& was, const std::string& is) {
        std::string text = row;
        return text.replace(text.find(was), was.size(), is);
    };
    EXPECT_EQ(after(row, SetValue{0, "Mains suppression", "50 Hz"}), with("60 # as", "50 Hz # as"));
    EXPECT_EQ(after(row, SetValue{0, "0/Upper limit", "-1 V"}), with("9 V,", "\"-1 V\","));
    EXPECT_EQ(after(row, SetValue{0, "AI 1/Signal range", "0-10 V"}), with("4-20 mA", "0-10 V"));
    EXPECT_EQ(after(row, SetValue{0, "AI 2/Upper limit", "7"}), with("8 V", "7"));
    EXPECT_EQ(after(row, SetValue{0, "AI 1/Filter depth", "3"}),
              with("\"4-20 mA\"}", "\"4-20 mA\", Filter depth: 3}"));
    EXPECT_EQ(after(row, SetValue{0, "AI 3/Filter depth", "3"}),
              row + "    AI 3: {Filter depth: 3}\n");
    EXPECT_EQ(after(row, SetValue{0, "AI 1/Upper limit", {}}), with("Upper limit: 9 V, ", ""));
    EXPECT_EQ(after(row, SetValue{0, "AI 2/Upper limit", {}}),
              with("    AI 2/Upper limit: 8 V\n", ""));
    EXPECT_EQ(after(row, SetValue{0, "Mains suppression", {}}),
              with("Mains suppression: 60 # as", "# as"));
    EXPECT_EQ(after(row, SetValue{0, "AI 4/Upper limit", {}}), row);
}

TEST(StationEdit, AddsAndRemovesTheOnlyValue)
{
    EXPECT_EQ(after("modules:\n- MX0304.bin # x\n", SetValue{0, "AI 1/Upper limit", "9 V"}),
              "modules:\n- module: MX0304.bin # x\n  parameters:\n    AI 1: {Upper limit: 9 V}\n");
    EXPECT_EQ(after("modules:\n- module: MX0304.bin # x\n  parameters: # p\n    AI 1:\n      # u\n"
                    "      Upper limit: '9 V # no' # v\n  name: X\n",
                    SetValue{0, "AI 1/Upper limit", {}}),
              "modules:\n- module: MX0304.bin # x\n  # p\n  # u\n  # v\n  name: X\n");
    EXPECT_EQ(after("modules: [{parameters: {AI 1: {Upper limit: 9}}, module: MX0304.bin}]",
                    SetValue{0, "AI 1/Upper limit", {}}),
              "modules: [{module: MX0304.bin}]");
    EXPECT_EQ(after("modules:\n- parameters:\n    AI 1/Upper limit: 9\n  module: MX0304.bin\n",
                    SetValue{0, "AI 1/Upper limit", {}}),
              "modules:\n- module: MX0304.bin\n");
}

// A module that is missing, values out of range, keys that are unknown.
TEST(StationEdit, ChangesStationsWithErrors)
{
    EXPECT_EQ(after("modules:\n- gone.bin\n", SetValue{0, "AI 1/Upper limit", "9 V"}),
              "modules:\n- module: gone.bin\n  parameters:\n    AI 1/Upper limit: 9 V\n");
    EXPECT_EQ(after("modules:\n- module: gone.bin\n  parameters: {AI 1: {Upper limit: 9 V}}\n",
                    SetValue{0, "AI 1/Upper limit", {}}),
              "modules:\n- module: gone.bin\n");
    EXPECT_EQ(after("layout: none\nmodules:\n- module: MX0304.bin\n  nmae: x\n  at: {in: a}\n"
                    "  parameters: {Mains suppression: 999}\n",
                    SetValue{0, "Mains suppression", "998"}),
              "layout: none\nmodules:\n- module: MX0304.bin\n  nmae: x\n  at: {in: a}\n"
              "  parameters: {Mains suppression: 998}\n");
    EXPECT_EQ(after("modules:\n-\n- a.bin\n- [b]\n", MoveEntry{0, 3}),
              "modules:\n- a.bin\n- [b]\n-\n");
    EXPECT_EQ(after("modules:\n- a.bin\n-\n", RemoveEntry{1}), "modules:\n- a.bin\n");
}

TEST(StationEdit, NotesChannels)
{
    EXPECT_EQ(after("modules:\n- MX0304.bin # x\n", NoteChannel{0, "AI 1", "LT_101", "tank 1"}),
              "modules:\n- module: MX0304.bin # x\n  channels:\n    AI 1: {alias: LT_101, comment: "
              "tank 1}\n");
    const std::string row = R"(modules:
- module: MX0304.bin
  channels: # levels
    0: {alias: LT_101} # one
    AI 2:
      alias: LT_102
      comment: tank 2
)";
    const auto with = [&row](const std::string& was, const std::string& is) {
        std::string text = row;
        return text.replace(text.find(was), was.size(), is);
    };
    EXPECT_EQ(after(row, NoteChannel{0, "AI 1", "LT_1", "a, b"}),
              with("alias: LT_101", "alias: LT_1, comment: \"a, b\""));
    EXPECT_EQ(after(row, NoteChannel{0, "AI 1", "", "first"}),
              with("alias: LT_101", "comment: first"));
    EXPECT_EQ(after(row, NoteChannel{0, "0 AI 1", "", ""}),
              with("0: {alias: LT_101} # one", "# one"));
    EXPECT_EQ(after(row, NoteChannel{0, "1", "LT_102", ""}), with("      comment: tank 2\n", ""));
    EXPECT_EQ(after(row, NoteChannel{0, "AI 3", "LT_103", ""}),
              row + "    AI 3: {alias: LT_103}\n");
    EXPECT_EQ(after("modules: [{module: MX0304.bin, channels: {AI 1: {alias: A}}}]",
                    NoteChannel{0, "AI 1", "", ""}),
              "modules: [{module: MX0304.bin}]");
}

// In MX0602, channel #24 is "State 1", #23 and #30 are both "Gate 1 open".
TEST(StationEdit, StatesNewNotesUnderTheBestWord)
{
    const std::string row = "modules:\n- MX0602.bin\n";
    const auto noted = [](const std::string& note) {
        return "modules:\n- module: MX0602.bin\n  channels:\n    " + note + "\n";
    };
    EXPECT_EQ(after(row, NoteChannel{0, "#24", "S_1", ""}), noted("State 1: {alias: S_1}"));
    EXPECT_EQ(after(row, NoteChannel{0, "1", "S_1", ""}), noted("State 1: {alias: S_1}"));
    EXPECT_EQ(after(row, NoteChannel{0, "#30", "G_1", ""}), noted("\"#30\": {alias: G_1}"));
    EXPECT_EQ(after(noted("1 State 1: {alias: S_1}"), NoteChannel{0, "#24", "S_2", ""}),
              noted("1 State 1: {alias: S_2}"));
}

TEST(StationEdit, RejectsWhatDoesNotExist)
{
    const std::string row = "modules: [MX0304.bin, {reserve: {in: 2}}]";
    EXPECT_EQ(refused(row, RemoveEntry{2}),
              std::vector<std::string>{"request there is no entry 2, the station has 2 of them"});
    EXPECT_EQ(refused(row, AddModule{3, "a.bin", ""}),
              std::vector<std::string>{
                  "request there is no place before entry 3, the station has 2 entries"});
    EXPECT_EQ(refused(row, MoveEntry{0, 3}).front().substr(0, 7), "request");
    EXPECT_THAT(refused(row, SetValue{0, "AI 1/Uper limit", "1"}).front(),
                testing::AllOf(HasSubstr("request"), HasSubstr("AI 1/Upper limit")));
    EXPECT_THAT(refused(row, SetValue{0, "Upper limit", {}}).front(), HasSubstr("request"));
    EXPECT_THAT(refused(row, NoteChannel{0, "AI 9", "x", ""}).front(),
                HasSubstr("request the module has no channel \"AI 9\""));
    EXPECT_EQ(refused(row, NoteChannel{1, "AI 1", "x", ""}),
              std::vector<std::string>{"request this entry has no module, so there is no channel"});
    EXPECT_THAT(refused(row, SetValue{1, "AI 1", "x"}).front(), HasSubstr("no parameter"));
}

TEST(StationEdit, RejectsTextsAndNumbersOfNoStation)
{
    const std::string row = "modules:\n- MX0304.bin\n- reserve: {in: 2}\n";
    EXPECT_THAT(refused(row, AddModule{0, "", ""}).front(),
                HasSubstr("request found \"\", expected an mx file"));
    EXPECT_THAT(refused(row, AddReserve{0, 0, 0, ""}).front(), HasSubstr("request"));
    EXPECT_THAT(refused(row, SetReserve{1, 0, 0}).front(), HasSubstr("has no bytes"));
    EXPECT_THAT(refused(row, PinEntry{0, 4000000000, {}}).front(),
                HasSubstr("request found \"4000000000\", expected a whole number from 0 to"));
    EXPECT_THAT(refused(row, NameEntry{0, std::string(70000, 'x')}).front(),
                HasSubstr("request found a text of 70000 bytes, expected a name"));
    EXPECT_THAT(refused(row, SetValue{0, "Mains suppression", ""}).front(),
                HasSubstr("request found \"\", expected the value of a parameter"));
}

TEST(StationEdit, RejectsWhatAliasesRepeat)
{
    const std::string row = "modules:\n- &a\n  module: MX0304.bin\n- *a\n- module: &m MX0304.bin\n"
                            "- module: *m\n";
    EXPECT_EQ(refused(row, NameEntry{0, "x"}),
              std::vector<std::string>{"4:3 this alias repeats what line 2 states, and each entry "
                                       "has content of its own"});
    EXPECT_THAT(refused(row, SetValue{1, "Mains suppression", "60"}).front(), HasSubstr("4:3 "));
    EXPECT_THAT(refused(row, PinEntry{1, 0, {}}).front(), HasSubstr("4:3 "));
    EXPECT_EQ(refused(row, RemoveEntry{0}),
              std::vector<std::string>{"4:3 this alias repeats what line 2 states, and that would "
                                       "be gone"});
    EXPECT_THAT(refused(row, RemoveEntry{2}).front(), HasSubstr("6:11 "));
    EXPECT_EQ(refused(row, MoveEntry{0, 2}),
              std::vector<std::string>{"4:3 this alias repeats what line 2 states, and that would "
                                       "be after it"});
    EXPECT_THAT(refused(row, MoveEntry{3, 0}).front(), HasSubstr("6:11 "));
    EXPECT_EQ(after(row, RemoveEntry{1}),
              "modules:\n- &a\n  module: MX0304.bin\n- module: &m MX0304.bin\n- module: *m\n");
    EXPECT_EQ(
        after(row, MoveEntry{1, 4}),
        "modules:\n- &a\n  module: MX0304.bin\n- module: &m MX0304.bin\n- module: *m\n- *a\n");
    EXPECT_THAT(refused("x: &l [a.bin]\nmodules: *l\n", RemoveEntry{0}).front(),
                HasSubstr("2:10 this alias repeats"));
}

TEST(StationEdit, RejectsWhatItCannotChange)
{
    const std::string cannot = " this cannot be changed as it is written";
    EXPECT_EQ(refused("modules: [module: a.bin]", RemoveEntry{0}),
              std::vector<std::string>{"1:10" + cannot});
    EXPECT_EQ(refused("modules:\n- module: a.bin\n  name: >-\n    x\n", NameEntry{0, "y"}),
              std::vector<std::string>{"3:3" + cannot});
    EXPECT_EQ(refused("modules:\n- module: a.bin\n  at: 4\n", PinEntry{0, 4, {}}),
              std::vector<std::string>{"3:7" + cannot});
    EXPECT_THAT(refused("modules: {", RemoveEntry{0}), testing::SizeIs(1));
    EXPECT_EQ(refused("modules: a.bin\n", AddModule{0, "b.bin", ""}),
              std::vector<std::string>{"1:10 found \"a.bin\", expected a list of modules"});
    EXPECT_EQ(refused("- a\n", AddModule{0, "b.bin", ""}),
              std::vector<std::string>{"1:1 found a list, expected a map with \"modules\""});
    mxstation::Station station = statedStation("modules: [MX0304.bin]");
    station.source.clear();
    EXPECT_THROW(mxstation::edited(station, RemoveEntry{0}), mxmodule::Failure);
}

} // namespace
