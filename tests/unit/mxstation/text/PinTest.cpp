// Each form of an entry, with the text that a person would write. MX0116 has 2 bytes of inputs,
// MX0208 a byte of inputs and one of outputs, MX0404 8 bytes of outputs, MX0001 no data.
#include <mxstation/Pin.h>

#include "../StatedStation.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace {

using mxstation::Plan;
using mxstation::Station;
using testing::ElementsAre;
using testing::HasSubstr;

std::string pinnedText(const std::string& source)
{
    const Station station = statedStation(source);
    return mxstation::pinned(station, mxstation::plan(station));
}

std::vector<mxmodule::Finding> findingsOfPin(const std::string& source)
{
    try {
        pinnedText(source);
    } catch (const mxmodule::Failure& failure) {
        return failure.findings();
    }
    return {};
}

TEST(Pin, turnsNamesIntoMaps)
{
    EXPECT_EQ(pinnedText(R"(# The row
modules:
  - MX0116.bin  # doors
  - "MX0208.bin"
# all dosing
  - 'MX0404.bin'
  - MX0001.bin # no data, no address
)"),
              R"(# The row
modules:
  - module: MX0116.bin  # doors
    at: {in: 0}
  - module: "MX0208.bin"
    at: {in: 2, out: 0}
# all dosing
  - module: 'MX0404.bin'
    at: {out: 1}
  - MX0001.bin # no data, no address
)");
}

TEST(Pin, keepsTheRegistersOfTheCoupler)
{
    EXPECT_EQ(pinnedText(R"(modbus: {parameters: {address: 0x4000, stride: 0x40}} # hexadecimal
modules:
  - MX0116.bin
)"),
              R"(modbus: {parameters: {address: 0x4000, stride: 0x40}} # hexadecimal
modules:
  - module: MX0116.bin
    at: {in: 0}
)");
    EXPECT_EQ(pinnedText(R"(modules:
  - MX0116.bin
modbus:
  commit: {address: 7, reads: active}
  parameters:
    address: 16
)"),
              R"(modules:
  - module: MX0116.bin
    at: {in: 0}
modbus:
  commit: {address: 7, reads: active}
  parameters:
    address: 16
)");
}

TEST(Pin, addsALineToMaps)
{
    EXPECT_EQ(pinnedText(R"(modules:
- module: MX0116.bin # doors
  # of the entrance
  name: Doors
-   parameters:
      Behaviour on bus fault: Hold last value
    module: MX0208.bin
- reserve: {in: 4, out: 2, name: "a } b"} # later
- reserve:
    in: 2
- module: MX0116.bin
  reserve: {in: 4}
)"),
              R"(modules:
- module: MX0116.bin # doors
  at: {in: 0}
  # of the entrance
  name: Doors
-   parameters:
      Behaviour on bus fault: Hold last value
    module: MX0208.bin
    at: {in: 2, out: 0}
- reserve: {in: 4, out: 2, name: "a } b"} # later
  at: {in: 3, out: 1}
- at: {in: 7}
  reserve:
    in: 2
- module: MX0116.bin
  at: {in: 9}
  reserve: {in: 4}
)");
}

TEST(Pin, addsToBrackets)
{
    EXPECT_EQ(
        pinnedText(R"(modules: [MX0116.bin, {module: MX0208.bin}, # two
  {name: it's, module: "MX0404.bin" },{reserve: {out: 2}, }, MX0116.bin ]
)"),
        R"(modules: [{module: MX0116.bin, at: {in: 0}}, {module: MX0208.bin, at: {in: 2, out: 0}}, # two
  {name: it's, module: "MX0404.bin", at: {out: 1} },{reserve: {out: 2}, at: {out: 9}, }, {module: MX0116.bin, at: {in: 3}} ]
)");
}

TEST(Pin, keepsJson)
{
    EXPECT_EQ(pinnedText(R"({
  "station": "Dosing",
  "modules": [
    "MX0116.bin",
    {
      "module": "MX0208.bin",
      "at": {"in": 4}
    },
    {"name": "Doses", "module": "MX0404.bin"}
  ]
}
)"),
              R"({
  "station": "Dosing",
  "modules": [
    {"module": "MX0116.bin", "at": {"in": 0}},
    {
      "module": "MX0208.bin",
      "at": {"in": 4, "out": 0}
    },
    {"name": "Doses", "module": "MX0404.bin", "at": {"out": 1}}
  ]
}
)");
}

