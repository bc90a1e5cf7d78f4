// Worked out by hand: MX0304 has four words of inputs, MX0116 sixteen inputs of a bit, MX0208 eight
// outputs and six named inputs of a bit.
#include <mxstation/StationDiff.h>

#include "../StatedStation.h"

#include <gmock/gmock.h>
#include <mxmodule/ReadFile.h>
#include <nlohmann/json.hpp>

#include <TemporaryDirectory.h>

#include <fstream>

namespace {

using mxstation::ChangeKind;
using mxstation::compare;
using mxstation::StationChange;
using mxstation::StationDifference;
using nlohmann::json;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

StationDifference differenceOf(const std::string& a, const std::string& b)
{
    return compare(statedPlan(a), statedPlan(b));
}

// "KIND MODULE WHAT: A > B", with "!" for other values.
std::vector<std::string> shownChanges(const StationDifference& difference)
{
    std::vector<std::string> shown;
    for (const StationChange& change : difference.changes) {
        shown.push_back(std::string(changeKindName(change.kind)) + " " + change.module + " " +
                        change.subject + ": " + change.before + " > " + change.after +
                        (change.changesValues ? " !" : ""));
    }
    return shown;
}

const char* const levelsAndValves = R"(modules:
- {module: MX0304.bin, name: Levels}
- {module: MX0208.bin, name: Valves}
)";

const char* const withDoorsBetween = R"(modules:
- {module: MX0304.bin, name: Levels}
- {module: MX0116.bin, name: Doors}
- {module: MX0208.bin, name: Valves}
)";

TEST(StationDiff, findsNothingInTheSameStation)
{
    const auto difference = differenceOf(levelsAndValves, levelsAndValves);
    EXPECT_TRUE(difference.isSame());
    EXPECT_TRUE(difference.sameValues());
    EXPECT_THAT(difference.notes, IsEmpty());
    EXPECT_THAT(difference.text(),
                HasSubstr("No address and no parameter differs\n\nVerdict: a program bound to A "
                          "still reads the same values from B\n"));
}

TEST(StationDiff, findsWhatAnInsertedModuleMoves)
{
    const auto difference = differenceOf(levelsAndValves, withDoorsBetween);
    EXPECT_THAT(shownChanges(difference),
                ElementsAre("image  in: 9 bytes at 0-8 > 11 bytes at 0-10",
                            "module added Doors :  > 5a010116, in 8-9",
                            "module moved Valves : in 8, out 0 > in 10, out 0 !",
                            "channel moved Valves Overload 1: IX8_0 > IX10_0 !",
                            "channel moved Valves Overload 2: IX8_1 > IX10_1 !",
                            "channel moved Valves Overload 3: IX8_2 > IX10_2 !",
                            "channel moved Valves Overload 4: IX8_3 > IX10_3 !",
                            "channel moved Valves Overload 5: IX8_4 > IX10_4 !",
                            "channel moved Valves Overload 6: IX8_5 > IX10_5 !"));
    EXPECT_FALSE(difference.sameValues());
    EXPECT_THAT(difference.reasons(),
                ElementsAre("the module \"Valves\" is at in 10, out 0, it was at in 8, out 0"));
    EXPECT_THAT(
        difference.text(),
        HasSubstr("\nVerdict: a program bound to A no longer reads the same values from "
                  "B\n  the module \"Valves\" is at in 10, out 0, it was at in 8, out 0\n"));
}

TEST(StationDiff, keepsValuesWhenAModuleTakesAReservedPlace)
{
    const auto difference = differenceOf(R"(modules:
- {module: MX0304.bin, name: Levels}
- {reserve: {in: 2, name: doors}}
- {module: MX0208.bin, name: Valves}
)",
                                         withDoorsBetween);
    EXPECT_THAT(shownChanges(difference), ElementsAre("reserved  in: 8-9 doors > ",
                                                      "module added Doors :  > 5a010116, in 8-9"));
    EXPECT_TRUE(difference.sameValues());
}

TEST(StationDiff, findsRemovedModules)
{
    const auto difference = differenceOf(
        "modules: [{module: MX0304.bin, name: Levels}, {module: MX0001.bin, name: Supply}]",
        "modules: []");
    EXPECT_THAT(shownChanges(difference), ElementsAre("image  in: 8 bytes at 0-7 > 0 bytes",
                                                      "module removed Levels : 5a030304, in 0-7 >  "
                                                      "!",
                                                      "module removed Supply : 0bc1e800 > "));
    EXPECT_THAT(difference.reasons(), ElementsAre("the module \"Levels\" is gone"));
}

