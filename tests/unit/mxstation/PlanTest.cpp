// What a plan says of modules, channels and values.

#include "StationFixture.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

TEST(Plan, hasTheAddressesThatTheParserGives)
{
    const auto plan = planWith("modules: [MX0116.bin, MX0602.bin]");
    mxmodule::ModuleOptions options;
    options.offsets.input = 2;
    const auto alone =
        mxmodule::Module::fromFile(std::string(EXAMPLE_MODULES) + "/MX0602.bin", options);
    const auto map = alone.channelMap();
    ASSERT_THAT(plan.channels, SizeIs(16 + map.channels().size()));
    for (std::size_t i = 0; i < map.channels().size(); ++i) {
        const mxstation::Channel& channel = plan.channels[16 + i];
        EXPECT_EQ(channel.module, 2U);
        EXPECT_EQ(channel.moduleName, "MX0602");
        EXPECT_EQ(channel.symbol, map.channels()[i].symbol);
        EXPECT_EQ(channel.firstBit, map.channels()[i].firstBit);
        EXPECT_EQ(channel.name, map.channels()[i].name);
    }
    // 16 bits from byte 2: the word of the counter is aligned after the open byte 2, (2 + 1) + 3.
    EXPECT_EQ(plan.channels[16].symbol, "IX2_0");
    EXPECT_EQ(plan.channels[18].symbol, "ID6");
}

TEST(Plan, writesTheValuesOfTheStation)
{
    const auto plan = planWith("modules:\n"
                               "  - module: MX0701.bin\n"
                               "    parameters: {Baud rate: 19200, Parity: odd}\n"
                               "  - MX0701.bin\n");
    EXPECT_THAT(shownFindings(plan.findings), IsEmpty());
    // Baud rate 19200 is option 5, the third; odd is option 2, the third.
    EXPECT_THAT(plan.modules[0].image, ElementsAre('\x05', '\x02', '\x00', '\xfa', '\xee', '\xdd',
                                                   '\xef', '\x0b', '\x82', '\x16', '\x7e', '\xeb'));
    EXPECT_THAT(plan.modules[0].registers,
                ElementsAre(0x0200, 0x0200, 0x0000, 0x00fa, 0xeedd, 0xef0b, 0x8216, 0x7eeb));
    EXPECT_THAT(plan.modules[1].image, ElementsAre('\x03', '\x01', '\x00', '\xfa', '\xee', '\xdd',
                                                   '\xef', '\x0b', '\x82', '\x16', '\x7e', '\xeb'));
    EXPECT_THAT(plan.modules[1].registers, SizeIs(8));
}

TEST(Plan, rejectsValuesAtTheirPlace)
{
    const auto plan = planWith("modules:\n"
                               "  - module: MX0304.bin\n"
                               "    parameters:\n"
                               "      Mains supression: 60\n"
                               "      AI 1:\n"
                               "        Signal range: 4-20 A\n");
    EXPECT_THAT(shownFindings(plan.findings),
                ElementsAre(HasSubstr("4:7 error No parameter is called \"Mains supression\", did "
                                      "you mean \"Mains suppression\"?"),
                            HasSubstr("6:9 error")));
    EXPECT_THAT(plan.findings[1].text, HasSubstr("4-20 A"));
    EXPECT_EQ(plan.findings[1].excerpt, "        Signal range: 4-20 A\n        ^\n");
    EXPECT_FALSE(plan.ok());
}

TEST(Plan, givesChannelsTheirAliases)
{
    const auto plan = planWith("modules:\n"
                               "  - module: MX0304.bin\n"
                               "    name: Levels\n"
                               "    channels:\n"
                               "      AI 1: {alias: LT_101, comment: tank 1}\n"
                               "      1: {alias: LT_102}\n"
                               "      2 AI 3: {comment: spare}\n"
                               "      \"#47\": {alias: LT_104}\n");
    EXPECT_THAT(shownFindings(plan.findings), IsEmpty());
    ASSERT_THAT(plan.channels, SizeIs(4));
    EXPECT_EQ(plan.channels[0].alias, "LT_101");
    EXPECT_EQ(plan.channels[0].comment, "tank 1");
    EXPECT_EQ(plan.channels[1].alias, "LT_102");
    EXPECT_EQ(plan.channels[2].alias, "");
    EXPECT_EQ(plan.channels[2].comment, "spare");
    EXPECT_EQ(plan.channels[3].alias, "LT_104");
    EXPECT_EQ(plan.channels[3].moduleName, "Levels");
}

