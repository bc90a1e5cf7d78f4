#include "check/CheckReport.h"

#include "ShownText.h"

#include <fmt/format.h>

#include <map>

namespace mxtool {

namespace {

using mxauthor::CheckRule;

Json sarifRules()
{
    Json rules = Json::array();
    for (const CheckRule& rule : mxauthor::checkRules()) {
        rules.push_back(
            {{"id", rule.name},
             {"fullDescription", {{"text", rule.explanation}}},
             {"help", {{"text", fmt::format("Example: {}", rule.example)}}},
             {"defaultConfiguration", {{"level", mxauthor::severityName(rule.severity)}}}});
    }
    return rules;
}

bool staysInUri(unsigned char c)
{
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
           std::string("-._~/").find(static_cast<char>(c)) != std::string::npos;
}

// A path as a relative reference: what a URI cannot hold becomes %XX.
std::string uriOf(const std::string& path)
{
    std::string uri;
    for (const char c : path) {
        const auto byte = static_cast<unsigned char>(c);
        uri += staysInUri(byte) ? std::string(1, c) : fmt::format("%{:02X}", byte);
    }
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

Json sarifResult(const std::string& file, const CheckReport::Entry& entry)
{
    const mxauthor::Finding& finding = entry.finding;
    const auto index = finding.rule - mxauthor::checkRules().data();
    const Json region = regionOf(entry);
    const Json location = {
        {"physicalLocation", {{"artifactLocation", {{"uri", uriOf(file)}}}, {"region", region}}}};
    return {{"ruleId", finding.rule->name},
            {"ruleIndex", index},
            {"level", mxauthor::severityName(entry.severity)},
            {"message", {{"text", toUtf8(messageOf(entry))}}},
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
    const Json driver = {{"name", "mxtool"}, {"version", MXTOOL_VERSION}, {"rules", sarifRules()}};
    const Json run = {{"tool", {{"driver", driver}}}, {"results", results}};
    return {{"version", "2.1.0"}, {"runs", Json::array({run})}};
}

} // namespace mxtool
