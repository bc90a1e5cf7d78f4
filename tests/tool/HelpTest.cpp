#include "TemporaryDirectory.h"
#include "ToolProcess.h"

#include <mxonline/Simulator.h>

#include <gmock/gmock.h>

#include <regex>
#include <sstream>

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;
using tooltest::runTool;
using tooltest::ToolRun;

struct Example
{
    std::string command;
    std::string output;
};

// The last example of a help text: "  $ mxtool ..." and the lines after it, without their indent.
Example exampleOf(const std::string& help)
{
    Example example;
    std::istringstream lines(help.substr(help.find("Example:\n") + 9));
    std::string line;
    std::getline(lines, line);
    example.command = line.substr(std::string("  $ mxtool ").size());
    while (std::getline(lines, line)) {
        example.output += (line.empty() ? "" : line.substr(2)) + "\n";
    }
    // Blank lines end the help text, not the output.
    const std::size_t last = example.output.find_last_not_of('\n');
    example.output.resize(last == std::string::npos ? 0 : last + 2);
    return example;
}

class HelpOfVerb : public testing::TestWithParam<const char*>
{};

// The text with every `from` in it replaced.
std::string replaced(std::string text, const std::string& from, const std::string& to)
{
    for (std::size_t at = text.find(from); at != std::string::npos;
         at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
    }
    return text;
}

TEST_P(HelpOfVerb, endsWithAnExampleThatPrintsWhatItSays)
{
    // The examples use /tmp; each run has a folder of its own, since others may run at the same
    // time.
    const testkit::TemporaryDirectory own;
    if (GetParam() != std::string("populate")) {
        runTool({"populate", "examples/modules", "--db", "sqlite:" + own.path("devices.sqlite")});
    }
    std::vector<std::string> call = tooltest::words(GetParam());
    call.emplace_back("--help");
    const ToolRun help = runTool(call);
    ASSERT_EQ(help.exitCode, 0);
    EXPECT_EQ(help.err, "");

    const Example example = exampleOf(help.out);
    const ToolRun shown =
        runTool(tooltest::words(replaced(example.command, "/tmp/", own.path() + "/")));
    EXPECT_EQ(replaced(shown.err + shown.out, own.path() + "/", "/tmp/"), example.output)
        << example.command;
}

class HelpOfOnlineVerb : public testing::TestWithParam<const char*>
{};

// Examples have the coupler of the pump house at port 1502 and a fixed time.
TEST_P(HelpOfOnlineVerb, endsWithAnExampleThatPrintsWhatItSays)
{
    const mxstation::Plan plan =
        mxstation::plan(mxstation::readStation(PROJECT_BUILD "/examples/stations/pump-house.yaml"));
    const mxonline::Simulator coupler(plan, mxonline::listenTargetOf("tcp:127.0.0.1:0"));
    const std::string target = targetText(coupler.address());
    const testkit::TemporaryDirectory own;
    const ToolRun help = runTool({"station", GetParam(), "--help"});
    ASSERT_EQ(help.exitCode, 0);
    const Example example = exampleOf(help.out);
    const std::string command = replaced(example.command, "tcp:127.0.0.1:1502", target);
    const ToolRun shown = runTool(tooltest::words(replaced(command, "/tmp/", own.path() + "/")));
    const std::string printed = replaced(
        replaced(shown.err + shown.out, target, "tcp:127.0.0.1:1502"), own.path() + "/", "/tmp/");
    const std::regex time("[0-9-]{10}T[0-9:]{8}[.][0-9]{3}Z");
    EXPECT_EQ(std::regex_replace(printed, time, "2026-01-31T08:15:00.123Z"), example.output)
        << command;
}

INSTANTIATE_TEST_SUITE_P(Verbs, HelpOfOnlineVerb,
                         testing::Values("plan", "apply", "verify", "read", "watch", "set"));

