#include "TemporaryDirectory.h"
#include "ToolProcess.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::StartsWith;
using tooltest::readFile;
using tooltest::runTool;
using tooltest::ToolRun;

std::vector<char> charsOf(const std::string& text)
{
    return {text.begin(), text.end()};
}

TEST(BadInput, aMissingFileIsNamedWithTheReason)
{
    for (const char* verb : {"show", "groups"}) {
        const ToolRun run = runTool({verb, "/nonexistent/MX1.bin"});
        EXPECT_EQ(run.exitCode, 3);
        EXPECT_EQ(run.out, "");
        EXPECT_EQ(run.err, "/nonexistent/MX1.bin: error: Cannot open file: /nonexistent/MX1.bin: "
                           "No such file or directory\n");
    }
}

TEST(BadInput, aDirectoryIsNoFile)
{
    const ToolRun run = runTool({"show", "examples"});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_EQ(run.err, "examples: error: Cannot open file: examples: Is a directory\n"
                       "hint: name a file in this directory\n");
}

TEST(BadInput, whatCannotBeWrittenOrReadSaysWhatToName)
{
    const testkit::TemporaryDirectory directory;
    const std::string module = std::string(EXAMPLE_MODULES) + "/MX0001.bin";
    const std::string below = directory.path("none/x.yaml");
    EXPECT_EQ(runTool({"dump", module, "-o", below}).err,
              below +
                  ": error: Cannot write: No such file or directory\nhint: there is no "
                  "directory " +
                  directory.path("none") + ", create it first\n");
    EXPECT_EQ(runTool({"dump", module, "-o", directory.path()}).err,
              directory.path() + ": error: Cannot write: Is a directory\nhint: name a file in this "
                                 "directory\n");
    EXPECT_EQ(runTool({"populate", module, "--db", "sqlite:" + directory.path("d")}).err,
              module + ": error: Cannot read the directory: Not a directory\nhint: name the "
                       "directory that holds this file\n");
    const std::string empty = directory.write("e.yaml", {});
    EXPECT_EQ(runTool({"build", empty, "-o", directory.path("e.bin")}).err,
              empty + ": error: The file is empty, expected the text form of an mx file\nhint: "
                      "mxtool new writes the text of a new module\n");
}

TEST(BadInput, framingFailuresStillListTheGroupsInFront)
{
    const testkit::TemporaryDirectory directory;
    // Group 0x20d3 of 8 bytes, then group 5 of length 5.
    const std::string file =
        directory.write("MX1.bin", {0x20, '\xD3', 0, 8, 0, 2, 0, 0, 0, 5, 0, 5, 0, 0, 0, 0});
    const ToolRun run = runTool({"groups", file});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_THAT(run.out, HasSubstr("20d3   texts"));
    EXPECT_EQ(run.err, file + ":0x000008: error: Parser::parse(): Error in group 5 (@ 8): Invalid "
                              "group length\n");
}

TEST(BadInput, everyPrefixOfAFileIsRefusedWithOneMessage)
{
    const testkit::TemporaryDirectory directory;
    const std::string whole = readFile(std::string(EXAMPLE_MODULES) + "/MX0001.bin");
    // Without its last byte the file is still valid: that byte is in the checksum, which is not
    // compared, and the byte added to every loaded file replaces it.
    for (const std::size_t length : {1U, 4U, 9U, 10U, 33U, 207U, 261U, 305U}) {
        const std::string file = directory.write("cut.bin", charsOf(whole.substr(0, length)));
        const ToolRun run = runTool({"show", file});
        EXPECT_EQ(run.exitCode, 3) << length;
        EXPECT_EQ(run.out, "") << length;
        EXPECT_THAT(run.err, StartsWith(file + ": error: Parser::")) << length;
    }
}

TEST(BadInput, aRepeatedAndAnUnknownGroupAreListedAsTheyStand)
{
    const testkit::TemporaryDirectory directory;
    const std::string file = directory.write(
        "MX1.bin", {0x7A, '\xBC', 0, 6, 0, 0, 0x7A, '\xBC', 0, 7, 1, 0, 0, 'x', 'y'});
    const ToolRun run = runTool({"groups", file, "--format", "csv"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.out, "group,name,offset,size\r\n7abc,,4,0\r\n7abc,,10,1\r\n");
    EXPECT_EQ(run.err, file + ":0x00000d: note: 2 bytes after the last group are not read\n");
}

TEST(BadInput, controlCharactersOfANameNeverReachTheTerminal)
{
    const testkit::TemporaryDirectory directory;
    std::string content = readFile(std::string(EXAMPLE_MODULES) + "/MX0001.bin");
    content.replace(content.find("Field supply"), 5, "\033[2J\a");
    const ToolRun run = runTool({"show", directory.write("MX1.bin", charsOf(content))});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_THAT(run.out, StartsWith("\\x1b[2J\\x07 supply 24 V"));
    EXPECT_EQ(run.out.find('\033'), std::string::npos);
}

} // namespace
