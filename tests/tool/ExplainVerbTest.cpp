#include "TemporaryDirectory.h"
#include "ToolProcess.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace {

using nlohmann::json;
using testing::HasSubstr;
using tooltest::readFile;
using tooltest::runTool;
using tooltest::ToolRun;

const std::string analogueFile = std::string(EXAMPLE_MODULES) + "/MX0304.bin";

// The clean supply module with markup and control characters in its label.
std::string fileWithMarkup(const testkit::TemporaryDirectory& directory)
{
    std::string content = readFile(std::string(EXAMPLE_MODULES) + "/MX0001.bin");
    content.replace(content.find("Field supply "), 13, "<b>&\"\033[2J</b>");
    return directory.write("MX1.bin", {content.begin(), content.end()});
}

TEST(ExplainVerb, dumpsEveryByte)
{
    const ToolRun run = runTool({"explain", analogueFile});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_THAT(run.out, HasSubstr("group 20c0, parameters: "));
    EXPECT_THAT(run.out, HasSubstr(" parameter 3 \"Upper limit\"\n"));
    EXPECT_THAT(run.out,
                HasSubstr("  0x000128  25 1c                    block           default of "
                          "parameter 3 \"Upper limit\": 9500\n"));
    EXPECT_EQ(run.out.find('\033'), std::string::npos);
}

TEST(ExplainVerb, explainsOneByte)
{
    const ToolRun hex = runTool({"explain", analogueFile, "--at", "0x129"});
    const ToolRun decimal = runTool({"explain", analogueFile, "--at", "297"});
    EXPECT_EQ(hex.out, decimal.out);
    EXPECT_THAT(hex.out, HasSubstr("byte     0x1c (28) at 0x000129 (297)\n"));
    EXPECT_THAT(hex.out, HasSubstr("field    block, byte 1 of 2 from 0x000128\n"));
}

TEST(ExplainVerb, refusesPlacesOutsideTheFile)
{
    const ToolRun outside = runTool({"explain", analogueFile, "--at", "1816"});
    EXPECT_EQ(outside.exitCode, 2);
    EXPECT_THAT(outside.err, HasSubstr("1816 (0x718) lies outside the file of 1816 bytes"));
    EXPECT_THAT(runTool({"explain", analogueFile, "--at", "12x"}).err,
                HasSubstr("\"12x\" is not an offset"));
    EXPECT_EQ(runTool({"explain", analogueFile, "--at", "1", "--where", "a"}).exitCode, 2);
}

TEST(ExplainVerb, findsNames)
{
    const ToolRun run = runTool({"explain", analogueFile, "--where", "AI 2"});
    EXPECT_THAT(run.out, HasSubstr("channel 1 (IW2)"));
    EXPECT_THAT(run.out, HasSubstr("name of channel 1"));
    // In UTF-8, as people see it; the file has it in Windows-1252.
    EXPECT_THAT(runTool({"explain", analogueFile, "--where", "±10 V"}).out, HasSubstr("text 100"));
    const ToolRun none = runTool({"explain", analogueFile, "--where", "Uper limit"});
    EXPECT_EQ(none.exitCode, 2);
    EXPECT_THAT(none.err, HasSubstr("did you mean \"Upper limit\""));
}

TEST(ExplainVerb, anEmptyNameOrPlaceIsRefused)
{
    for (const char* option : {"--at", "--where"}) {
        const ToolRun run = runTool({"explain", "examples/modules/MX0304.bin", option, ""});
        EXPECT_EQ(run.exitCode, 2);
        EXPECT_THAT(run.err, HasSubstr(std::string("error: ") + option + ": the value is empty"));
    }
}

TEST(ExplainVerb, jsonCoversTheFile)
{
    const json report = json::parse(runTool({"explain", "--format", "json", analogueFile}).out);
    EXPECT_EQ(report["schema"]["name"], "mxtool.explain");
    std::size_t next = 0;
    for (const json& part : report["parts"]) {
        EXPECT_EQ(part["offset"], next);
        next += part["length"].get<std::size_t>();
        EXPECT_EQ(part["bytes"].get<std::string>().size(),
                  part["length"].get<std::size_t>() * 3 - 1);
    }
    EXPECT_EQ(next, 1816U);
}

TEST(ExplainVerb, htmlIsOnePageWithoutMarkupOfTheFile)
{
    const testkit::TemporaryDirectory directory;
    const ToolRun run = runTool({"explain", "--format", "html", fileWithMarkup(directory)});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_THAT(run.out, HasSubstr("&lt;b&gt;&amp;&quot;\\x1b[2J&lt;/b&gt;"));
    for (const char* outside : {"<b>", "src=", "<link", "<script", "url(", "\033"}) {
        EXPECT_EQ(run.out.find(outside), std::string::npos) << outside;
    }
}

TEST(ExplainVerb, controlCharactersNeverReachTheTerminal)
{
    const testkit::TemporaryDirectory directory;
    const ToolRun run = runTool({"explain", fileWithMarkup(directory)});
    EXPECT_THAT(run.out, HasSubstr("<b>&\"\\x1b[2J</b>"));
    EXPECT_EQ(run.out.find('\033'), std::string::npos);
}

TEST(ExplainVerb, aFileWithoutFramingIsExplainedUpToIt)
{
    const testkit::TemporaryDirectory directory;
    const std::string file =
        directory.write("MX1.bin", {0x20, '\xD3', 0, 8, 0, 2, 0, 0, 0, 5, 0, 5, 0, 0, 0, 0});
    const ToolRun run = runTool({"explain", file});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_THAT(run.out, HasSubstr("group 20d3, texts: 8 bytes"));
    EXPECT_EQ(run.err, file +
                           ":0x000008: error: Parser::parse(): Error in group 5 (@ 8): Invalid "
                           "group length\nhint: mxtool check " +
                           file + " shows the details\n");
}

} // namespace
