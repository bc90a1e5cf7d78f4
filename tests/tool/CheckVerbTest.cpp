#include "TemporaryDirectory.h"
#include "ToolProcess.h"

#include <gmock/gmock.h>

#include <nlohmann/json.hpp>
#include <sys/stat.h>

namespace {

using nlohmann::json;
using testing::HasSubstr;
using tooltest::runTool;
using tooltest::ToolRun;

const std::string cleanFile = std::string(EXAMPLE_MODULES) + "/MX0001.bin";
const std::string notedFile = std::string(EXAMPLE_MODULES) + "/MX0803.bin"; // notes alone

// Group 0x20d3 of 8 bytes, then group 5 of length 5: one framing error, and the parser's message.
std::string brokenFile(const testkit::TemporaryDirectory& directory,
                       const std::string& name = "MX1.bin")
{
    return directory.write(name, {0x20, '\xD3', 0, 8, 0, 2, 0, 0, 0, 5, 0, 5, 0, 0, 0, 0});
}

TEST(CheckVerb, showsFindingsWithTheirPlaceAndEndsWith1)
{
    const testkit::TemporaryDirectory directory;
    const std::string file = brokenFile(directory);
    const ToolRun run = runTool({"check", file});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.out,
              file +
                  ":0x000008: error: [framing] group 0005 states a length of 5 bytes, 8 are left "
                  "and the minimum is 6\n" +
                  file +
                  ":0x000008: error: [parser-refuses] Parser::parse(): Error in group 5 (@ "
                  "8): Invalid group length\n"
                  "1 file checked: 2 errors, 0 warnings, 0 notes\n");
}

TEST(CheckVerb, quietLeavesOutTheClosingLine)
{
    const ToolRun run = runTool({"-q", "check", cleanFile});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.out, "");
}

TEST(CheckVerb, aRuleIsLeftOutOrRaised)
{
    const testkit::TemporaryDirectory directory;
    const std::string file = brokenFile(directory);
    EXPECT_EQ(runTool({"check", "-W", "no-framing", "-W", "no-parser-refuses", file}).exitCode, 0);
    EXPECT_THAT(runTool({"check", notedFile}).out, HasSubstr("note: [date-cut]"));
    const ToolRun raised = runTool({"check", "-E", "date-cut", notedFile});
    EXPECT_THAT(raised.out, HasSubstr("error: [date-cut]"));
    EXPECT_EQ(raised.exitCode, 1);
}

TEST(CheckVerb, strictEndsWith1OnAnyFinding)
{
    EXPECT_EQ(runTool({"check", notedFile}).exitCode, 0);
    EXPECT_EQ(runTool({"check", "--strict", notedFile}).exitCode, 1);
    EXPECT_EQ(runTool({"check", "--strict", cleanFile}).exitCode, 0);
}

TEST(CheckVerb, aDirectoryMeansItsMxFiles)
{
    const testkit::TemporaryDirectory directory;
    brokenFile(directory, "MX2.bin");
    brokenFile(directory, "MX1.bin");
    brokenFile(directory, "other.bin");
    const ToolRun run = runTool({"check", directory.path()});
    EXPECT_THAT(run.out, HasSubstr("2 files checked: 4 errors"));
    EXPECT_LT(run.out.find("MX1.bin"), run.out.find("MX2.bin"));
}

TEST(CheckVerb, continuesAfterAFileThatCannotBeRead)
{
    const testkit::TemporaryDirectory directory;
    const ToolRun run = runTool({"check", "/nonexistent.bin", directory.path(), cleanFile});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_THAT(run.err, HasSubstr("/nonexistent.bin: error: Cannot open file"));
    EXPECT_THAT(run.err, HasSubstr("error: The directory holds no file MX*.bin"));
    EXPECT_EQ(run.out, "1 file checked: 0 errors, 0 warnings, 0 notes\n");
}

TEST(CheckVerb, countsNothingWhenNoFileCanBeRead)
{
    const testkit::TemporaryDirectory directory;
    const std::string text = "modules: []\n";
    const std::string station = directory.write("row.yaml", {text.begin(), text.end()});
    const ToolRun run = runTool({"check", station, "/nonexistent.bin"});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_EQ(run.out, "");
    EXPECT_THAT(run.err, HasSubstr("row.yaml: error: This is a station, expected an mx file"));
    EXPECT_EQ(json::parse(runTool({"check", "--format", "json", station}).out)["files"],
              json::array());
}

