#include "bus/CouplerPlace.h"
#include "report/CouplerNotes.h"
#include "report/ReportWords.h"

#include <fmt/format.h>
#include <text/ShownText.h>
#include <text/TextTable.h>

namespace mxonline {

namespace {

std::string headText(const ApplyReport& report)
{
    const auto line = [](const char* name, const std::string& value) {
        return fmt::format("{:<16} {}\n", name, text::forTerminal(value));
    };
    return line("Station", report.station) +
           line("Coupler", couplerPlace(report.target, report.map.unit)) +
           line("Started", report.started) + line("Finished", report.finished) +
           line("Commit", commitText(report)) + line("SHA-256 station", report.stationSum) +
           line("SHA-256 now", report.sum.empty() ? "not known" : report.sum) +
           line("mxtool", report.version);
}

std::string parameterTable(const ApplyReport& report)
{
    text::TextTable table(
        {"Module", "Parameter", "Registers", "Before", "Planned", "Now", "Result"});
    for (const AppliedModule& module : report.modules) {
        for (const AppliedParameter& one : module.parameters) {
            table.add({module.name, one.parameter, addressesOf(one), beforeText(one),
                       one.plannedShown, nowText(one), resultText(one)});
        }
    }
    return table.empty() ? "" : "\n" + table.text();
}

std::string moduleTable(const ApplyReport& report)
{
    text::TextTable table(
        {"Position", "Name", "Module", "On the coupler", "SHA-256 of parameters"});
    for (const AppliedModule& module : report.modules) {
        table.add({std::to_string(module.position), module.name, module.moduleId,
                   identityText(module.identification, module.foundId),
                   module.sum.empty() ? "not known" : module.sum});
    }
    return table.empty() ? "" : "\n" + table.text();
}

std::string findingsText(const ApplyReport& report)
{
    std::string all;
    for (const mxmodule::Finding& finding : report.findings) {
        all += fmt::format("\n{}: {}\n", severityName(finding.severity),
                           text::forTerminal(finding.text));
        all += finding.hint.empty() ? "" : "hint: " + text::forTerminal(finding.hint) + "\n";
    }
    return all;
}

} // namespace

std::string ApplyReport::text() const
{
    std::string all = verdict() + "\n\n" + headText(*this) + parameterTable(*this) +
                      moduleTable(*this) + findingsText(*this);
    const std::vector<std::string> notes = notesOf(*this);
    all += notes.empty() ? "" : "\n";
    for (const std::string& note : notes) {
        all += "Note: " + text::forTerminal(note) + "\n";
    }
    return all;
}

} // namespace mxonline
