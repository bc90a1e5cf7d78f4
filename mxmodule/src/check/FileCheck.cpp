#include "check/FileCheck.h"

#include "ProcessParser.h"
#include "SourcePlace.h"

#include <mxauthor/Check.h>
#include <mxauthor/CheckText.h>

#include <fmt/format.h>
#include <text/Utf8.h>

#include <algorithm>
#include <utility>

namespace mxmodule {

namespace {

bool contains(const std::vector<std::string>& names, const std::string& name)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

// `found` without its place in the file or text; `words` is what is said about it.
CheckFinding checkFinding(const mxauthor::Finding& found, const std::string& words)
{
    CheckFinding made;
    made.rule = found.rule->name;
    made.finding.severity = severityOf(found.rule->severity);
    made.finding.text = fmt::format("[{}] {}", found.rule->name, words);
    made.subject = text::toUtf8(found.subject);
    made.text = text::toUtf8(found.text);
    made.offset = found.place.offset;
    made.length = found.place.length;
    if (found.inGroup) {
        made.group = found.place.group;
    }
    return made;
}

std::vector<CheckFinding> withSettings(std::vector<CheckFinding> all, const RuleSettings& settings)
{
    all.erase(std::remove_if(
                  all.begin(), all.end(),
                  [&](const CheckFinding& one) { return contains(settings.silenced, one.rule); }),
              all.end());
    for (CheckFinding& one : all) {
        if (contains(settings.raised, one.rule)) {
            one.finding.severity = Severity::Error;
        }
    }
    return all;
}

} // namespace

Severity severityOf(mxauthor::Severity severity)
{
    switch (severity) {
    case mxauthor::Severity::Error:
        return Severity::Error;
    case mxauthor::Severity::Warning:
        return Severity::Warning;
    default:
        return Severity::Note;
    }
}

std::vector<CheckFinding> findingsInFile(const std::string& name, const std::vector<char>& bytes,
                                         const RuleSettings& settings)
{
    std::vector<mxauthor::Finding> found;
    withParser(nullptr, [&](auto& /*parser*/) { found = mxauthor::check(bytes); });
    std::vector<CheckFinding> all;
    for (const mxauthor::Finding& one : found) {
        CheckFinding& made = all.emplace_back(checkFinding(one, mxauthor::describe(one)));
        made.finding.place = placeInFile(name, one.place.offset);
    }
    return withSettings(std::move(all), settings);
}

TextCheck checkOfText(const std::string& name, const std::string& source,
                      const mxauthor::BuildResult& built)
{
    std::vector<mxauthor::TextFinding> found;
    withParser(nullptr, [&](auto& /*parser*/) { found = mxauthor::checkText(source, built); });
    TextCheck checked{{}, mxauthor::isRefused(found)};
    for (const mxauthor::TextFinding& one : found) {
        CheckFinding& made =
            checked.findings.emplace_back(checkFinding(one.finding, one.where.text));
        made.finding.place = placeInText(name, one.where);
        made.finding.hint = one.hint;
        made.finding.excerpt = excerptOf(source, one.where);
        made.line = one.where.line;
        made.column = one.where.column;
    }
    return checked;
}

std::vector<CheckFinding> findingsInText(const std::string& name, const std::string& source,
                                         const mxauthor::BuildResult& built,
                                         const RuleSettings& settings)
{
    return withSettings(checkOfText(name, source, built).findings, settings);
}

} // namespace mxmodule
