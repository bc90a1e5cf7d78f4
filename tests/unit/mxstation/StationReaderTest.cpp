// What the reader of stations refuses, with its place, and what it takes.

#include "StationFixture.h"

#include <gmock/gmock.h>

#include <TemporaryDirectory.h>

#include <filesystem>
#include <fstream>

#include <sys/stat.h>

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

std::vector<std::string> errorsIn(const std::string& source)
{
    return shownFindings(stationWith(source).findings);
}

TEST(StationReader, takesAListOfFilesAlone)
{
    const auto station = stationWith("modules:\n"
                                     "  - MX0108.bin\n"
                                     "  - \"MX0116.bin\"\n");
    EXPECT_THAT(shownFindings(station.findings), IsEmpty());
    EXPECT_EQ(station.name, "station");
    EXPECT_EQ(station.layout.name, "plain");
    ASSERT_THAT(station.entries, SizeIs(2));
    EXPECT_EQ(station.entries[1].reference, "MX0116.bin");
    EXPECT_EQ(station.entries[1].place.line, 3U);
    EXPECT_EQ(station.entries[1].place.column, 5U);
}

TEST(StationReader, takesJson)
{
    const auto station = stationWith(R"({"station": "J", "modules": ["MX0108.bin", )"
                                     R"({"module": "MX0208.bin", "at": {"in": 4}}]})");
    EXPECT_THAT(shownFindings(station.findings), IsEmpty());
    EXPECT_EQ(station.name, "J");
    EXPECT_EQ(station.entries[1].at.input->value, 4U);
}

TEST(StationReader, sharesValuesThatAnAliasNames)
{
    const auto plan = planWith("modules:\n"
                               "  - module: MX0304.bin\n"
                               "    parameters: &levels {AI 1: {Signal range: 4-20 mA}}\n"
                               "  - {module: MX0304.bin, parameters: *levels}\n"
                               "  - MX0304.bin\n");
    EXPECT_THAT(shownFindings(plan.findings), IsEmpty());
    EXPECT_EQ(plan.modules[0].image, plan.modules[1].image);
    EXPECT_NE(plan.modules[1].image, plan.modules[2].image);
}

TEST(StationReader, refusesAnAliasWithinItsValue)
{
    EXPECT_THAT(errorsIn("modules: &all\n"
                         "  - MX0108.bin\n"
                         "  - *all\n"),
                ElementsAre("3:5 error this alias is within the value that it names, which has no "
                            "end"));
    EXPECT_THAT(errorsIn("modules: [&a {module: MX0108.bin, parameters: {x: *a}}]"),
                ElementsAre("1:51 error this alias is within the value that it names, which has no "
                            "end"));
}

TEST(StationReader, refusesUnknownKeysWithTheNearest)
{
    EXPECT_THAT(
        errorsIn("statoin: X\n"
                 "modules:\n"
                 "  - {modul: MX0108.bin, at: {inn: 1}}\n"
                 "  - {reserve: {in: 1, nam: x}}\n"
                 "  - {module: MX0108.bin, channels: {DI 1: {alais: a}}}\n"
                 "layout: {alingment: 2}\n"),
        ElementsAre(
            "1:1 error unknown key of a station \"statoin\", did you mean \"station\"? (accepted: "
            "station, layout, modbus, modules)",
            "3:6 error unknown key of a module \"modul\", did you mean \"module\"? (accepted: "
            "module, name, parameters, channels, at, reserve)",
            "3:30 error unknown image \"inn\", did you mean \"in\"? (accepted: in, out)",
            "4:23 error unknown key of a reserved place \"nam\", did you mean \"name\"? (accepted: "
            "in, out, name)",
            "5:44 error unknown key of a channel \"alais\", did you mean \"alias\"? (accepted: "
            "alias, comment)",
            "6:10 error unknown key of a layout \"alingment\" (accepted: like, start, order, "
            "align, "
            "pad_module, pad_image, status_before, status_behind, most_modules, most_bytes, "
            "byte_order)"));
}

