#include "check/CheckText.h"

#include "Diagnostic.h"

#include <text/Counted.h>
#include <text/ShownText.h>
#include <text/TextTable.h>

#include <fmt/format.h>

namespace mxtool {

namespace {

using mxmodule::CheckedFile;

std::string countsOf(const std::vector<CheckedFile>& files)
{
    return fmt::format("{} checked: {}, {}, {}\n", text::counted(files.size(), "file"),
                       text::counted(countOf(Severity::Error, files), "error"),
                       text::counted(countOf(Severity::Warning, files), "warning"),
                       text::counted(countOf(Severity::Note, files), "note"));
}

} // namespace

std::string checkText(const std::vector<CheckedFile>& files, bool coloured, bool quiet)
{
    std::string text;
    for (const CheckedFile& file : files) {
        for (const mxmodule::CheckFinding& found : file.findings) {
            text += toText(found.finding, coloured);
        }
    }
    return quiet ? text : text + countsOf(files);
}

std::string ruleListText()
{
    text::TextTable table({"Rule", "Severity", "What is wrong"});
    for (const mxmodule::CheckRule& rule : mxmodule::checkRules()) {
        table.add({rule.name, severityName(rule.severity), rule.explanation});
    }
    return table.text();
}

std::string ruleText(const mxmodule::CheckRule& rule)
{
    return fmt::format("{} ({})\n\n{}\n\nExample:\n  {}\n", rule.name, severityName(rule.severity),
                       rule.explanation, text::forTerminal(rule.example));
}

} // namespace mxtool
