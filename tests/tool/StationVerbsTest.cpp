// The verbs of `station` as a process: streams, exit codes, files.

#include "TemporaryDirectory.h"
#include "ToolProcess.h"

#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

#include <sys/stat.h>

#include <filesystem>

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using tooltest::readFile;
using tooltest::runTool;
using tooltest::ToolRun;
using tooltest::ToolSetup;

namespace fs = std::filesystem;

const std::string modules = std::string(PROJECT_BUILD) + "/examples/modules/";

// A directory with station files.
class Stations
{
public:
    std::string write(const std::string& name, const std::string& content) const
    {
        return directory.write(name, {content.begin(), content.end()});
    }

    std::string path(const std::string& name) const { return directory.path(name); }

    std::vector<std::string> files() const
    {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(directory.path())) {
            names.push_back(entry.path().filename().string());
        }
        std::sort(names.begin(), names.end());
        return names;
    }

private:
    testkit::TemporaryDirectory directory;
};

const std::string row = "modules:\n"
                        "  - " +
                        modules +
                        "MX0108.bin # doors\n"
                        "  - " +
                        modules + "MX0304.bin\n";
const std::string shifted = "modules:\n"
                            "  - " +
                            modules +
                            "MX0108.bin\n"
                            "  - " +
                            modules +
                            "MX0116.bin\n"
                            "  - " +
                            modules + "MX0304.bin\n";
const std::string wrong = "modules:\n"
                          "  - " +
                          modules +
                          "MX0108.bin\n"
                          "  - nowhere.bin\n"
                          "  - {module: " +
                          modules + "MX0304.bin, at: {in: 0}}\n";
const std::string aliasWithBlank = "modules:\n"
                                   "  - module: " +
                                   modules +
                                   "MX0108.bin\n"
                                   "    channels: {DI 1: {alias: tank 2}}\n";
const std::string displaced = "modules: [" + modules + "MX0108.bin, " + modules + "MX0602.bin]\n";

TEST(StationVerbs, endWith3OnAStationThatCannotBePlanned)
{
    const Stations stations;
    const std::string file = stations.write("wrong.yaml", wrong);
    const std::string output = stations.path("out");
    for (const std::string verb : {"show", "channels", "config", "pin"}) {
        const ToolRun run = runTool({"station", verb, file, "-o", output});
        EXPECT_EQ(run.exitCode, 3) << verb;
        EXPECT_EQ(run.out, "") << verb;
        EXPECT_THAT(run.err, AllOf(HasSubstr(file + ":3:5: error: There is no mx file"),
                                   HasSubstr(file + ":4:"), HasSubstr("is not free")))
            << verb;
    }
    EXPECT_EQ(runTool({"station", "diff", file, file}).exitCode, 3);
    EXPECT_EQ(runTool({"station", "config", file, "--directory", output}).exitCode, 3);
    EXPECT_THAT(stations.files(), ElementsAre("wrong.yaml"));
    EXPECT_EQ(readFile(file), wrong);
}

TEST(StationVerbs, checkEndsWith1OnErrors)
{
    const Stations stations;
    const ToolRun run = runTool({"station", "check", stations.write("wrong.yaml", wrong)});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.out, AllOf(HasSubstr(":3:5: error: There is no mx file"),
                               EndsWith("2 errors, 0 notes\n")));
    EXPECT_EQ(run.err, "");
    const ToolRun clean = runTool({"station", "check", stations.write("row.yaml", row)});
    EXPECT_EQ(clean.exitCode, 0);
    EXPECT_EQ(clean.out, "0 errors, 0 notes\n");
    const ToolRun noted =
        runTool({"station", "check", stations.write("noted.yaml", aliasWithBlank)});
    EXPECT_EQ(noted.exitCode, 0);
    EXPECT_THAT(noted.out, AllOf(HasSubstr(": note: "), EndsWith("0 errors, 1 note\n")));
    EXPECT_EQ(runTool({"station", "check", stations.path("nowhere.yaml")}).exitCode, 3);
    EXPECT_EQ(runTool({"station", "check", modules + "MX0108.bin"}).exitCode, 3);
}

TEST(StationVerbs, displacedChannelsAreAnErrorInCheckAlone)
{
    const Stations stations;
    const std::string file = stations.write("displaced.yaml", displaced);
    const ToolRun check = runTool({"station", "check", file});
    EXPECT_EQ(check.exitCode, 1);
    EXPECT_THAT(check.out, HasSubstr("error: the channel \"Count 2\" (IL18) is in bytes 18 to 25"));
    const ToolRun show = runTool({"station", "show", file});
    EXPECT_EQ(show.exitCode, 0);
    EXPECT_THAT(show.err, HasSubstr("warning: the channel \"Count 2\" (IL18)"));
    const auto report =
        nlohmann::json::parse(runTool({"station", "check", file, "--format", "json"}).out);
    EXPECT_EQ(report["schema"]["name"], "mxtool.station-check");
    EXPECT_EQ(report["errors"], 1);
    EXPECT_EQ(report["findings"][0]["accepted"][0], "8");
}