TEST(Pin, completesStatedAddresses)
{
    EXPECT_EQ(pinnedText(R"(modules:
- module: MX0208.bin
  at: {out: 0x10} # as drawn
- module: MX0208.bin
  at:
    in: 7 # as drawn
- {module: MX0208.bin, at: {}}
- module: MX0208.bin
  at: {in: 20, }
)"),
              R"(modules:
- module: MX0208.bin
  at: {out: 0x10, in: 0} # as drawn
- module: MX0208.bin
  at:
    in: 7 # as drawn
    out: 17
- {module: MX0208.bin, at: {in: 8, out: 18}}
- module: MX0208.bin
  at: {in: 20, out: 19, }
)");
}

TEST(Pin, keepsLineEndsAndAMissingLastOne)
{
    EXPECT_EQ(pinnedText("modules:\r\n- MX0116.bin # a\r\n- module: MX0208.bin"),
              "modules:\r\n- module: MX0116.bin # a\r\n  at: {in: 0}\r\n"
              "- module: MX0208.bin\r\n  at: {in: 2, out: 0}");
    EXPECT_EQ(pinnedText("modules: [MX0116.bin]"), "modules: [{module: MX0116.bin, at: {in: 0}}]");
}

TEST(Pin, keepsAByteOrderMark)
{
    EXPECT_EQ(pinnedText("\xEF\xBB\xBF{modules: [MX0116.bin]}"),
              "\xEF\xBB\xBF{modules: [{module: MX0116.bin, at: {in: 0}}]}");
}

TEST(Pin, changesNothingTwice)
{
    const std::string once = pinnedText(R"(modules:
- MX0116.bin
- {module: MX0208.bin}
- reserve: {in: 2}
- module: MX0404.bin
)");
    EXPECT_EQ(pinnedText(once), once);
}

// Aliases of values that are not changed are kept.
TEST(Pin, keepsAnchorsAndAliases)
{
    EXPECT_EQ(pinnedText(R"(modules:
- &doors MX0116.bin
- module: &valves MX0208.bin
- module: *valves
- {name: x, module: *valves}
- !!str MX0116.bin
)"),
              R"(modules:
- module: &doors MX0116.bin
  at: {in: 0}
- module: &valves MX0208.bin
  at: {in: 2, out: 0}
- at: {in: 3, out: 1}
  module: *valves
- {at: {in: 4, out: 2}, name: x, module: *valves}
- module: !!str MX0116.bin
  at: {in: 5}
)");
}

TEST(Pin, rejectsEntriesThatAliasesRepeat)
{
    const auto findings = findingsOfPin(R"(modules:
- &doors MX0116.bin
- *doors
- *doors
- module: MX0208.bin
  at: &first {}
- module: MX0116.bin
  at: *first
)");
    ASSERT_THAT(findings, testing::SizeIs(3));
    EXPECT_THAT(findings[0].place, HasSubstr("line.yaml:3:3"));
    EXPECT_EQ(findings[0].text, "this alias repeats what line 2 states, and each place has "
                                "addresses of its own");
    EXPECT_THAT(findings[0].excerpt, HasSubstr("- *doors\n"));
    EXPECT_THAT(findings[1].place, HasSubstr("line.yaml:4:3"));
    EXPECT_THAT(findings[2].place, HasSubstr("line.yaml:8:7"));
}