TEST(StationReader, refusesAnEntryOfNothing)
{
    EXPECT_THAT(errorsIn("modules:\n"
                         "  - name: X\n"
                         "  -\n"),
                ElementsAre("2:5 error this entry has neither \"module\" nor \"reserve\"",
                            HasSubstr("3:3 error found nothing, expected an mx file")));
}

// At its dash, not at what follows.
TEST(StationReader, placesAnEntryOfNothing)
{
    EXPECT_THAT(
        errorsIn("modules:\n"
                 "  -\n"
                 "  - # later\n"
                 "\n"
                 "      # - MX0108.bin\n"
                 "  - MX0108.bin\n"
                 "  - ~\n"
                 "  - null\n"
                 "  -\r\n"
                 "note: 7\n"),
        ElementsAre(HasSubstr("2:3 error found nothing"), HasSubstr("3:3 error found nothing"),
                    HasSubstr("7:5 error found nothing"), HasSubstr("8:5 error found nothing"),
                    HasSubstr("9:3 error found nothing"), HasSubstr("10:1 error unknown")));
    EXPECT_THAT(errorsIn("modules:\n- MX0108.bin\n-"),
                ElementsAre(HasSubstr("3:1 error found nothing")));
}

// As in the schema: a text is no number.
TEST(StationReader, refusesNumbersInQuotes)
{
    const auto station =
        stationWith("modules: [{module: MX0108.bin, at: {in: \"4\"}}, {reserve: {in: !!str 1}},\n"
                    "  {module: MX0108.bin, at: {in: 'x'}}, {reserve: {in: !!int 1}}]\n");
    EXPECT_THAT(shownFindings(station.findings),
                ElementsAre("1:41 error found the text \"4\", expected a whole number from 0 to "
                            "2147483647",
                            HasSubstr("error found the text \"1\", expected a whole number"),
                            HasSubstr("2:33 error found \"x\", expected a whole number")));
    EXPECT_EQ(station.findings.front().hint, "a number is without quotation marks");
}

// One error, not also that the key is missing.
TEST(StationReader, saysOfAKeyWithoutValueThatAlone)
{
    EXPECT_THAT(errorsIn("modules:\n"), ElementsAre("1:1 error \"modules\" has no value"));
    EXPECT_THAT(errorsIn("modules:\n  - {module: }\n"),
                ElementsAre("2:6 error \"module\" has no value"));
}

TEST(StationReader, refusesValuesOfAnotherKind)
{
    EXPECT_THAT(errorsIn("- MX0108.bin"),
                ElementsAre("1:1 error found a list, expected a map with \"modules\""));
    EXPECT_THAT(
        errorsIn("station: X"),
        ElementsAre("1:1 error \"modules\" is missing, the list of the modules in the row"));
    EXPECT_THAT(errorsIn("modules: MX0108.bin"),
                ElementsAre("1:10 error found \"MX0108.bin\", expected a list of modules"));
    EXPECT_THAT(errorsIn("modules:\n"
                         "  - [MX0108.bin]\n"
                         "  - {module: MX0108.bin, at: 4}\n"
                         "  - {module: MX0108.bin, at: {in: x, out: -1}}\n"
                         "  - {module: MX0108.bin, name: ''}\n"
                         "  - {module: MX0304.bin, parameters: [a]}\n"
                         "  - {module: MX0304.bin, parameters: {AI 1: {Filter: {}}}}\n"
                         "  - {module: MX0304.bin, channels: {AI 1: LT_101}}\n"
                         "  - {reserve: {in: 4294967296}}\n"
                         "  - {reserve: {in: 1}, name: x}\n"),
                ElementsAre("2:5 error found a list, expected an mx file, the identifier of a "
                            "module, or a map",
                            "3:30 error found \"4\", expected a map with the byte of \"in\", "
                            "\"out\" or both",
                            "4:35 error found \"x\", expected a whole number from 0 to 2147483647",
                            "4:43 error found \"-1\", expected a whole number from 0 to 2147483647",
                            "5:32 error found \"\", expected a name",
                            "6:38 error found a list, expected a map of parameter names to values",
                            "7:54 error found a map, expected the value of a parameter",
                            "8:43 error found \"LT_101\", expected a map with \"alias\", "
                            "\"comment\" or both",
                            "9:20 error found \"4294967296\", expected a whole number from 0 to "
                            "2147483647",
                            "10:30 error \"name\" is stated for a reserved place without "
                            "\"module\""));
}

