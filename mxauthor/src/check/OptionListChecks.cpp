#include "check/Checks.h"
#include "mxauthor/Counted.h"

#include <algorithm>
#include <map>
#include <set>
#include <tuple>

namespace mxauthor {

namespace {

using Parameter = ModuleView::Parameter;

bool isConverted(const Parameter& parameter)
{
    return (parameter.record->flags.value & convertedFlag) != 0;
}

bool usesList(const Parameter& parameter)
{
    return parameter.record->optionList.value != 0 && !isConverted(parameter);
}

void checkReference(const ModuleView& module, const Parameter& parameter, Findings& findings)
{
    const Field<std::uint8_t>& id = parameter.record->optionList;
    const auto* const lists = module.content<OptionLists>(0x20C1);
    const bool exists = lists != nullptr && std::any_of(lists->lists.begin(), lists->lists.end(),
                                                        [&id](const OptionList& list) {
                                                            return list.id.value == id.value;
                                                        });
    if (id.value != 0 && isConverted(parameter)) {
        findings.add("option-list-ignored", id.place, named(parameter),
                     "names option list " + std::to_string(id.value) +
                         ", but is shown in physical units");
    } else if (usesList(parameter) && !exists) {
        findings.add("option-list-missing", id.place, named(parameter),
                     "names option list " + std::to_string(id.value) +
                         ", which group 20c1 does not hold");
    }
}

// Values that the parameter cannot take, or that stand there twice; each once.
void checkValues(const ModuleView& module, const Parameter& parameter, Findings& findings)
{
    std::map<std::uint64_t, unsigned> seen;
    for (const Option* option : module.options(parameter.record->optionList.value)) {
        const std::uint64_t slot = option->value.value;
        if (!holdsSlot(parameter.value, slot)) {
            findings.add("option-value", option->value.place, named(parameter),
                         "its option value " + std::to_string(slot) + " does not fit in " +
                             counted(parameter.value.bits, "bit"));
        } else if (++seen[numberOfSlot(parameter.value, slot).bits] == 2) {
            findings.add("option-repeated", option->value.place, named(parameter),
                         "its option value " + numberOfSlot(parameter.value, slot).text() +
                             " stands here again, the first text is shown");
        }
    }
}

// Parameters of one shape that share a list have its faults in common: the first tells them.
using ListUse = std::tuple<std::uint8_t, unsigned, bool>;

ListUse useOf(const Parameter& parameter)
{
    return {parameter.record->optionList.value, parameter.value.bits, parameter.value.isSigned};
}

void checkWidth(const Parameter& parameter, Findings& findings)
{
    if (parameter.value.size > 1) {
        findings.add("option-list-wide", parameter.record->optionList.place, named(parameter),
                     "has options and " + std::to_string(parameter.value.size) +
                         " bytes, of which Modbus registers compare the first");
    }
}

void checkList(const OptionList& list, bool isUsed, std::set<std::uint8_t>& seen,
               Findings& findings)
{
    const std::string subject = named("option list", list.id.value, "");
    if (list.options.empty()) {
        findings.add("option-list-empty", list.id.place, subject, "has no options");
    }
    if (!seen.insert(list.id.value).second) {
        findings.add("option-list-repeated", list.id.place, subject,
                     "stands here again, its options are added to those in front");
    } else if (!isUsed) {
        findings.add("option-list-unused", list.id.place, subject, "no parameter names it");
    }
}

} // namespace

void checkOptionLists(const ModuleView& module, Findings& findings)
{
    std::set<std::uint8_t> used;
    std::set<ListUse> checked;
    for (const Parameter& parameter : module.parameters()) {
        checkReference(module, parameter, findings);
        if (usesList(parameter)) {
            used.insert(parameter.record->optionList.value);
            if (checked.insert(useOf(parameter)).second) {
                checkValues(module, parameter, findings);
            }
            checkWidth(parameter, findings);
        }
    }
    std::set<std::uint8_t> seen;
    const auto* const lists = module.content<OptionLists>(0x20C1);
    for (std::size_t i = 0; lists != nullptr && i < lists->lists.size(); ++i) {
        const OptionList& list = lists->lists[i];
        checkList(list, used.count(list.id.value) != 0, seen, findings);
    }
}

} // namespace mxauthor
