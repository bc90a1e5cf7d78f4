// mxtool new as a process: a first module in three calls.

#include "TemporaryDirectory.h"
#include "ToolProcess.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace {

using testing::HasSubstr;
using tooltest::readFile;
using tooltest::runTool;
using tooltest::ToolRun;

TEST(NewVerb, makesATextThatBuildsChecksAndShows)
{
    const testkit::TemporaryDirectory directory;
    const std::string text = directory.path("module.yaml");
    const std::string file = directory.path("module.bin");
    const ToolRun written = runTool({"new", "--channels", "3 AI, 2 DO", "--name", "3 AI ±10 V",
                                     "--id", "0x5a0303ff", "-o", text});
    EXPECT_EQ(written.exitCode, 0) << written.err;
    EXPECT_EQ(written.out, text + ": 55 lines, to be filled in\n");
    const ToolRun built = runTool({"build", text, "-o", file});
    EXPECT_EQ(built.exitCode, 0);
    EXPECT_EQ(built.err, "");
    const ToolRun checked = runTool({"check", file});
    EXPECT_EQ(checked.exitCode, 0) << checked.out;
    const ToolRun shown = runTool({"show", file});
    EXPECT_EQ(shown.exitCode, 0);
    for (const char* word : {"3 AI ±10 V", "5a0303ff", "AI 3", "DO 2", "Signal range"}) {
        EXPECT_THAT(shown.out, HasSubstr(word));
    }
}

TEST(NewVerb, printsTheTextAndNothingElse)
{
    const ToolRun run = runTool({"new"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.out.rfind("# yaml-language-server: $schema=/usr/share/parser-mx/", 0), 0U);
    EXPECT_EQ(runTool({"-q", "new"}).out, run.out);
}

TEST(NewVerb, replacesATextOnRequestOnly)
{
    const testkit::TemporaryDirectory directory;
    const std::string text = directory.path("module.yaml");
    ASSERT_EQ(runTool({"new", "-o", text}).exitCode, 0);
    const std::string before = readFile(text);
    const ToolRun run = runTool({"new", "--channels", "1 DI", "-o", text});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(run.err, text +
                           ": error: The file is the text form of an mx file, a new module would "
                           "replace it\nhint: name another file, or add --overwrite to replace "
                           "this one\n");
    EXPECT_EQ(readFile(text), before);
    EXPECT_EQ(runTool({"new", "--channels", "1 DI", "-o", text, "--overwrite"}).exitCode, 0);
    EXPECT_NE(readFile(text), before);
}

TEST(NewVerb, leavesTheFileThatIsThereAfterAMistake)
{
    const testkit::TemporaryDirectory directory;
    const std::string text = directory.write("module.yaml", {'m', 'i', 'n', 'e'});
    const ToolRun run = runTool({"new", "--channels", "3 AX", "-o", text});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(run.out, "");
    EXPECT_THAT(run.err, HasSubstr("--channels: error: unknown kind of channels \"AX\""));
    EXPECT_EQ(readFile(text), "mine");
}

} // namespace