TEST(StationReader, refusesAKeyStatedTwiceAndOneWithoutValue)
{
    EXPECT_THAT(
        errorsIn("modules: []\n"
                 "station:\n"
                 "modules: []\n"),
        ElementsAre("2:1 error \"station\" has no value", "3:1 error \"modules\" is stated twice"));
}

// Columns count characters, also of a line with several places, and places that come before others.
TEST(StationReader, countsTheColumnsOfALine)
{
    EXPECT_THAT(
        errorsIn("\xEF\xBB\xBFstation: \xC3\xA4\xC3\xB6\n"
                 "modules: [{\"\xC3\xA4\": 1}, {\"\xE2\x82\xAC\": {}}, {\"module\": 'x\xC3\xA4', "
                 "\"zz\": 1}]\n"),
        ElementsAre(HasSubstr("2:12 error unknown key"), HasSubstr("2:22 error unknown key"),
                    HasSubstr("2:43 error There is no mx file"),
                    HasSubstr("2:49 error unknown key")));
}

// Places of a line are found in the time of the line, not of its square.
TEST(StationReader, readsALineOfManyPlaces)
{
    std::string source = "modules: [";
    for (int i = 0; i < 20000; ++i) {
        source += "{reserve: {in: 1}}, ";
    }
    const auto station = stationWith(source + "x]");
    EXPECT_THAT(station.entries, SizeIs(20001));
    EXPECT_THAT(shownFindings(station.findings),
                ElementsAre(HasSubstr("1:400011 error There is no mx file")));
}

// What a layout with errors allows is not known.
TEST(StationReader, reportsNoLimitOfALayoutWithErrors)
{
    std::string modules = "\nmodules:\n";
    for (int i = 0; i < 65; ++i) {
        modules += "- MX0108.bin\n";
    }
    EXPECT_THAT(errorsIn("layout: aligend" + modules), SizeIs(1));
    EXPECT_THAT(errorsIn("layout: {most_modules: 20000}" + modules), SizeIs(1));
    EXPECT_THAT(
        shownFindings(planWith("layout: {most_module: 99, most_bytes: 4}" + modules).findings),
        ElementsAre(HasSubstr("1:10 error unknown key of a layout")));
    EXPECT_THAT(errorsIn("layout: plain" + modules), SizeIs(1));
}

TEST(StationReader, refusesLayoutsThatDoNotExist)
{
    EXPECT_THAT(errorsIn("layout: word\nmodules: []"),
                ElementsAre("1:9 error unknown layout \"word\", did you mean \"words\"? (accepted: "
                            "plain, words, bytes-first, aligned)"));
    EXPECT_THAT(
        errorsIn("layout: {like: plan, order: rows, align: 0, most_modules: 10001, "
                 "byte_order: middle}\nmodules: []"),
        ElementsAre(HasSubstr("1:16 error unknown layout \"plan\", did you mean \"plain\"?"),
                    HasSubstr("1:29 error unknown order \"rows\", did you mean \"row\"?"),
                    "1:42 error found \"0\", expected a whole number from 1 to 2147483647",
                    "1:59 error found \"10001\", expected a whole number from 1 to 10000",
                    HasSubstr("1:78 error unknown byte order \"middle\"")));
}