TEST(Plan, refusesUnknownAndAmbiguousChannels)
{
    const auto plan = planWith("modules:\n"
                               "  - module: MX0901.bin\n"
                               "    channels:\n"
                               "      1: {alias: A}\n"
                               "      Station stat: {alias: B}\n"
                               "  - module: MX0304.bin\n"
                               "    channels:\n"
                               "      0: {alias: C}\n"
                               "      AI 1: {alias: D}\n");
    EXPECT_THAT(
        shownFindings(plan.findings),
        ElementsAre(HasSubstr("4:7 error \"1\" fits several channels: #"),
                    HasSubstr("5:7 error the module has no channel \"Station stat\", did "
                              "you mean \"Station state\"?"),
                    HasSubstr("9:7 error this is the channel #44 (0 AI 1, in), noted in line 8 "
                              "as well")));
    EXPECT_THAT(plan.findings[0].accepted, SizeIs(2));
}

TEST(Plan, warnsOfNotesOnChannelsWithoutAnAddress)
{
    const auto plan = planWith("modules: [{module: MX0602.bin, channels: {No image: {alias: A}}}]");
    EXPECT_THAT(shownFindings(plan.findings),
                ElementsAre("1:43 warning the channel #35 (10 No image, out) has no address, the "
                            "note has no effect"));
    EXPECT_TRUE(plan.ok());
}

TEST(Plan, refusesNamesAndAliasesUsedTwice)
{
    const auto plan = planWith("modules:\n"
                               "  - {module: MX0304.bin, name: A, channels: {AI 1: {alias: X}}}\n"
                               "  - {module: MX0304.bin, name: A, channels: {AI 1: {alias: x}}}\n"
                               "  - {module: MX0304.bin, name: a, channels: {AI 1: {alias: tank "
                               "2}}}\n"
                               "  - {module: MX0304.bin, channels: {AI 1: {alias: \"?\"}}}\n");
    EXPECT_THAT(shownFindings(plan.findings),
                ElementsAre("3:32 error the name \"A\" is used in line 2 as well",
                            "3:60 error the alias \"x\" is used in line 2 as well",
                            "4:60 note the alias \"tank 2\" is no identifier of IEC 61131-3, "
                            "declarations call it tank_2",
                            "5:51 error the alias \"?\" has no letter or digit"));
}

TEST(Plan, namesModulesByTheirFiles)
{
    const auto plan = planWith("modules:\n"
                               "  - MX0108.bin\n"
                               "  - {module: MX0108.bin, name: MX0108_2}\n"
                               "  - MX0108.bin\n"
                               "  - reserve: {in: 1}\n"
                               "  - MX0116.bin\n");
    ASSERT_THAT(plan.modules, SizeIs(4));
    EXPECT_EQ(plan.modules[0].name, "MX0108");
    EXPECT_FALSE(plan.modules[0].hasOwnName);
    EXPECT_TRUE(plan.modules[1].hasOwnName);
    EXPECT_EQ(plan.modules[2].name, "MX0108_3");
    EXPECT_EQ(plan.modules[3].position, 4U);
    EXPECT_EQ(plan.modules[3].entry, 4U);
}

TEST(Plan, namesEntriesOfAStationWithErrors)
{
    const mxstation::Station station =
        stationWith("modules:\n"
                    "  - MX0108.bin\n"
                    "  - gone/MX9999.bin\n"
                    "  - {reserve: {in: 1, name: later}}\n"
                    "  - {module: MX0208.bin, name: Pumps, parameters: {none: 1}}\n"
                    "  - MX0108.bin\n");
    ASSERT_FALSE(mxstation::plan(station).ok());
    EXPECT_THAT(mxstation::entryNames(station),
                ElementsAre("MX0108", "MX9999", "", "Pumps", "MX0108_2"));
}

TEST(Plan, listsChannelsWithoutAnAddress)
{
    const auto plan = planWith("modules: [MX0108.bin, MX0602.bin]");
    ASSERT_THAT(plan.withoutSymbol, SizeIs(2));
    EXPECT_EQ(plan.withoutSymbol[0].module, 2U);
    EXPECT_EQ(plan.withoutSymbol[0].channel.symbol, "");
}

TEST(Plan, isThatOfAStationMadeByAHost)
{
    mxstation::Station station;
    station.name = "Made";
    station.entries.emplace_back();
    station.entries[0].module =
        mxmodule::ModuleFile::read(std::string(EXAMPLE_MODULES) + "/MX0304.bin");
    station.entries.push_back(station.entries[0]);
    station.entries[1].at.input = mxstation::StatedByte{4, {}};
    const auto wrong = mxstation::plan(station);
    ASSERT_THAT(wrong.findings, SizeIs(1));
    EXPECT_EQ(wrong.findings[0].place, "");
    EXPECT_THAT(wrong.findings[0].text, HasSubstr("byte 4 of the input image is not free"));
    station.entries[1].at.input->value = 8;
    const auto right = mxstation::plan(station);
    EXPECT_TRUE(right.ok());
    EXPECT_THAT(shownModules(right),
                ElementsAre("MX0304 in 0+8 out 0+0", "MX0304_2 in 8+8 out 0+0"));
}

