#include <mxmodule/Check.h>
#include <mxmodule/ModuleFile.h>

#include "MxBuffer.h"
#include "ShownFinding.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace {

using mxmodule::CheckedFile;
using mxmodule::CheckFinding;
using mxmodule::ModuleFile;
using mxmodule::RuleSettings;
using mxmodule::Severity;
using testing::ElementsAre;
using testing::IsEmpty;

// Group 0x20d3 of 8 bytes in all, then at 8 group 5, whose length of 5 is below the minimum.
CheckedFile checkedBroken(const RuleSettings& settings = {})
{
    const auto bytes = testkit::hexBytes("20d3 0008 0002 0000 0005 0005 0000 0000");
    return ModuleFile("a.bin", {bytes.begin(), bytes.end()}).check(settings);
}

// A text whose file has no catalogue, and a group that is none of the format on line 3.
CheckedFile checkedText(const RuleSettings& settings = {})
{
    const std::string text = "module: {type: 3, id: 0x5a030304}\n"
                             "raw:\n"
                             "  - {id: 0x20d4, hex: \"0102\"}\n";
    return ModuleFile("a.yaml", {text.begin(), text.end()}).check(settings);
}

std::vector<std::string> rulesOf(const CheckedFile& file)
{
    std::vector<std::string> rules;
    for (const CheckFinding& found : file.findings) {
        rules.push_back(found.rule);
    }
    return rules;
}

TEST(Check, namesTheBytesOfAnMxFile)
{
    const CheckedFile file = checkedBroken();
    EXPECT_EQ(file.name, "a.bin");
    ASSERT_THAT(rulesOf(file), ElementsAre("framing", "parser-refuses"));
    const CheckFinding& framing = file.findings[0];
    EXPECT_EQ(shown(framing.finding),
              "a.bin:0x000008: error: [framing] group 0005 states a length of 5 bytes, 8 are left "
              "and the minimum is 6\n");
    EXPECT_EQ(framing.offset, 8U);
    EXPECT_EQ(framing.line, std::nullopt);
    EXPECT_EQ(framing.column, std::nullopt);
    EXPECT_EQ(framing.finding.excerpt, "");
}

TEST(Check, namesTheLineOfATextForm)
{
    const CheckedFile file = checkedText();
    ASSERT_THAT(rulesOf(file),
                ElementsAre("group-missing", "group-missing", "parser-refuses", "unknown-group"));
    const CheckFinding& unknown = file.findings[3];
    EXPECT_EQ(shown(unknown.finding),
              "a.yaml:3:5: note: [unknown-group] group 20d4: not a group of the format, 2 bytes "
              "skipped\n");
    EXPECT_EQ(unknown.finding.excerpt, "  - {id: 0x20d4, hex: \"0102\"}\n"
                                       "    ^\n");
    EXPECT_EQ(unknown.line, 3U);
    EXPECT_EQ(unknown.column, 5U);
    EXPECT_EQ(unknown.group, 0x20D4U);
    EXPECT_EQ(unknown.text, "not a group of the format, 2 bytes skipped");
    EXPECT_EQ(file.findings[0].finding.hint, "the key \"catalogue\" states it");
}

TEST(Check, aSilencedRuleIsLeftOut)
{
    EXPECT_THAT(rulesOf(checkedText({{"group-missing", "parser-refuses"}, {}})),
                ElementsAre("unknown-group"));
    EXPECT_THAT(rulesOf(checkedBroken({{"framing", "parser-refuses"}, {}})), IsEmpty());
}

TEST(Check, aRaisedRuleIsAnError)
{
    const CheckedFile file = checkedText({{}, {"unknown-group"}});
    EXPECT_EQ(countOf(Severity::Error, {file}), 4U);
    EXPECT_EQ(countOf(Severity::Note, {file}), 0U);
}

TEST(Check, countsOverAllFiles)
{
    const std::vector<CheckedFile> files = {checkedBroken(), checkedText(), {"sound.bin", {}}};
    EXPECT_EQ(countOf(Severity::Error, files), 5U);
    EXPECT_EQ(countOf(Severity::Warning, files), 0U);
    EXPECT_EQ(countOf(Severity::Note, files), 1U);
}

TEST(Check, jsonHoldsWhatTheFindingsSay)
{
    const nlohmann::json document = nlohmann::json::parse(mxmodule::checkJson({checkedText()}));
    EXPECT_EQ(document["errors"], 3);
    EXPECT_EQ(document["notes"], 1);
    const nlohmann::json& file = document["files"][0];
    EXPECT_EQ(file["file"], "a.yaml");
    EXPECT_EQ(file["findings"][0]["group"], nullptr);
    const nlohmann::json& unknown = file["findings"][3];
    EXPECT_EQ(unknown["rule"], "unknown-group");
    EXPECT_EQ(unknown["severity"], "note");
    EXPECT_EQ(unknown["line"], 3);
    EXPECT_EQ(unknown["column"], 5);
    EXPECT_EQ(unknown["group"], "20d4");
}

TEST(Check, sarifNamesBytesOrLines)
{
    const nlohmann::json run =
        nlohmann::json::parse(mxmodule::checkSarif({checkedBroken(), checkedText()}))["runs"][0];
    const nlohmann::json& results = run["results"];
    ASSERT_EQ(results.size(), 6U);
    EXPECT_EQ(results[0]["locations"][0]["physicalLocation"]["region"]["byteOffset"], 8);
    EXPECT_EQ(results[5]["locations"][0]["physicalLocation"]["region"],
              (nlohmann::json{{"startLine", 3}, {"startColumn", 5}}));
    EXPECT_EQ(results[5]["message"]["text"],
              "group 20d4: not a group of the format, 2 bytes skipped");
    for (const nlohmann::json& result : results) {
        const nlohmann::json& rules = run["tool"]["driver"]["rules"];
        EXPECT_EQ(rules[result["ruleIndex"].get<std::size_t>()]["id"], result["ruleId"]);
    }
}

TEST(Check, sarifHoldsFindingsOfAHost)
{
    CheckFinding own;
    own.rule = "plant-naming";
    own.finding.text = "no plant code";
    const nlohmann::json run =
        nlohmann::json::parse(mxmodule::checkSarif({{"a.bin", {own}}}))["runs"][0];
    const nlohmann::json& result = run["results"][0];
    EXPECT_EQ(result["message"]["text"], "no plant code");
    EXPECT_EQ(result["ruleId"], "plant-naming");
    EXPECT_EQ(result["ruleIndex"], -1); // as the format has it for a rule that is not listed
}

TEST(Check, everyRuleIsDescribed)
{
    const nlohmann::json listed = nlohmann::json::parse(mxmodule::checkRulesJson())["rules"];
    const std::vector<mxmodule::CheckRule> rules = mxmodule::checkRules();
    ASSERT_EQ(listed.size(), rules.size());
    for (std::size_t i = 0; i < rules.size(); ++i) {
        EXPECT_EQ(listed[i]["name"], rules[i].name);
        EXPECT_NE(rules[i].explanation, "") << rules[i].name;
        EXPECT_NE(rules[i].example, "") << rules[i].name;
    }
}

} // namespace