// A module whose mx file states no data may have channels all the same: a program reads them.
TEST(StationDiff, missesTheChannelsOfAModuleWithoutData)
{
    const auto bytes = mxmodule::readFile(std::string(EXAMPLE_TEXTS) + "/MX0001.yaml");
    std::string text(bytes.begin(), bytes.end());
    text.resize(text.find("dataSizes:"));
    const testkit::TemporaryDirectory directory;
    std::ofstream(directory.path("none.yaml")) << text << "dataSizes: ['Diagnosis,s=B']\n";
    std::ofstream(directory.path("one.yaml")) << text << "dataSizes: ['Diagnosis,s=B']\n"
                                              << "channels: [{name: A, in: Bit}]\n";
    const auto planOf = [&directory](const std::string& modules) {
        return mxstation::plan(
            mxstation::stationOf("modules: [" + modules + "]", directory.path("station.yaml")));
    };
    const auto withChannel = planOf("one.yaml");
    ASSERT_EQ(withChannel.input.size, 0U);
    ASSERT_EQ(withChannel.channels.size(), 1U);
    EXPECT_TRUE(compare(planOf("none.yaml"), planOf("")).sameValues());
    EXPECT_FALSE(compare(withChannel, planOf("")).sameValues());
}

TEST(StationDiff, findsAnotherType)
{
    const auto difference = differenceOf("modules: [{module: MX0108.bin, name: Doors}]",
                                         "modules: [{module: MX0104.bin, name: Doors}]");
    const auto shown = shownChanges(difference);
    EXPECT_EQ(shown.front(), "module type Doors : 5a010108 > 5a010104 !");
    EXPECT_THAT(shown, testing::Contains("channel removed Doors DI 8: IX0_7 >  !"));
    EXPECT_THAT(difference.reasons(),
                ElementsAre("the module \"Doors\" is of type 5a010104, it was of type 5a010108"));
}

TEST(StationDiff, namesParametersWhoseValuesDiffer)
{
    const auto difference = differenceOf(levelsAndValves, R"(modules:
- {module: MX0304.bin, name: Levels}
- {module: MX0208.bin, name: Valves,
   parameters: {Behaviour on bus fault: Hold last value, DO 2/Substitute value: 0}}
)");
    EXPECT_THAT(shownChanges(difference),
                ElementsAre("parameter Valves Behaviour on bus fault: Switch off > Hold last value",
                            "parameter Valves DO 2/Substitute value: 1 > 0"));
    EXPECT_TRUE(difference.sameValues());
    EXPECT_THAT(difference.notes, ElementsAre("changed parameters may change what values mean"));
}

TEST(StationDiff, showsImagesThatNoParameterExplains)
{
    const auto a = statedPlan(levelsAndValves);
    auto b = a;
    b.modules[1].image.push_back('\x07');
    EXPECT_THAT(shownChanges(compare(a, b)),
                ElementsAre("parameter image Valves : 2 bytes: 02 aa > 3 bytes: 02 aa 07"));
    b.modules[1].image.clear();
    EXPECT_THAT(shownChanges(compare(a, b)),
                ElementsAre("parameter image Valves : 2 bytes: 02 aa > no bytes"));
}

// The order of bytes matters to values of several bytes alone.
TEST(StationDiff, comparesTheOrderOfBytes)
{
    const std::string little = "layout: {byte_order: little}\n";
    const std::string bits = "modules: [{module: MX0116.bin, name: Doors}]";
    const auto ofBits = differenceOf(bits, little + bits);
    EXPECT_THAT(shownChanges(ofBits), ElementsAre("byte order  : big > little"));
    const auto ofWords = differenceOf(levelsAndValves, little + levelsAndValves);
    EXPECT_FALSE(ofWords.sameValues());
    EXPECT_THAT(ofWords.reasons(), ElementsAre("the byte order is little, it was big"));
    auto a = statedPlan(bits);
    a.channels[0].isBitField = true; // is addressed by bits
    a.channels[0].bits = 12;
    auto b = a;
    b.layout.byteOrder = mxstation::ByteOrder::Little;
    EXPECT_TRUE(compare(a, b).sameValues());
    a.channels[0].isBitField = false;
    a.channels[0].bits = 8; // has one byte
    b.channels = a.channels;
    EXPECT_TRUE(compare(a, b).sameValues());
}

TEST(StationDiff, findsStatusBytesThatMove)
{
    const std::string layout = "layout: {status_behind: {in: 1}, status_before: {out: 1}}\n";
    const auto difference =
        differenceOf(layout + levelsAndValves,
                     layout + levelsAndValves + "- {module: MX0116.bin, name: Doors}\n");
    EXPECT_THAT(shownChanges(difference),
                ElementsAre("image  in: 10 bytes at 0-9 > 12 bytes at "
                            "0-11",
                            "status  in: 9 > 11 !", "module added Doors :  > 5a010116, in 9-10"));
    EXPECT_THAT(difference.reasons(),
                ElementsAre("the status bytes of the input image are at 11, they were at 9"));
}

