#include "report/ReportWords.h"

#include "bus/RegisterRange.h"
#include "report/CouplerNotes.h"

#include <fmt/format.h>
#include <text/Counted.h>

namespace mxonline {

namespace {

std::size_t writtenCount(const ApplyReport& report)
{
    std::size_t count = 0;
    for (const AppliedModule& module : report.modules) {
        for (const AppliedParameter& one : module.parameters) {
            count += one.isWritten && !one.found.empty() ? 1 : 0;
        }
    }
    return count;
}

// What "equal" does not include.
std::string exceptionOf(const ApplyReport& report)
{
    std::size_t count = 0;
    for (const AppliedModule& module : report.modules) {
        count += module.withoutRegisters.size();
    }
    return count == 0
               ? ""
               : fmt::format(", but for {} in no register", text::counted(count, "parameter"));
}

std::string writtenAgainNote(const ApplyReport& report)
{
    std::size_t count = 0;
    for (const AppliedModule& module : report.modules) {
        count += module.writtenAgain;
    }
    return count == 0 ? ""
                      : fmt::format("{} that did not differ {} written too: reads do not show what "
                                    "an interrupted run left without a commit",
                                    text::counted(count, "parameter"), count == 1 ? "was" : "were");
}

} // namespace

std::string ApplyReport::verdict() const
{
    const std::vector<std::string> all = reasons();
    if (all.empty()) {
        const std::size_t written = writtenCount(*this);
        return fmt::format("Done: read back and equal to the station{}; {}", exceptionOf(*this),
                           written == 0 ? "no parameter differed"
                                        : text::counted(written, "parameter") + " changed");
    }
    std::string text = "NOT DONE";
    for (const std::string& reason : all) {
        text += (text.size() == 8 ? ": " : "; ") + reason;
    }
    return text;
}

std::string resultText(const AppliedParameter& parameter)
{
    switch (parameter.outcome) {
    case WriteOutcome::Verified:
        return parameter.isWritten ? "written and read back"
                                   : "as planned, but the write was not confirmed";
    case WriteOutcome::Different:
        return parameter.isWritten       ? "written, but read back otherwise"
               : parameter.found.empty() ? "not written, changed by itself"
                                         : "not written";
    default:
        return parameter.isWritten ? "written, not read back" : "not known";
    }
}

std::string commitText(const ApplyReport& report)
{
    if (!report.map.commit) {
        return "none: parameters are active when written";
    }
    return fmt::format("register {}: {}", addressesText({report.map.commit->address, 1}),
                       report.isCommitted ? "confirmed" : "NOT confirmed");
}

std::vector<std::string> notesOf(const ApplyReport& report)
{
    std::vector<std::string> notes;
    if (!report.map.identity) {
        notes.emplace_back(noIdentityNote);
    }
    if (report.map.commit && report.map.commit->readsAreStaged) {
        notes.emplace_back("The coupler reads parameters as last written: that they are active is "
                           "known from the confirmed commit alone");
    }
    const std::string again = writtenAgainNote(report);
    if (!again.empty()) {
        notes.push_back(again);
    }
    for (const AppliedModule& module : report.modules) {
        const auto more =
            withoutRegistersNotes(module.position, module.name, module.withoutRegisters);
        notes.insert(notes.end(), more.begin(), more.end());
    }
    return notes;
}

std::string addressesOf(const AppliedParameter& parameter)
{
    return addressesText({parameter.address, static_cast<std::uint32_t>(parameter.planned.size())});
}

std::string beforeText(const AppliedParameter& parameter)
{
    return parameter.found.empty() ? parameter.plannedShown : parameter.foundShown;
}

std::string nowText(const AppliedParameter& parameter)
{
    return parameter.now.empty() ? "not known" : parameter.nowShown;
}

} // namespace mxonline
