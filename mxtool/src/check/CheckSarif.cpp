#include "check/CheckReport.h"

#include <Poco/URI.h>
#include <text/Utf8.h>

#include <fmt/format.h>

#include <algorithm>

namespace mxtool {

namespace {

using mxauthor::CheckRule;

constexpr const char* sarifSchema =
    "https://docs.oasis-open.org/sarif/sarif/v2.1.0/errata01/os/schemas/sarif-schema-2.1.0.json";

Json sarifRule(const CheckRule* rule)
{
    return {{"id", rule->name},
            {"fullDescription", {{"text", rule->explanation}}},
            {"help", {{"text", fmt::format("Example: {}", text::toUtf8(rule->example))}}},
            {"defaultConfiguration", {{"level", mxauthor::severityName(rule->severity)}}}};
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

Json regionOf(const CheckReport::Entry& entry)
{
    if (entry.inText) {
        const mxauthor::SourceError& where = entry.inText->where;
        return {{"startLine", where.line}, {"startColumn", where.column}};
    }
    return {{"byteOffset", entry.finding.place.offset}, {"byteLength", entry.finding.place.length}};
}

std::string messageOf(const CheckReport::Entry& entry)
{
    return entry.inText ? entry.inText->where.text : mxauthor::describe(entry.finding);
}

Json artifactLocation(const std::string& path)
{
    const std::string uriPath = uriPathOf(path);
    if (!path.empty() && path[0] == '/') {
        return {{"uri", "file://" + uriPath}};
    }
    return {{"uri", uriPath}, {"uriBaseId", workingFolder}};
}

Json sarifResult(const std::string& file, const CheckReport::Entry& entry)
{
    const mxauthor::Finding& finding = entry.finding;
    const auto& rules = mxauthor::checkRules();
    const auto index = std::find(rules.begin(), rules.end(), finding.rule) - rules.begin();
    const Json region = regionOf(entry);
    const Json location = {
        {"physicalLocation", {{"artifactLocation", artifactLocation(file)}, {"region", region}}}};
    return {{"ruleId", finding.rule->name},
            {"ruleIndex", index},
            {"level", mxauthor::severityName(entry.severity)},
            {"message", {{"text", text::toUtf8(messageOf(entry))}}},
            {"locations", Json::array({location})}};
}

} // namespace

Json checkSarif(const CheckReport& report)
{
    Json results = Json::array();
    for (const CheckReport::File& file : report.files) {
        for (const CheckReport::Entry& entry : file.entries) {
            results.push_back(sarifResult(file.name, entry));
        }
    }
    const Json driver = {{"name", "mxtool"},
                         {"version", MXTOOL_VERSION},
                         {"rules", listJson(mxauthor::checkRules(), sarifRule)}};
    const Json base = {{"description", {{"text", "The folder in which mxtool was called."}}}};
    const Json run = {{"tool", {{"driver", driver}}},
                      {"originalUriBaseIds", {{workingFolder, base}}},
                      {"results", results}};
    return {{"$schema", sarifSchema}, {"version", "2.1.0"}, {"runs", Json::array({run})}};
}

} // namespace mxtool