TEST(CheckVerb, jsonHoldsEveryFinding)
{
    const testkit::TemporaryDirectory directory;
    const ToolRun run = runTool({"check", "--format", "json", brokenFile(directory)});
    const json report = json::parse(run.out);
    EXPECT_EQ(report["schema"]["name"], "mxtool.check");
    EXPECT_EQ(report["errors"], 2);
    const json& finding = report["files"][0]["findings"][0];
    EXPECT_EQ(finding["rule"], "framing");
    EXPECT_EQ(finding["offset"], 8);
    EXPECT_EQ(finding["length"], 4);
    EXPECT_TRUE(finding["group"].is_null());
}

TEST(CheckVerb, sarifNamesRulesAndPlaces)
{
    const testkit::TemporaryDirectory directory;
    const ToolRun run = runTool({"check", "--format", "sarif", brokenFile(directory, "MX 1%.bin")});
    const json log = json::parse(run.out);
    EXPECT_EQ(log["version"], "2.1.0");
    const json& driver = log["runs"][0]["tool"]["driver"];
    EXPECT_EQ(driver["name"], "mxtool");
    ASSERT_EQ(log["runs"][0]["results"].size(), 2U);
    for (const json& result : log["runs"][0]["results"]) {
        EXPECT_EQ(result["level"], "error");
        EXPECT_EQ(driver["rules"][result["ruleIndex"].get<std::size_t>()]["id"], result["ruleId"]);
        const json& place = result["locations"][0]["physicalLocation"];
        EXPECT_EQ(place["region"]["byteOffset"], 8);
        EXPECT_EQ(place["artifactLocation"],
                  json({{"uri", "file://" + directory.path() + "/MX%201%25.bin"}}));
    }
}

TEST(CheckVerb, sarifSaysWhereARelativePathBegins)
{
    const ToolRun run = runTool({"check", "--format", "sarif", "examples/modules/MX9999.bin"});
    const json log = json::parse(run.out)["runs"][0];
    EXPECT_EQ(log["results"][0]["locations"][0]["physicalLocation"]["artifactLocation"],
              json({{"uri", "examples/modules/MX9999.bin"}, {"uriBaseId", "WORKINGFOLDER"}}));
    // The path is described, not resolved: the report is the same in every directory.
    EXPECT_EQ(log["originalUriBaseIds"],
              json({{"WORKINGFOLDER",
                     {{"description", {{"text", "The folder in which mxtool was called."}}}}}}));
}

TEST(CheckVerb, listsAndExplainsItsRules)
{
    const ToolRun list = runTool({"check", "--list-rules", "--format", "json"});
    const json rules = json::parse(list.out);
    EXPECT_GE(rules["rules"].size(), 30U);
    for (const json& rule : rules["rules"]) {
        const ToolRun one = runTool({"check", "--explain", rule["name"].get<std::string>()});
        EXPECT_EQ(one.exitCode, 0);
        EXPECT_THAT(one.out, HasSubstr(rule["explanation"].get<std::string>()));
    }
}

TEST(CheckVerb, rejectsInvalidCommandLines)
{
    const ToolRun rule = runTool({"check", "-E", "text-mising", cleanFile});
    EXPECT_EQ(rule.exitCode, 2);
    EXPECT_THAT(rule.err, HasSubstr("there is no rule \"text-mising\", did you mean "
                                    "\"text-missing\"? mxtool check --list-rules names them"));
    EXPECT_THAT(runTool({"check", "-W", "framing", cleanFile}).err, HasSubstr("takes no-RULE"));
    EXPECT_EQ(runTool({"check"}).exitCode, 2);
}

TEST(CheckVerb, readsStandardInput)
{
    tooltest::ToolSetup setup;
    setup.standardInput = std::string(EXAMPLE_MODULES) + "/MX0901.bin";
    EXPECT_THAT(runTool({"check", "-"}, setup).out,
                HasSubstr("<standard input>:0x000165: warning: [channel-name-repeated]"));
}

TEST(CheckVerb, aPipeInADirectoryIsRefusedInsteadOfRead)
{
    const testkit::TemporaryDirectory directory;
    const std::string pipe = directory.path("MX1.bin");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const ToolRun run = runTool({"check", directory.path()});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_EQ(run.err, pipe + ": error: Found a pipe or a device, expected a file\n");
}

} // namespace