// A name over two lines, and a pair in a list without brackets: YAML, but not to be changed by
// insertion.
TEST(Pin, rejectsEntriesThatItCannotChange)
{
    auto findings = findingsOfPin("modules:\n- MX0116.bin\n- >-\n  MX0208.bin\n");
    ASSERT_THAT(findings, testing::SizeIs(1));
    EXPECT_THAT(findings[0].place, HasSubstr("line.yaml:3:3"));
    EXPECT_EQ(findings[0].text, "addresses cannot be added to this entry as it is written");
    EXPECT_THAT(findings[0].hint, HasSubstr("at: {in: BYTE"));
    findings = findingsOfPin("modules: [MX0116.bin, module: MX0208.bin]\n");
    ASSERT_THAT(findings, testing::SizeIs(1));
    EXPECT_THAT(findings[0].place, HasSubstr("line.yaml:1:23"));
    findings = findingsOfPin("modules:\n- MX0116.bin\n- MX0208.bin\n- ? module\n  : MX0208.bin\n"
                             "- MX0208.bin\n");
    ASSERT_THAT(findings, testing::SizeIs(1));
    EXPECT_THAT(findings[0].place, HasSubstr("line.yaml:4:"));
}

TEST(Pin, rejectsAPlanWithErrorsAndAStationWithoutText)
{
    EXPECT_THAT(findingsOfPin("modules: [MX9999.bin]"), testing::SizeIs(1));
    Station station = statedStation("modules: [MX0116.bin]");
    station.source.clear();
    EXPECT_THROW(mxstation::pinned(station, mxstation::plan(station)), mxmodule::Failure);
}

// What pinning is for.
TEST(Pin, makesLaterChangesMoveNoOtherModule)
{
    const std::string once = pinnedText("layout: bytes-first\nmodules:\n- MX0304.bin\n"
                                        "- reserve: {in: 8, out: 2}\n- MX0116.bin\n- MX0404.bin\n");
    const Plan before = statedPlan(once);
    ASSERT_TRUE(before.ok());
    std::string changed = once;
    const std::string reserved = "- reserve: {in: 8, out: 2}\n";
    changed.replace(changed.find(reserved), reserved.size(),
                    "- module: MX0302.bin\n  reserve: {in: 8, out: 2}\n");
    const Plan after = statedPlan(changed);
    ASSERT_TRUE(after.ok());
    ASSERT_THAT(after.modules, testing::SizeIs(4));
    for (const std::size_t i : {0U, 1U, 2U}) {
        const auto& kept = after.modules[i == 0 ? 0 : i + 1];
        EXPECT_EQ(kept.name, before.modules[i].name);
        EXPECT_EQ(kept.input.offset, before.modules[i].input.offset);
        EXPECT_EQ(kept.output.offset, before.modules[i].output.offset);
    }
}

TEST(Pin, makesAModuleWithoutRoomAFinding)
{
    const std::string once = pinnedText("modules:\n- MX0116.bin\n- MX0208.bin\n");
    std::string changed = once;
    changed.insert(changed.find("- module: MX0208.bin"), "- MX0108.bin\n");
    const Plan plan = statedPlan(changed);
    ASSERT_FALSE(plan.ok());
    EXPECT_THAT(plan.findings[0].text, HasSubstr("byte 2 of the input image is not free"));
}

TEST(Pin, keepsTheAddressesOfEveryExample)
{
    std::size_t count = 0;
    for (const auto& file : std::filesystem::directory_iterator(EXAMPLE_STATIONS)) {
        const Station station = mxstation::readStation(file.path().string());
        const Plan plan = mxstation::plan(station);
        const std::string once = mxstation::pinned(station, plan);
        const Station again = mxstation::stationOf(once, file.path().string());
        const Plan same = mxstation::plan(again);
        ASSERT_TRUE(same.ok()) << file.path();
        for (std::size_t i = 0; i < plan.modules.size(); ++i) {
            EXPECT_EQ(same.modules[i].input.offset, plan.modules[i].input.offset);
            EXPECT_EQ(same.modules[i].output.offset, plan.modules[i].output.offset);
            const auto& at = again.entries[same.modules[i].entry].at;
            EXPECT_EQ(at.input.has_value(), plan.modules[i].input.size != 0);
        }
        EXPECT_EQ(mxstation::pinned(again, same), once) << file.path();
        ++count;
    }
    EXPECT_GE(count, 8U);
}

} // namespace
