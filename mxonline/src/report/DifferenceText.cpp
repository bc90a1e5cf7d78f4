#include "bus/RegisterRange.h"
#include "report/CouplerNotes.h"

#include <mxonline/CouplerDifference.h>

#include <fmt/format.h>
#include <text/Counted.h>
#include <text/ShownText.h>
#include <text/TextTable.h>

#include <algorithm>

namespace mxonline {

namespace {

std::string identityTable(const CouplerDifference& difference)
{
    text::TextTable table({"Position", "Name", "Module", "On the coupler"});
    for (const ModuleDifference& module : difference.modules) {
        table.add({std::to_string(module.position), module.name, module.moduleId,
                   identityText(module.identification, module.foundId)});
    }
    return table.text();
}

std::string parameterTable(const CouplerDifference& difference)
{
    text::TextTable table({"Module", "Parameter", "Coupler", "Station", "Registers",
                           "Coupler words", "Station words"});
    for (const ModuleDifference& module : difference.modules) {
        for (const ParameterDifference& one : module.parameters) {
            table.add({module.name, one.parameter, one.foundShown, one.plannedShown,
                       addressesText({one.address, static_cast<std::uint32_t>(one.planned.size())}),
                       wordsText(one.found), wordsText(one.planned)});
        }
    }
    return table.empty() ? "" : "\n" + table.text();
}

std::string countText(const CouplerDifference& difference)
{
    const auto count = difference.parameterCount();
    const auto modules =
        std::count_if(difference.modules.begin(), difference.modules.end(),
                      [](const ModuleDifference& one) { return !one.parameters.empty(); });
    return fmt::format("{} of {} {}\n", text::counted(count, "parameter"),
                       text::counted(static_cast<std::uint64_t>(modules), "module"),
                       count == 1 ? "differs" : "differ");
}

std::string verdictText(const CouplerDifference& difference)
{
    const auto errors = difference.identityErrors();
    if (!errors.empty()) {
        return fmt::format("{} not that of the station\n",
                           errors.size() == 1 ? "1 module is"
                                              : text::counted(errors.size(), "module") + " are");
    }
    const auto unread = std::count_if(difference.modules.begin(), difference.modules.end(),
                                      [](const ModuleDifference& one) { return !one.isRead; });
    if (!difference.isSame()) {
        return countText(difference) +
               (unread == 0
                    ? ""
                    : fmt::format("The parameters of {} were not read\n",
                                  text::counted(static_cast<std::uint64_t>(unread), "module")));
    }
    const bool isAll =
        std::all_of(difference.modules.begin(), difference.modules.end(),
                    [](const ModuleDifference& one) { return one.withoutRegisters.empty(); });
    return isAll ? "Every parameter is as the station states\n"
                 : "Every parameter that is in a register is as the station states\n";
}

std::string amountText(const CouplerDifference& difference)
{
    const NeededWrites& writes = difference.writes;
    return fmt::format("{} in {}, {}{}", text::counted(writes.parameters, "parameter"),
                       text::counted(writes.registers, "register"),
                       text::counted(writes.requests, "request"),
                       difference.map.commit ? ", the commit included" : "");
}

std::string writesText(const CouplerDifference& difference)
{
    const NeededWrites& writes = difference.writes;
    if (writes.requests == 0) {
        return difference.isSame() ? "Nothing to do\n" : "";
    }
    return fmt::format("To write: {}\n", amountText(difference));
}

} // namespace

std::string CouplerDifference::text(DifferenceUse use) const
{
    std::string all = fmt::format("{} on {} unit {}\n\n", text::forTerminal(station),
                                  text::forTerminal(target), map.unit);
    all += identityTable(*this) + parameterTable(*this) + "\n" + verdictText(*this);
    if (use != DifferenceUse::Verify) {
        all += writesText(*this);
    }
    for (const std::string& note : notesOf(*this, use)) {
        all += "Note: " + text::forTerminal(note) + "\n";
    }
    return all + (use == DifferenceUse::Plan ? "Nothing was written.\n" : "");
}

std::string CouplerDifference::question() const
{
    return fmt::format("{}Write {} to {} unit {}?",
                       map.identity ? "" : std::string(noIdentityNote) + ". ", amountText(*this),
                       target, map.unit);
}

} // namespace mxonline