INSTANTIATE_TEST_SUITE_P(Verbs, HelpOfVerb,
                         testing::Values("", "groups", "show", "channels", "config", "datasheet",
                                         "populate", "devices", "new", "build", "dump", "check",
                                         "explain", "diff", "station", "station show",
                                         "station channels", "station config", "station check",
                                         "station diff", "station pin"));

TEST(Help, ofTheProgramNamesEveryVerbAndExitCode)
{
    const ToolRun help = runTool({"--help"});
    for (const char* word :
         {"groups", "show", "channels", "config", "populate", "devices", "new", "build", "dump",
          "check", "explain", "diff", "station", "simulate", "serve", "  0  done",
          "  3  an input cannot be read or is malformed"}) {
        EXPECT_THAT(help.out, HasSubstr(word));
    }
}

TEST(Help, versionIsThatOfTheLibrary)
{
    const ToolRun version = runTool({"--version"});
    EXPECT_EQ(version.exitCode, 0);
    EXPECT_EQ(version.out, "mxtool 3.0.0\n");
}

class WrongWords : public testing::TestWithParam<std::pair<std::string, std::string>>
{};

TEST_P(WrongWords, endWithCode2AndTheReason)
{
    const ToolRun run = runTool(tooltest::words(GetParam().first));
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(run.out, "");
    EXPECT_THAT(run.err, StartsWith("error: "));
    EXPECT_THAT(run.err, HasSubstr(GetParam().second));
    EXPECT_THAT(run.err, EndsWith(" --help lists what is accepted\n"));
}

INSTANTIATE_TEST_SUITE_P(
    Calls, WrongWords,
    testing::Values(
        std::pair{"", "A verb is missing, expected one of groups, show, "},
        std::pair{"frobnicate", "There is no verb \"frobnicate\", expected one of"},
        std::pair{"chanels X", "There is no verb \"chanels\", did you mean \"channels\"?\n"
                               "hint: mxtool --help"},
        std::pair{"chanels --help", "did you mean \"channels\"?"},
        std::pair{"help conifg", "did you mean \"config\"?"},
        std::pair{"--qiet chanels X", "did you mean \"channels\"?"},
        std::pair{"show --fromat=json", "error: mxtool show has no option \"--fromat\", did "
                                        "you mean \"--format\"?\nhint: mxtool show --help"},
        std::pair{"channels --pciture a.svg X", "did you mean \"--picture\"?\nhint"},
        std::pair{"config --foo X --format xml", "has no option \"--foo\""},
        std::pair{"config --foo X --format xml", "--format: found \"xml\" (accepted: text, json, "},
        std::pair{"show a -x", "mxtool show has no option \"-x\""},
        std::pair{"show", "FILE is required"},
        std::pair{"show a b", "mxtool show takes no further argument, found \"b\""},
        std::pair{"groups --format xml a", "xml"},
        std::pair{"show --in-offset -1 a",
                  "--in-offset: found \"-1\", expected a whole number from 0 to 4294967295, in "
                  "decimal or, after 0x, in hexadecimal"},
        std::pair{"show --out-offset 4294967296 a", "--out-offset: found \"4294967296\""},
        std::pair{"show --out-offset 0x a", "--out-offset: found \"0x\""},
        std::pair{"show --out-offset 1.5 a", "--out-offset: found \"1.5\""},
        std::pair{"--log-level loud groups a",
                  "--log-level: found \"loud\" (accepted: none, fatal,"}));

