#include "check/CheckReport.h"

#include "Counted.h"
#include "Diagnostic.h"
#include "TextTable.h"

#include <devices/parser/mx/HexText.h>
#include <text/ShownText.h>
#include <text/Utf8.h>

#include <fmt/format.h>

#include <algorithm>

namespace mxtool {

namespace {

using mxauthor::CheckRule;
using mxauthor::Finding;
using mxauthor::Severity;

bool contains(const std::vector<std::string>& names, const std::string& name)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

std::string entryText(const std::string& file, const CheckReport::Entry& entry, bool coloured)
{
    const Finding& finding = entry.finding;
    if (entry.inText) {
        const CheckReport::TextPlace& place = *entry.inText;
        return toText({mxauthor::severityName(entry.severity), placeInText(file, place.where),
                       fmt::format("[{}] {}", finding.rule->name, place.where.text), place.hint},
                      coloured) +
               place.excerpt;
    }
    return toText({mxauthor::severityName(entry.severity), placeInFile(file, finding.place.offset),
                   fmt::format("[{}] {}", finding.rule->name, mxauthor::describe(finding)), ""},
                  coloured);
}

Json entryJson(const CheckReport::Entry& entry)
{
    const Finding& finding = entry.finding;
    const auto& inText = entry.inText;
    return {{"rule", finding.rule->name},
            {"severity", mxauthor::severityName(entry.severity)},
            {"line", inText ? Json(inText->where.line) : Json()},
            {"column", inText ? Json(inText->where.column) : Json()},
            {"offset", finding.place.offset},
            {"length", finding.place.length},
            {"group",
             finding.inGroup ? Json(devices::parser::mx::u16AsHex(finding.place.group)) : Json()},
            {"subject", text::toUtf8(finding.subject)},
            {"text", text::toUtf8(finding.text)}};
}

Json fileJson(const CheckReport::File& file)
{
    return {{"file", text::toUtf8(file.name)}, {"findings", listJson(file.entries, entryJson)}};
}

Json ruleJson(const CheckRule* rule)
{
    return {{"name", rule->name},
            {"severity", mxauthor::severityName(rule->severity)},
            {"explanation", rule->explanation},
            {"example", text::toUtf8(rule->example)}};
}

// Every finding, with the severity of its rule.
std::vector<CheckReport::Entry> entriesOf(const ModuleFile& module)
{
    std::vector<CheckReport::Entry> entries;
    if (module.isText()) {
        for (const mxauthor::TextFinding& found : module.checkText()) {
            entries.push_back(
                {found.finding, found.rule->severity,
                 CheckReport::TextPlace{found.where, found.hint, module.excerptAt(found.where)}});
        }
        return entries;
    }
    for (const Finding& finding : mxauthor::check(module.bytes())) {
        entries.push_back({finding, finding.rule->severity, std::nullopt});
    }
    return entries;
}

} // namespace

unsigned CheckReport::count(Severity severity) const
{
    unsigned total = 0;
    for (const File& file : files) {
        for (const Entry& entry : file.entries) {
            total += entry.severity == severity ? 1 : 0;
        }
    }
    return total;
}

CheckReport::File checkedFile(const ModuleFile& module, const RuleSettings& settings)
{
    CheckReport::File file{module.name(), {}};
    for (CheckReport::Entry& entry : entriesOf(module)) {
        const std::string rule = entry.finding.rule->name;
        if (contains(settings.raised, rule)) {
            entry.severity = Severity::Error;
        }
        if (!contains(settings.silenced, rule)) {
            file.entries.push_back(std::move(entry));
        }
    }
    return file;
}

std::string checkText(const CheckReport& report, bool coloured, bool quiet)
{
    std::string text;
    for (const CheckReport::File& file : report.files) {
        for (const CheckReport::Entry& entry : file.entries) {
            text += entryText(file.name, entry, coloured);
        }
    }
    if (!quiet) {
        text += fmt::format("{} checked: {}, {}, {}\n",
                            counted(static_cast<unsigned>(report.files.size()), "file"),
                            counted(report.count(Severity::Error), "error"),
                            counted(report.count(Severity::Warning), "warning"),
                            counted(report.count(Severity::Note), "note"));
    }
    return text;
}

Json checkJson(const CheckReport& report)
{
    return {{"schema", jsonSchema("mxtool.check", 2)},
            {"files", listJson(report.files, fileJson)},
            {"errors", report.count(Severity::Error)},
            {"warnings", report.count(Severity::Warning)},
            {"notes", report.count(Severity::Note)}};
}

std::string ruleListText()
{
    TextTable table({"Rule", "Severity", "What is wrong"});
    for (const CheckRule* rule : mxauthor::checkRules()) {
        table.add({rule->name, mxauthor::severityName(rule->severity), rule->explanation});
    }
    return table.text();
}

Json ruleListJson()
{
    return {{"schema", jsonSchema("mxtool.check-rules", 1)},
            {"rules", listJson(mxauthor::checkRules(), ruleJson)}};
}

std::string ruleText(const CheckRule& rule)
{
    return fmt::format("{} ({})\n\n{}\n\nExample:\n  {}\n", rule.name,
                       mxauthor::severityName(rule.severity), rule.explanation,
                       text::forTerminal(rule.example));
}

} // namespace mxtool