TEST(StationVerbs, readAStationFromStandardInput)
{
    const Stations stations;
    ToolSetup setup;
    setup.standardInput = stations.write("row.yaml", row);
    const ToolRun run = runTool({"station", "show", "-"}, setup);
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_THAT(run.out, HasSubstr("MX0304"));
    setup.standardInput = stations.write("wrong.yaml", wrong);
    EXPECT_THAT(runTool({"station", "show", "-"}, setup).err,
                StartsWith("<standard input>:3:5: error: "));
}

TEST(StationVerbs, takeModulesOfTheCatalogue)
{
    const Stations stations;
    const std::string url = "sqlite:" + stations.path("devices.sqlite");
    const std::string file = stations.write("ids.yaml", "modules: [5a010108, 5a030304]\n");
    runTool({"populate", modules, "--db", url});
    const ToolRun byId = runTool({"station", "channels", file, "--db", url});
    EXPECT_EQ(byId.exitCode, 0) << byId.err;
    EXPECT_THAT(byId.out, HasSubstr("IW7"));
    ToolSetup setup;
    setup.environment["DEVICE_DATABASE_URL"] = url;
    EXPECT_EQ(runTool({"station", "channels", file}, setup).out, byId.out);
    const ToolRun without =
        runTool({"station", "channels", file, "--db", "sqlite:" + stations.path("none.sqlite")});
    EXPECT_EQ(without.exitCode, 3);
    EXPECT_THAT(without.err, AllOf(HasSubstr(":1:11: error: "), HasSubstr("none.sqlite")));
}

TEST(StationVerbs, writeNoInput)
{
    const Stations stations;
    const std::string own = stations.path("MX0108.bin");
    fs::copy(modules + "MX0108.bin", own);
    const std::string file = stations.write("own.yaml", "modules: [MX0108.bin]\n");
    for (const std::string& output : {own, file}) {
        const ToolRun run = runTool({"station", "show", file, "-o", output, "--overwrite"});
        EXPECT_NE(run.exitCode, 0);
        EXPECT_THAT(run.err, HasSubstr("The output is also "));
    }
    EXPECT_EQ(readFile(own), readFile(modules + "MX0108.bin"));
}

TEST(StationVerbs, channelsAreDeclaredInEachWay)
{
    const Stations stations;
    const std::string file = stations.write("row.yaml", row);
    const auto channels = [&file](const std::vector<std::string>& more) {
        std::vector<std::string> words = {"station", "channels", file};
        words.insert(words.end(), more.begin(), more.end());
        return runTool(words);
    };
    const ToolRun bytes = channels({"--format", "st"});
    EXPECT_EQ(bytes.exitCode, 0);
    EXPECT_THAT(bytes.out, AllOf(HasSubstr("%IX0.7"), HasSubstr("%IW1"), HasSubstr("%IW7")));
    const ToolRun index = channels({"--format", "st", "--address", "index"});
    EXPECT_EQ(index.exitCode, 1);
    EXPECT_THAT(index.err, HasSubstr("warning: "));
    EXPECT_THAT(index.out, AllOf(HasSubstr("(* "), Not(HasSubstr("%IW"))));
    const ToolRun separate = channels({"--format", "st", "--address", "separate"});
    EXPECT_EQ(separate.exitCode, 0);
    EXPECT_THAT(separate.out, AllOf(HasSubstr("%IW0"), HasSubstr("%IW3"), Not(HasSubstr("%IW4"))));
    EXPECT_THAT(channels({"--format", "st", "--scope", "program"}).out,
                AllOf(HasSubstr("PROGRAM "), HasSubstr("END_PROGRAM")));
    EXPECT_THAT(channels({"--format", "plcopen"}).out, StartsWith("<?xml "));
    EXPECT_THAT(channels({"--format", "c"}).out, HasSubstr("#include <stdint.h>"));
    EXPECT_EQ(channels({"--format", "csv", "--address", "byte"}).exitCode, 2);
    EXPECT_EQ(channels({"--format", "json", "--separator", "tab"}).exitCode, 2);
}

TEST(StationVerbs, channelsAreDrawn)
{
    const Stations stations;
    const std::string file = stations.write("row.yaml", row);
    const std::string picture = stations.path("row.svg");
    const ToolRun both = runTool({"station", "channels", file, "--picture", picture});
    EXPECT_EQ(both.exitCode, 0);
    EXPECT_THAT(both.out, HasSubstr("IW1"));
    EXPECT_THAT(readFile(picture), AllOf(StartsWith("<svg "), HasSubstr("bytes 1 to 8")));
    const ToolRun alone = runTool({"station", "channels", file, "--picture", "-"});
    EXPECT_EQ(alone.out, readFile(picture));
    EXPECT_EQ(runTool({"station", "channels", file, "--picture", "row.png"}).exitCode, 2);
}