TEST(StationReader, refusesTextsLongerThanThoseOfModules)
{
    EXPECT_THAT(errorsIn("station: " + std::string(65535, 'x') + "\nmodules: []"), IsEmpty());
    EXPECT_THAT(errorsIn("station: " + std::string(65536, 'x') + "\nmodules: []"),
                ElementsAre("1:10 error found a text of 65536 bytes, expected the name of the "
                            "station of at most 65535"));
}

// 100 times 60 texts of 60,000 bytes, stated once.
TEST(StationReader, stopsWhenAliasesRepeatTooMuch)
{
    std::string source = "layout: {most_modules: 200}\n"
                         "station: &text " +
                         std::string(60000, 'x') +
                         "\n"
                         "modules:\n"
                         "- module: MX0108.bin\n"
                         "  parameters: &all\n";
    for (int i = 0; i < 60; ++i) {
        source += "    p" + std::to_string(i) + ": *text\n";
    }
    for (int i = 0; i < 99; ++i) {
        source += "- {module: MX0108.bin, parameters: *all}\n";
    }
    const auto station = stationWith(source);
    ASSERT_THAT(station.findings, SizeIs(1));
    EXPECT_THAT(shownFinding(station.findings[0]),
                HasSubstr("120:3 error until here, parameters and channels take "));
    EXPECT_THAT(station.entries, SizeIs(56));
}

TEST(StationReader, refusesWhatIsNoYaml)
{
    EXPECT_THAT(errorsIn("modules: [MX0108.bin\nlayout: plain\n"),
                ElementsAre(HasSubstr("1:10 error this \"[\" is not closed")));
    EXPECT_THAT(errorsIn("modules: []\n---\nmodules: []\n"),
                ElementsAre(HasSubstr("a second document, a file describes one station")));
    EXPECT_THAT(errorsIn("modules: [\xff]"), ElementsAre(HasSubstr("1:11 error")));
    EXPECT_THAT(errorsIn(std::string("modules: []\0", 12)), ElementsAre(HasSubstr("byte 00")));
    EXPECT_THAT(errorsIn(""), ElementsAre("1:1 error found nothing, expected a map with "
                                          "\"modules\""));
}

TEST(StationReader, namesTheNearestFile)
{
    const auto station = stationWith("modules:\n  - MX0109.bin\n");
    EXPECT_THAT(shownFindings(station.findings),
                ElementsAre(HasSubstr("2:5 error There is no mx file \"")));
    EXPECT_THAT(station.findings[0].text, HasSubstr("or \"MX0108.bin\""));
    EXPECT_THAT(station.findings[0].accepted, testing::Contains("MX0108.bin"));
    EXPECT_EQ(station.findings[0].excerpt, "  - MX0109.bin\n    ^\n");
}

TEST(StationReader, refusesANameWithAByte00)
{
    EXPECT_THAT(errorsIn("modules: [\"MX0108.bin\\0\"]"),
                ElementsAre(HasSubstr("1:11 error There is no mx file \"")));
}

// A link to nothing is there: its own name is not the nearest one.
TEST(StationReader, saysWhatIsWrongWithAFileThatIsThere)
{
    const testkit::TemporaryDirectory directory;
    std::filesystem::create_symlink("nowhere", directory.path("link.bin"));
    std::filesystem::create_directory(directory.path("folder.bin"));
    std::ofstream(directory.path("empty.bin"));
    std::ofstream(directory.path("row.yaml")) << "modules: []\n";
    std::ofstream(directory.path("wrong.yaml"))
        << "module: {type: 1, id: 0x5a010203, x: 1, y: 2}\n";
    const auto station =
        mxstation::stationOf("modules: [link.bin, folder.bin, empty.bin, row.yaml, wrong.yaml]",
                             directory.path("row.yaml"));
    ASSERT_THAT(station.findings, SizeIs(5));
    EXPECT_THAT(station.findings[0].text, HasSubstr("link.bin: Cannot open file"));
    EXPECT_THAT(station.findings[1].text, HasSubstr("Is a directory"));
    EXPECT_THAT(station.findings[2].text, HasSubstr("The file is empty"));
    EXPECT_THAT(station.findings[3].text, HasSubstr("This is a station, expected an mx file"));
    EXPECT_THAT(station.findings[4].text, HasSubstr("wrong.yaml:1:"));
    EXPECT_THAT(station.findings[4].hint, HasSubstr("wrong.yaml lists all 2 errors"));
}

