#include "mxmodule/Check.h"

#include <Poco/URI.h>
#include <text/JsonText.h>
#include <text/Utf8.h>

#include <fmt/format.h>

#include <algorithm>

namespace mxmodule {

namespace {

constexpr const char* sarifSchema =
    "https://docs.oasis-open.org/sarif/sarif/v2.1.0/errata01/os/schemas/sarif-schema-2.1.0.json";

text::Json sarifRule(const CheckRule& rule)
{
    return {{"id", rule.name},
            {"fullDescription", {{"text", rule.explanation}}},
            {"help", {{"text", fmt::format("Example: {}", rule.example)}}},
            {"defaultConfiguration", {{"level", severityName(rule.severity)}}}};
}

// The base of relative references: the current directory of mxtool. Its path is not written, so
// that the report is the same on every machine.
constexpr const char* workingFolder = "WORKINGFOLDER";

// A path as part of a URI: other characters become %XX.
std::string uriPathOf(const std::string& path)
{
    std::string uri;
    Poco::URI::encode(path, "!#$&'()*+,:;=?@[]", uri);
    return uri;
}

text::Json regionOf(const CheckFinding& found)
{
    if (found.line && found.column) {
        return {{"startLine", *found.line}, {"startColumn", *found.column}};
    }
    return {{"byteOffset", found.offset}, {"byteLength", found.length}};
}

// The text of the finding without the rule.
std::string messageOf(const CheckFinding& found)
{
    const std::string rule = "[" + found.rule + "] ";
    const std::string& text = found.finding.text;
    return text.compare(0, rule.size(), rule) == 0 ? text.substr(rule.size()) : text;
}

text::Json artifactLocation(const std::string& path)
{
    const std::string uriPath = uriPathOf(path);
    if (!path.empty() && path[0] == '/') {
        return {{"uri", "file://" + uriPath}};
    }
    return {{"uri", uriPath}, {"uriBaseId", workingFolder}};
}

text::Json sarifResult(const std::string& file, const CheckFinding& found,
                       const std::vector<CheckRule>& rules)
{
    const auto rule = std::find_if(rules.begin(), rules.end(),
                                   [&](const CheckRule& one) { return one.name == found.rule; });
    const text::Json location = {
        {"physicalLocation",
         {{"artifactLocation", artifactLocation(file)}, {"region", regionOf(found)}}}};
    return {{"ruleId", found.rule},
            {"ruleIndex", rule == rules.end() ? -1 : rule - rules.begin()},
            {"level", severityName(found.finding.severity)},
            {"message", {{"text", text::toUtf8(messageOf(found))}}},
            {"locations", text::Json::array({location})}};
}

} // namespace

std::string checkSarif(const std::vector<CheckedFile>& files)
{
    const std::vector<CheckRule> rules = checkRules();
    text::Json results = text::Json::array();
    for (const CheckedFile& file : files) {
        for (const CheckFinding& found : file.findings) {
            results.push_back(sarifResult(file.name, found, rules));
        }
    }
    const text::Json driver = {{"name", "mxtool"},
                               {"version", MXMODULE_VERSION},
                               {"rules", text::listJson(rules, sarifRule)}};
    const text::Json base = {{"description", {{"text", "The folder in which mxtool was called."}}}};
    const text::Json run = {{"tool", {{"driver", driver}}},
                            {"originalUriBaseIds", {{workingFolder, base}}},
                            {"results", results}};
    return text::jsonText(
        {{"$schema", sarifSchema}, {"version", "2.1.0"}, {"runs", text::Json::array({run})}});
}

} // namespace mxmodule
