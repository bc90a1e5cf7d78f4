#include "TemporaryDirectory.h"
#include "ToolProcess.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace {

using testing::HasSubstr;
using tooltest::readFile;
using tooltest::runTool;
using tooltest::ToolRun;
using tooltest::ToolSetup;

const std::string example = "examples/modules/MX0602.bin";

TEST(Streams, resultsGoToStandardOutputAlone)
{
    const ToolRun run = runTool({"show", example});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_THAT(run.out, HasSubstr("2 counters 32 bit (kv38.5a060602)"));
    EXPECT_EQ(run.err, "");
}

TEST(Streams, aDashReadsStandardInput)
{
    ToolSetup setup;
    setup.standardInput = std::string(PROJECT_BUILD) + "/" + example;
    for (const char* verb : {"show", "groups"}) {
        EXPECT_EQ(runTool({verb, "-"}, setup).out, runTool({verb, example}).out);
    }
}

TEST(Streams, anOutputFileHoldsWhatStandardOutputWould)
{
    const testkit::TemporaryDirectory directory;
    const ToolRun run = runTool({"show", example, "-o", directory.path("show.txt")});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(readFile(directory.path("show.txt")), runTool({"show", example}).out);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(directory.path()), {}), 1);
}

TEST(Streams, aFailedRunKeepsTheOutputFileThatWasThere)
{
    const testkit::TemporaryDirectory directory;
    const std::string file = directory.write("show.txt", {'o', 'l', 'd'});
    EXPECT_EQ(runTool({"show", "examples/modules/MX9999.bin", "-o", file}).exitCode, 3);
    EXPECT_EQ(readFile(file), "old");
}

TEST(Streams, anOutputFileKeepsWhoMayReadIt)
{
    namespace fs = std::filesystem;
    const testkit::TemporaryDirectory directory;
    const std::string file = directory.write("show.txt", {'o', 'l', 'd'});
    fs::permissions(file, fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(runTool({"show", example, "-o", file}).exitCode, 0);
    EXPECT_NE(readFile(file), "old");
    EXPECT_EQ(fs::status(file).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST(Streams, anOutputThatIsALinkIsWrittenToItsTarget)
{
    namespace fs = std::filesystem;
    const testkit::TemporaryDirectory directory;
    const std::string file = directory.write("show.txt", {'o', 'l', 'd'});
    for (const std::string& target : {file, directory.path("new.txt")}) {
        const std::string link = target + ".link";
        fs::create_symlink(target, link);
        EXPECT_EQ(runTool({"show", example, "-o", link}).exitCode, 0);
        EXPECT_TRUE(fs::is_symlink(link));
        EXPECT_THAT(readFile(target), HasSubstr("2 counters 32 bit"));
    }
}

TEST(Streams, anOutputFileMayHaveTheLongestName)
{
    const testkit::TemporaryDirectory directory;
    const std::string file = directory.path(std::string(255, 'x'));
    EXPECT_EQ(runTool({"show", example, "-o", file}).exitCode, 0);
    EXPECT_THAT(readFile(file), HasSubstr("2 counters 32 bit"));
}

TEST(Streams, aFullDeviceIsAFailedOutput)
{
    ToolSetup full;
    full.standardOutput = "/dev/full";
    const ToolRun toStandardOutput = runTool({"groups", example}, full);
    EXPECT_EQ(toStandardOutput.exitCode, 4);
    EXPECT_EQ(toStandardOutput.err,
              "<standard output>: error: Cannot write: No space left on device\n");
    EXPECT_EQ(runTool({"groups", example, "-o", "/dev/full"}).exitCode, 4);
    EXPECT_EQ(runTool({"--help"}, full).exitCode, 4);
}

TEST(Streams, aClosedPipeIsNotReported)
{
    ToolSetup left;
    left.readerLeft = true;
    for (const auto& call : {std::vector<std::string>{"show", example},
                             {"--help"},
                             {"check", example, "--format", "json"}}) {
        const ToolRun run = runTool(call, left);
        EXPECT_EQ(run.exitCode, 4);
        EXPECT_EQ(run.err, "");
    }
}

TEST(Streams, anOutputInAMissingDirectoryIsAFailedOutput)
{
    const ToolRun run = runTool({"show", example, "-o", "/nonexistent/show.txt"});
    EXPECT_EQ(run.exitCode, 4);
    EXPECT_EQ(run.err, "/nonexistent/show.txt: error: Cannot write: No such file or directory\n"
                       "hint: there is no directory /nonexistent, create it first\n");
}

TEST(Streams, diagnosticsHaveNoColourOutsideATerminal)
{
    const ToolRun run = runTool({"show", "examples/modules/MX9999.bin"});
    EXPECT_EQ(run.err.find('\033'), std::string::npos);
}

TEST(Streams, logLinesOfTheChosenLevelAreDiagnostics)
{
    EXPECT_EQ(runTool({"show", example}).err, "");
    const ToolRun debug = runTool({"show", example, "--log-level", "debug"});
    EXPECT_THAT(debug.err, HasSubstr("note: parseGroup: 20d0 (91 bytes)\n"));
    EXPECT_EQ(debug.err.find(">> "), std::string::npos);
    EXPECT_THAT(runTool({"--log-level", "trace", "show", example}).err,
                HasSubstr("note: >> parseChannel().\n"));
}

TEST(Streams, offsetsMoveTheAddresses)
{
    const ToolRun run = runTool({"show", example, "--in-offset", "10", "--out-offset", "20"});
    EXPECT_THAT(run.out, HasSubstr("IX10_0"));
    EXPECT_THAT(run.out, HasSubstr("QX20_0"));
    EXPECT_THAT(run.out, HasSubstr("from byte 10"));
}

TEST(Streams, aParameterBlockReplacesTheDefaults)
{
    const testkit::TemporaryDirectory directory;
    // The second option of the filter, and every input inverted.
    const std::string block = directory.write("block.bin", {0x00, '\xFF'});
    const ToolRun run = runTool({"show", "examples/modules/MX0108.bin", "--param-block", block});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_THAT(run.out, HasSubstr("[0.2 ms = 0]"));

    const std::string tooLong = directory.write("long.bin", {0, 0, 0});
    const ToolRun refused =
        runTool({"show", "examples/modules/MX0108.bin", "--param-block", tooLong});
    EXPECT_EQ(refused.exitCode, 3);
    EXPECT_EQ(refused.err, tooLong + ": error: Found 3 bytes, expected the 2 bytes of the module's "
                                     "parameter block\n");
}

} // namespace