// Reading them would never end.
TEST(StationReader, refusesModulesThatAreNoFiles)
{
    const testkit::TemporaryDirectory directory;
    ASSERT_EQ(mkfifo(directory.path("pipe.bin").c_str(), 0600), 0);
    const auto station =
        mxstation::stationOf("modules: [pipe.bin, /dev/zero]", directory.path("station.yaml"));
    ASSERT_THAT(station.findings, SizeIs(2));
    EXPECT_EQ(station.findings[0].text,
              directory.path("pipe.bin") + ": Found a pipe or a device, expected a file");
    EXPECT_EQ(station.findings[1].text, "/dev/zero: Found a pipe or a device, expected a file");
}

// Identifiers are text: neither of these is a number.
TEST(StationReader, findsModulesByIdentifierInTheCatalogue)
{
    const testkit::TemporaryDirectory directory;
    const std::string url = "sqlite:" + directory.path("devices.sqlite");
    auto catalogue = mxmodule::Catalogue::openOrCreate(url);
    mxmodule::populate(mxmodule::listMxDirectory(EXAMPLE_MODULES), catalogue);
    mxstation::StationOptions options;
    options.catalogueUrl = url;
    const auto station = mxstation::stationOf(
        "modules: [5a030304, \"5A030304\", 50030304, 5e030304]", "station.yaml", options);
    ASSERT_THAT(station.findings, SizeIs(2));
    EXPECT_EQ(station.findings[0].place, "station.yaml:1:33");
    EXPECT_THAT(station.findings[0].text, HasSubstr("50030304"));
    EXPECT_THAT(station.findings[0].hint, HasSubstr("5a030304"));
    EXPECT_THAT(station.findings[1].text, HasSubstr("5e030304"));
    EXPECT_EQ(station.entries[0].module->bytes(), station.entries[1].module->bytes());
}

TEST(StationReader, takesAFileThatIsCalledAsAnIdentifier)
{
    const testkit::TemporaryDirectory directory;
    const auto bytes = mxmodule::readFile(std::string(EXAMPLE_MODULES) + "/MX0108.bin");
    directory.write("5a030304", bytes);
    const auto station =
        mxstation::stationOf("modules: [./5a030304]", directory.path("station.yaml"));
    EXPECT_THAT(shownFindings(station.findings), IsEmpty());
    EXPECT_EQ(station.entries.at(0).module->bytes(), bytes);
}

TEST(StationReader, saysThatThereIsNoCatalogue)
{
    mxstation::StationOptions options;
    options.catalogueUrl = "sqlite:/nowhere/devices.sqlite";
    const auto station = mxstation::stationOf("modules: [5a030304]", "station.yaml", options);
    ASSERT_THAT(station.findings, SizeIs(1));
    EXPECT_EQ(station.findings[0].place, "station.yaml:1:11");
    EXPECT_THAT(station.findings[0].text, HasSubstr("/nowhere/devices.sqlite"));
}

TEST(StationReader, refusesOtherFiles)
{
    const auto module = mxmodule::readFile(std::string(EXAMPLE_MODULES) + "/MX0108.bin");
    try {
        mxstation::stationOf({module.begin(), module.end()}, "MX0108.bin");
        FAIL() << "nothing was thrown";
    } catch (const mxmodule::Failure& failure) {
        EXPECT_EQ(failure.reason().place, "MX0108.bin");
        EXPECT_EQ(failure.reason().text, "This is an mx file, expected a station");
        EXPECT_THAT(failure.reason().hint, HasSubstr("mxtool show MX0108.bin"));
    }
    EXPECT_THROW(mxstation::readStation("/nowhere/station.yaml"), mxmodule::Failure);
}