TEST(Help, aFileInThePlaceOfAVerbGetsItsVerb)
{
    const testkit::TemporaryDirectory directory;
    const std::string values = directory.path("v.yaml");
    const std::string text = directory.path("t.yaml");
    const std::string module = "examples/modules/MX0304.bin";
    runTool({"config", module, "-o", values});
    runTool({"dump", module, "-o", text});
    for (const auto& [call, hint] : {
             std::pair{module + " --format json", "mxtool show " + module + " shows the device"},
             std::pair{text, "mxtool build " + text + " -o FILE.bin"},
             std::pair{values, "mxtool config FILE --values " + values},
             std::pair{std::string("examples/modules"),
                       std::string("mxtool check examples/modules")},
         }) {
        const ToolRun run = runTool(tooltest::words(call));
        EXPECT_EQ(run.exitCode, 2);
        EXPECT_THAT(run.err, StartsWith("error: A verb is missing, found "));
        EXPECT_THAT(run.err, HasSubstr("hint: "));
        EXPECT_THAT(run.err, HasSubstr(hint));
    }
}

TEST(Help, comesAsAVerbToo)
{
    EXPECT_EQ(runTool({"help", "config"}).out, runTool({"config", "--help"}).out);
    EXPECT_EQ(runTool({"help"}).out, runTool({"--help"}).out);
    EXPECT_EQ(runTool({"-q", "help", "show"}).exitCode, 0);
}

// Each wrong word is reported once, in the order of the command line.
TEST(WrongWords, areReportedInTheOrderInWhichTheyWereTyped)
{
    EXPECT_EQ(runTool({"--qiet", "show", "a", "--fromat", "json", "--ouput=x"}).err,
              "error: mxtool show has no option \"--qiet\", did you mean \"--quiet\"?\n"
              "error: mxtool show has no option \"--fromat\", did you mean \"--format\"?\n"
              "error: mxtool show has no option \"--ouput\", did you mean \"--output\"?\n"
              "hint: mxtool show --help lists what is accepted\n");
}

// Every option with a fixed list of values: the nearest one first.
TEST(Choices, areTheNearestWhereAValueIsNone)
{
    const std::vector<std::pair<std::string, std::string>> calls = {
        {"config X --format cvs", "--format: found \"cvs\", did you mean \"csv\"?"},
        {"config X --fieldbus Modbus", "--fieldbus: found \"Modbus\", did you mean \"modbus\"?"},
        {"config X --separator Tab", "--separator: found \"Tab\", did you mean \"tab\"?"},
        {"config X --log-level warn", "--log-level: found \"warn\", did you mean \"warning\"?"},
        {"show X --format JSON", "--format: found \"JSON\", did you mean \"json\"?"},
        {"channels X --format ST", "--format: found \"ST\", did you mean \"st\"?"},
        {"groups X --format jsn", "--format: found \"jsn\", did you mean \"json\"?"},
        {"check X --format sarfi", "--format: found \"sarfi\", did you mean \"sarif\"?"},
        {"diff X Y --format jason", "--format: found \"jason\", did you mean \"json\"?"},
        {"explain X --format htlm", "--format: found \"htlm\", did you mean \"html\"?"},
        {"devices --format tabel", "--format: found \"tabel\", did you mean \"table\"?"}};
    for (const auto& [call, text] : calls) {
        const ToolRun run = runTool(tooltest::words(call));
        EXPECT_EQ(run.exitCode, 2) << call;
        EXPECT_THAT(run.err, HasSubstr(text)) << call;
        EXPECT_THAT(run.err, HasSubstr(" (accepted: ")) << call;
    }
}

TEST(Offsets, areDecimalOrHexadecimal)
{
    const std::string module = "examples/modules/MX0304.bin";
    const std::string ten = runTool({"channels", "--in-offset", "10", module}).out;
    EXPECT_THAT(ten, HasSubstr("IW10"));
    EXPECT_EQ(runTool({"channels", "--in-offset", "0xA", module}).out, ten);
    EXPECT_EQ(runTool({"channels", "--in-offset", "010", module}).out, ten); // not octal
    for (const char* verb : {"show", "channels"}) { // config shows no addresses
        EXPECT_THAT(
            runTool({verb, "--help"}).out,
            HasSubstr("module's data begins, 0 to 4294967295, in decimal or, after 0x, in"));
    }
}

} // namespace
