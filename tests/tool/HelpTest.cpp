#include "TemporaryDirectory.h"
#include "ToolProcess.h"

#include <gmock/gmock.h>

#include <sstream>

namespace {

using testing::HasSubstr;
using testing::StartsWith;
using tooltest::runTool;
using tooltest::ToolRun;

struct Example
{
    std::string command;
    std::string output;
};

// The last example of a help text: "  $ mxtool ..." and the lines behind it, without their indent.
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
    while (!example.output.empty() && example.output.substr(example.output.size() - 2) == "\n\n") {
        example.output.pop_back();
    }
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
    // The examples say /tmp; each run has a folder of its own, for others may run beside it.
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

INSTANTIATE_TEST_SUITE_P(Verbs, HelpOfVerb,
                         testing::Values("", "groups", "show", "channels", "config", "populate",
                                         "devices", "build", "dump", "check", "explain", "diff"));

TEST(Help, ofTheProgramNamesEveryVerbAndExitCode)
{
    const ToolRun help = runTool({"--help"});
    for (const char* word :
         {"groups", "show", "channels", "config", "populate", "devices", "build", "dump", "check",
          "explain", "diff", "  0  done", "  3  an input cannot be read or is malformed"}) {
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
    EXPECT_THAT(run.err, HasSubstr("hint: mxtool --help"));
}

INSTANTIATE_TEST_SUITE_P(
    Calls, WrongWords,
    testing::Values(std::pair{"", "subcommand"}, std::pair{"frobnicate", "subcommand"},
                    std::pair{"show", "FILE is required"}, std::pair{"show a b", "b"},
                    std::pair{"groups --format xml a", "xml"},
                    std::pair{"show --in-offset -1 a", "in-offset"},
                    std::pair{"--log-level loud groups a", "\"loud\" is no logging level"}));

} // namespace