TEST(StationReader, refusesAPlaceWithoutBytes)
{
    EXPECT_THAT(errorsIn("modules:\n"
                         "  - reserve: {name: x}\n"
                         "  - reserve: {in: 0, out: 0}\n"
                         "  - reserve: {in: x}\n"),
                ElementsAre("2:14 error the reserved place has no bytes, \"in\", \"out\" or both "
                            "are expected",
                            "3:14 error the reserved place has no bytes, \"in\", \"out\" or both "
                            "are expected",
                            HasSubstr("4:19 error found \"x\"")));
}

TEST(StationReader, refusesMoreValuesAndNotesThanAnyModuleHas)
{
    std::string values;
    std::string notes;
    for (int i = 0; i < 10001; ++i) {
        values += "\n      p" + std::to_string(i) + ": 1";
        notes += "\n      " + std::to_string(i) + ": {alias: a}";
    }
    EXPECT_THAT(
        errorsIn("modules:\n"
                 "  - module: MX0108.bin\n"
                 "    parameters:" +
                 values +
                 "\n"
                 "    channels:" +
                 notes + "\n"),
        ElementsAre("10004:7 error more than 10000 values, no module has so many parameters",
                    "10006:7 error found 10001 channels, no module has more than 10000"));
}

TEST(StationReader, stopsAfter100Errors)
{
    std::string source = "layout: {most_modules: 10000}\nmodules:\n";
    for (int i = 0; i < 9000; ++i) {
        source += "  - none" + std::to_string(i) + ".bin\n";
    }
    const auto errors = errorsIn(source);
    ASSERT_THAT(errors, SizeIs(101));
    EXPECT_THAT(errors[99], HasSubstr("102:5 error There is no mx file"));
    EXPECT_THAT(errors[100], HasSubstr("error stopped after 100 errors"));
    EXPECT_THAT(stationWith(source).entries, SizeIs(testing::Le(101)));
}

// Reading stops at the first module that is too many.
TEST(StationReader, endsAtTooManyModules)
{
    std::string source = "modules:\n";
    for (int i = 0; i < 100000; ++i) {
        source += "- MX0108.bin\n";
    }
    const auto station = stationWith(source);
    EXPECT_THAT(shownFindings(station.findings),
                ElementsAre("66:3 error this is module 65, the layout allows 64"));
    EXPECT_THAT(station.entries, SizeIs(64));
}

TEST(StationReader, findsAModuleAsAStationDoes)
{
    const std::string name = std::string(EXAMPLE_MODULES) + "/station.yaml";
    EXPECT_EQ(mxstation::moduleOf("MX0304.bin", name).bytes(),
              mxmodule::readFile(std::string(EXAMPLE_MODULES) + "/MX0304.bin"));
    try {
        mxstation::moduleOf("MX0305.bin", name);
        FAIL() << "there is such a module";
    } catch (const mxmodule::Failure& failure) {
        EXPECT_THAT(failure.reason().accepted, Contains("MX0304.bin"));
    }
}

// In a station the same text begins with the place of the file, as its own is in the station.
TEST(StationReader, saysThePlaceInAModuleOnce)
{
    const testkit::TemporaryDirectory directory;
    const std::string file = directory.path("empty.yaml");
    std::ofstream(file) << "groups: 1\n";
    try {
        mxstation::moduleOf("empty.yaml", directory.path("station.yaml"));
        FAIL() << "there is such a module";
    } catch (const mxmodule::Failure& failure) {
        EXPECT_THAT(failure.reason().place, testing::StartsWith(file));
        EXPECT_THAT(failure.reason().text, Not(HasSubstr(file)));
        const auto station =
            mxstation::stationOf("modules: [empty.yaml]\n", directory.path("station.yaml"));
        ASSERT_THAT(station.findings, SizeIs(1));
        EXPECT_EQ(station.findings[0].text, failure.reason().place + ": " + failure.reason().text);
    }
}

} // namespace
