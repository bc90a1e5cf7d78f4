#include "report/CouplerNotes.h"
#include "report/ReportWords.h"

#include <fmt/format.h>
#include <text/Html.h>

namespace mxonline {

namespace {

using text::HtmlTable;
using text::htmlText;

constexpr const char* style = R"(
:root { color-scheme: light; }
* { box-sizing: border-box; }
body { font: 15px/1.5 system-ui, "Segoe UI", "DejaVu Sans", sans-serif; color: #1c2430; background: #fff;
       margin: 2rem auto; max-width: 72rem; padding: 0 1.25rem; }
h1 { font-size: 1.5rem; margin: 0 0 1rem; overflow-wrap: anywhere; }
h2 { font-size: 1.1rem; margin: 2rem 0 .5rem; }
.verdict { border: 2px solid; border-left-width: .6rem; border-radius: .3rem; padding: .7rem 1rem;
           font-size: 1.1rem; font-weight: 600; }
.verdict ul { margin: .3rem 0 0; padding-left: 1.2rem; font-weight: 400; }
.done { border-color: #1a7f45; background: #eaf7ef; color: #0e5a2f; }
.failed { border-color: #b3261e; background: #fdeeed; color: #8a1a14; }
.notes { border-left: .3rem solid #b7791f; background: #fdf6e7; padding: .5rem 1rem; margin: 1rem 0; }
.notes p { margin: .2rem 0; }
dl { display: grid; grid-template-columns: max-content 1fr; gap: .2rem 1.2rem; margin: 1.2rem 0; }
dt { color: #5a6675; padding-left: .5rem; }
dd { margin: 0; overflow-wrap: anywhere; }
table { border-collapse: collapse; width: 100%; font-size: .93rem; }
th { text-align: left; color: #5a6675; font-weight: 600; border-bottom: 2px solid #c9d1db; white-space: nowrap; }
th, td { padding: .35rem .5rem; vertical-align: top; overflow-wrap: anywhere; }
td { border-bottom: 1px solid #e3e8ee; }
.sum, td[data-name="SHA-256"], td[data-name="Registers"] { font-family: ui-monospace, "DejaVu Sans Mono", monospace;
       font-size: .82rem; }
td[data-name="SHA-256"] { width: 34rem; }
td[data-name="Identifier"] { white-space: nowrap; }
tr.good td:last-child { color: #0e5a2f; }
tr.bad { background: #fdeeed; }
tr.bad td:last-child { color: #8a1a14; font-weight: 600; }
.fault { border-left: .3rem solid #b3261e; padding: .2rem 0 .2rem 1rem; margin: .8rem 0; overflow-wrap: anywhere; }
.fault p { margin: .2rem 0; }
.hint { color: #5a6675; }
footer { margin-top: 2rem; color: #5a6675; font-size: .85rem; }
@media (max-width: 46rem) {
  dl { grid-template-columns: 1fr; gap: 0; } dt { padding: 0; } dd { margin-bottom: .5rem; }
  thead { display: none; } table, tbody, tr, td { display: block; width: auto; }
  tr { border: 1px solid #c9d1db; border-radius: .3rem; margin: .6rem 0; padding: .3rem .7rem; }
  td, td[data-name="SHA-256"] { border: 0; padding: .15rem 0; width: auto; }
  td::before { content: attr(data-name) ": "; color: #5a6675; font-family: system-ui, sans-serif; }
}
@media print {
  @page { margin: 15mm; }
  body { margin: 0; padding: 0; max-width: none; font-size: 10pt; }
  .verdict, .notes, tr.bad { print-color-adjust: exact; -webkit-print-color-adjust: exact; }
  td[data-name="SHA-256"] { width: 16rem; }
  h2 { break-after: avoid; } tr, .fault, .verdict { break-inside: avoid; } thead { display: table-header-group; }
}
)";

std::string verdictHtml(const ApplyReport& report)
{
    const std::vector<std::string> reasons = report.reasons();
    if (reasons.empty()) {
        return fmt::format("<div class=\"verdict done\">{}</div>\n", htmlText(report.verdict()));
    }
    std::string items;
    for (const std::string& reason : reasons) {
        items += "<li>" + htmlText(reason) + "</li>";
    }
    return fmt::format("<div class=\"verdict failed\">NOT DONE<ul>{}</ul></div>\n", items);
}

std::string notesHtml(const ApplyReport& report)
{
    std::string paragraphs;
    for (const std::string& note : notesOf(report)) {
        paragraphs += "<p>" + htmlText(note) + "</p>\n";
    }
    return paragraphs.empty() ? "" : "<div class=\"notes\">\n" + paragraphs + "</div>\n";
}

std::string factsHtml(const ApplyReport& report)
{
    const auto fact = [](const char* name, const std::string& value, const char* kind = "") {
        return fmt::format("<dt>{}</dt><dd class=\"{}\">{}</dd>\n", name, kind, htmlText(value));
    };
    return "<dl>\n" + fact("Coupler", fmt::format("{}, unit {}", report.target, report.map.unit)) +
           fact("Started", report.started) + fact("Finished", report.finished) +
           fact("Commit", commitText(report)) +
           fact("SHA-256 of the station file", report.stationSum, "sum") +
           fact("SHA-256 of all parameters now", report.sum.empty() ? "not known" : report.sum,
                "sum") +
           "</dl>\n";
}

std::string parametersHtml(const ApplyReport& report)
{
    HtmlTable table({"Module", "Parameter", "Registers", "Before", "Planned", "Now", "Result"});
    for (const AppliedModule& module : report.modules) {
        for (const AppliedParameter& one : module.parameters) {
            const bool isGood = one.outcome == WriteOutcome::Verified && one.isWritten;
            table.add({module.name, one.parameter, addressesOf(one), beforeText(one),
                       one.plannedShown, nowText(one), resultText(one)},
                      isGood ? "good" : "bad");
        }
    }
    return "<h2>Parameters that differed</h2>\n" +
           (table.empty() ? "<p>None: every parameter was as the station states.</p>\n"
                          : table.html());
}

std::string modulesHtml(const ApplyReport& report)
{
    HtmlTable table({"Position", "Name", "Identifier", "On the coupler", "SHA-256"});
    for (const AppliedModule& module : report.modules) {
        table.add({std::to_string(module.position), module.name, module.moduleId,
                   identityText(module.identification, module.foundId),
                   module.sum.empty() ? "not known" : module.sum},
                  module.identification == Identification::Other ? "bad" : "");
    }
    return "<h2>Modules and their parameters now</h2>\n" + table.html();
}

std::string faultsHtml(const ApplyReport& report)
{
    std::string faults;
    for (const mxmodule::Finding& finding : report.findings) {
        faults += fmt::format("<div class=\"fault\">\n<p>{}</p>\n", htmlText(finding.text));
        faults += finding.hint.empty()
                      ? ""
                      : fmt::format("<p class=\"hint\">{}</p>\n", htmlText(finding.hint));
        faults += "</div>\n";
    }
    return faults.empty() ? "" : "<h2>Faults</h2>\n" + faults;
}

} // namespace

std::string ApplyReport::html() const
{
    const std::string name = htmlText(station);
    return fmt::format(
        "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\"/>\n"
        "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\"/>\n"
        "<title>{0}: {1}</title>\n<style>{2}</style>\n</head>\n<body>\n"
        "<h1>Parameters of {0}</h1>\n{3}{4}{5}{6}{7}{8}"
        "<footer>Written by mxtool {9}. SHA-256 of parameters: of the registers as read back, each "
        "with its high byte first.</footer>\n</body>\n</html>\n",
        name, isDone() ? "done" : "NOT DONE", style, verdictHtml(*this), notesHtml(*this),
        factsHtml(*this), faultsHtml(*this), parametersHtml(*this), modulesHtml(*this),
        htmlText(version));
}

} // namespace mxonline