TEST(StationVerbs, configWritesAFilePerModule)
{
    const Stations stations;
    const std::string file = stations.write("row.yaml", row);
    const std::string directory = stations.path("images");
    const ToolRun run = runTool({"station", "config", file, "--directory", directory});
    EXPECT_EQ(run.exitCode, 0) << run.err;
    EXPECT_EQ(run.out, "3 files written to " + directory + "\n");
    EXPECT_EQ(readFile(directory + "/2-MX0304.bin"),
              runTool({"config", modules + "MX0304.bin", "--format", "binary"}).out);
    EXPECT_EQ(nlohmann::json::parse(readFile(directory + "/station.json"))["schema"]["name"],
              "mxtool.station-config");
    const std::string registers = stations.path("registers");
    runTool({"station", "config", file, "--directory", registers, "--fieldbus", "modbus"});
    EXPECT_EQ(
        readFile(registers + "/2-MX0304.bin"),
        runTool({"config", modules + "MX0304.bin", "--format", "binary", "--fieldbus", "modbus"})
            .out);
    EXPECT_EQ(runTool({"station", "config", file, "--directory", ""}).exitCode, 2);
}

TEST(StationVerbs, diffEndsWith1OnDifferences)
{
    const Stations stations;
    const std::string a = stations.write("a.yaml", row);
    const std::string b = stations.write("b.yaml", shifted);
    const ToolRun same = runTool({"station", "diff", a, a});
    EXPECT_EQ(same.exitCode, 0);
    EXPECT_THAT(same.out, HasSubstr("a program bound to A still reads the same values from B"));
    const ToolRun moved = runTool({"station", "diff", a, b});
    EXPECT_EQ(moved.exitCode, 1);
    EXPECT_THAT(moved.out, AllOf(HasSubstr("MX0304"), HasSubstr("IW1"), HasSubstr("IW3"),
                                 HasSubstr("no longer")));
    const auto report =
        nlohmann::json::parse(runTool({"station", "diff", a, b, "--format", "json"}).out);
    EXPECT_EQ(report["same_values"], false);
}

TEST(StationVerbs, pinKeepsAddressesAndComments)
{
    const Stations stations;
    const std::string file = stations.write("row.yaml", row);
    const std::string before = runTool({"station", "channels", file}).out;
    const ToolRun run = runTool({"station", "pin", file});
    EXPECT_EQ(run.exitCode, 0) << run.err;
    EXPECT_THAT(readFile(file), AllOf(HasSubstr("MX0108.bin # doors\n"), HasSubstr("at: {in: 0}"),
                                      HasSubstr("at: {in: 1}")));
    EXPECT_EQ(runTool({"station", "channels", file}).out, before);
    const std::string pinned = readFile(file);
    EXPECT_EQ(runTool({"station", "pin", file, "-o", "-"}).out, pinned);
    EXPECT_EQ(runTool({"station", "pin", file}).exitCode, 0);
    EXPECT_EQ(readFile(file), pinned);
    EXPECT_THAT(stations.files(), ElementsAre("row.yaml"));
}

// Its text is gone after reading, and nothing would read what is written.
TEST(StationVerbs, pinReplacesNoPipe)
{
    const Stations stations;
    const std::string pipe = stations.path("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const ToolRun run = runTool({"station", "pin", pipe});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(run.err, pipe + ": error: The file is a pipe or a device, not to be replaced\n"
                              "hint: name an output with -o, - for standard output\n");
}

TEST(StationVerbs, nameWhatTheCallLacks)
{
    EXPECT_THAT(runTool({"station"}).err,
                HasSubstr("A verb is missing, expected one of show, channels, config, check, diff, "
                          "pin"));
    EXPECT_EQ(runTool({"station"}).exitCode, 2);
    EXPECT_THAT(runTool({"station", "chek"}).err,
                HasSubstr("mxtool station has no verb \"chek\", did you mean \"check\"?"));
    EXPECT_THAT(runTool({"station", "show"}).err,
                HasSubstr("hint: mxtool station show --help lists what is accepted"));
    EXPECT_THAT(runTool({"station", "show", "--fromat", "json"}).err,
                HasSubstr("mxtool station show has no option \"--fromat\", did you mean "
                          "\"--format\"?"));
    EXPECT_EQ(runTool({"help", "station", "show"}).out, runTool({"station", "show", "--help"}).out);
    EXPECT_EQ(runTool({"-q", "station", "show", "--help"}).exitCode, 0);
}

} // namespace