TEST(StationDiff, findsStatusBytesThatAreGone)
{
    const std::string row = "modules: [{module: MX0304.bin, name: Levels, at: {in: 4}}]";
    const std::string two = "layout: {status_before: {in: 2}}\n" + row;
    const std::string three = "layout: {status_before: {in: 3}}\n" + row;
    EXPECT_THAT(shownChanges(differenceOf(three, two)), ElementsAre("status  in: 0-2 > 0-1 !"));
    EXPECT_TRUE(differenceOf(two, three).sameValues());
}

TEST(StationDiff, findsAliasesAndModulesInAnotherOrder)
{
    const auto difference = differenceOf(R"(modules:
- {module: MX0304.bin, name: Levels, channels: {AI 2: {alias: Tank}}}
- {module: MX0404.bin, name: Doses}
)",
                                         R"(modules:
- {module: MX0404.bin, name: Doses}
- {module: MX0304.bin, name: Levels, channels: {AI 2: {alias: Well}}}
)");
    EXPECT_THAT(shownChanges(difference),
                ElementsAre("module order Doses : position 2 > position 1",
                            "module order Levels : position 1 > position 2",
                            "alias Levels AI 2: Tank > Well"));
    EXPECT_TRUE(difference.sameValues());
}

TEST(StationDiff, findsAnotherSignOrSizeAtTheSamePlace)
{
    const auto a = statedPlan("modules: [{module: MX0304.bin, name: Levels}]");
    auto b = a;
    b.channels[1].isSigned = !b.channels[1].isSigned;
    const auto difference = compare(a, b);
    ASSERT_THAT(difference.changes, testing::SizeIs(1));
    EXPECT_EQ(difference.changes[0].kind, ChangeKind::ChannelMoved);
    EXPECT_NE(difference.changes[0].before, difference.changes[0].after);
    EXPECT_FALSE(difference.sameValues());
    EXPECT_THAT(difference.reasons(),
                ElementsAre(HasSubstr("the channel \"AI 2\" of \"Levels\" is at ")));

    b = a;
    b.channels[1].bits = 8;
    const auto smaller = compare(a, b);
    ASSERT_THAT(smaller.changes, testing::SizeIs(1));
    EXPECT_EQ(smaller.changes[0].kind, ChangeKind::ChannelMoved);
    EXPECT_FALSE(smaller.sameValues());
}

TEST(StationDiff, comparesUnnamedModulesOfATypeInTheirOrder)
{
    const auto difference = differenceOf("modules: [MX0116.bin, MX0304.bin, MX0116.bin]",
                                         "modules: [MX0116.bin, MX0116.bin, MX0304.bin]");
    EXPECT_THAT(shownChanges(difference), testing::Contains("module moved MX0304 : in 2-9 > in "
                                                            "4-11 !"));
    EXPECT_THAT(shownChanges(difference), testing::Contains("module moved MX0116_2 : in 10-11 > "
                                                            "in 2-3 !"));
    EXPECT_THAT(difference.notes,
                ElementsAre("3 modules are compared with those of the same type in their order, "
                            "because they have no name of their own in both stations: state a "
                            "\"name\" for each module to compare it with itself"));
}

// Who follows the note finds no differences.
TEST(StationDiff, findsModulesThatWereNamedSince)
{
    const auto difference = differenceOf("modules: [MX0304.bin, MX0208.bin]", levelsAndValves);
    EXPECT_TRUE(difference.isSame());
    EXPECT_THAT(difference.notes, IsEmpty());
}

TEST(StationDiff, givesDifferencesAsJson)
{
    const json exported = json::parse(differenceOf(levelsAndValves, withDoorsBetween).json());
    EXPECT_EQ(exported["schema"], json::parse(R"({"name": "mxtool.station-diff", "version": 1})"));
    EXPECT_EQ(exported["same"], false);
    EXPECT_EQ(exported["same_values"], false);
    EXPECT_EQ(exported["verdict"], "a program bound to A no longer reads the same values from B");
    EXPECT_EQ(exported["changes"][1], json::parse(R"({
        "kind": "module added", "module": "Doors", "subject": "", "a": "",
        "b": "5a010116, in 8-9", "changes_values": false})"));
    EXPECT_EQ(exported["reasons"].size(), 1U);
    EXPECT_EQ(exported["a"]["station_sha256"].get<std::string>().size(), 64U);
    EXPECT_THAT(exported["a"]["station_sha256"].get<std::string>(),
                Not(exported["b"]["station_sha256"].get<std::string>()));
}

TEST(StationDiff, rejectsAStationWithErrors)
{
    EXPECT_THROW(differenceOf(levelsAndValves, "modules: [MX9999.bin]"), mxmodule::Failure);
}

} // namespace