TEST(Plan, refusesMoreModulesOfAHostThanTheLayoutAllows)
{
    mxstation::Station station;
    station.entries.emplace_back().module =
        mxmodule::ModuleFile::read(std::string(EXAMPLE_MODULES) + "/MX0108.bin");
    station.entries.resize(64, station.entries[0]);
    EXPECT_THAT(mxstation::plan(station).modules, SizeIs(64));
    station.entries.push_back(station.entries[0]);
    const auto plan = mxstation::plan(station);
    EXPECT_THAT(shownFindings(plan.findings),
                ElementsAre(" error this is module 65, the layout allows 64"));
    EXPECT_THAT(plan.modules, IsEmpty());
}

TEST(Plan, refusesALayoutOfAHostThatDividesByZero)
{
    mxstation::Station station;
    for (auto member : {&mxstation::ImageLayout::alignment, &mxstation::ImageLayout::modulePadding,
                        &mxstation::ImageLayout::imagePadding}) {
        station.layout = {};
        station.layout.output.*member = 0;
        EXPECT_THAT(shownFindings(mxstation::plan(station).findings),
                    ElementsAre(" error the layout has an alignment or a padding of 0 bytes, "
                                "expected at least 1"));
    }
}

TEST(Plan, namesNoLinesOfAStationMadeByAHost)
{
    mxstation::Station station;
    mxstation::Entry& entry = station.entries.emplace_back();
    entry.module = mxmodule::ModuleFile::read(std::string(EXAMPLE_MODULES) + "/MX0304.bin");
    entry.name = "Levels";
    entry.channels = {{"AI 1", "X", "", {}, {}}, {"0", "X", "", {}, {}}};
    station.entries.push_back(entry);
    station.entries[1].channels.clear();
    EXPECT_THAT(shownFindings(mxstation::plan(station).findings),
                ElementsAre(" error the name \"Levels\" is used elsewhere as well",
                            " error the alias \"X\" is used elsewhere as well",
                            " error this is the channel #44 (0 AI 1, in), noted elsewhere as "
                            "well"));
}

// Aliases of YAML repeat 10,000 notes for each of 64 modules.
TEST(Plan, stopsAfter100Findings)
{
    std::string source = "modules:\n"
                         "  - {module: MX0108.bin, channels: &notes {\n";
    for (int i = 0; i < 10000; ++i) {
        source += "    x" + std::to_string(i) + ": {alias: a" + std::to_string(i) + "},\n";
    }
    source += "    }}\n";
    for (int i = 1; i < 64; ++i) {
        source += "  - {module: MX0108.bin, channels: *notes}\n";
    }
    const auto plan = planWith(source);
    ASSERT_THAT(plan.findings, SizeIs(101));
    EXPECT_EQ(plan.findings.back().text, "stopped after 100 errors of the plan");
    EXPECT_FALSE(plan.ok());
}

// 120 displaced modules are no reason to keep the mistake in the last line from its author.
TEST(Plan, namesAnErrorAfterManyWarnings)
{
    std::string source = "layout: {most_modules: 200}\n"
                         "modules:\n"
                         "  - MX0108.bin\n";
    for (int i = 0; i < 120; ++i) {
        source += "  - {module: MX0602.bin, at: {in: " + std::to_string(1 + 32 * i) + "}}\n";
    }
    const auto plan = planWith(source + "  - module: MX0701.bin\n"
                                        "    parameters: {Parity: strange}\n"
                                        "    channels: {0: {alias: no identifier}}\n");
    ASSERT_THAT(plan.findings, SizeIs(102));
    EXPECT_THAT(shownFinding(plan.findings[100]), HasSubstr("125:18 error"));
    EXPECT_THAT(plan.findings[101].text, "stopped after 100 warnings and notes of the plan");
    EXPECT_EQ(plan.findings[101].severity, mxmodule::Severity::Warning);
}

TEST(Plan, warnsBeyondTheLargestProcessImage)
{
    const auto plan =
        planWith("modules: [{module: MX0304.bin, at: {in: 131072}}, MX0304.bin, MX0304.bin]");
    EXPECT_THAT(shownFindings(plan.findings),
                ElementsAre(HasSubstr("1:11 warning The module's 8 bytes end at byte 131080")));
}

} // namespace
