#include "check/Checks.h"
#include <text/Counted.h>

#include <algorithm>
#include <map>
#include <set>
#include <tuple>

namespace mxauthor {

namespace {

const CheckRule optionListRows[] = {
    {"option-list-missing", error,
     "A parameter names an option list that does not exist: it accepts no value.",
     "group 20c0, parameter 1 \"Filter\": names option list 9, which group 20c1 does not hold"},
    {"option-list-ignored", warning,
     "The option list of a parameter that is shown in physical units is not read.",
     "group 20c0, parameter 2 \"Limit\": names option list 1, but is shown in physical units"},
    {"option-list-wide", warning,
     "Modbus registers compare the first byte of a value with the last byte of the options. That "
     "works only for parameters of one byte.",
     "group 20c0, parameter 4 \"Delay\": has options and 2 bytes, of which Modbus registers "
     "compare the first"},
    {"option-list-empty", warning, "An option list without options.",
     "group 20c1, option list 1: has no options"},
    {"option-list-repeated", note,
     "Two option lists have the same identifier. Readers join them, in file order.",
     "group 20c1, option list 1: is repeated here, its options are added to the earlier ones"},
    {"option-list-unused", note, "No parameter names the option list.",
     "group 20c1, option list 2: no parameter names it"},
    {"option-value", error,
     "The datatype or bit field of a parameter cannot hold the value of one of its options.",
     "group 20c1, parameter 1 \"Filter\": its option value 300 does not fit in 8 bits"},
    {"option-repeated", warning,
     "Two options of a parameter have the same value. The text of the second is never shown.",
     "group 20c1, parameter 1 \"Filter\": its option value 1 is repeated here, the first text is "
     "shown"},
};
const auto& [optionListMissing, optionListIgnored, optionListWide, optionListEmpty,
             optionListRepeated, optionListUnused, optionValue, optionRepeated] = optionListRows;

using Parameter = ModuleView::Parameter;

void checkReference(const ModuleView& module, const Parameter& parameter, Findings& findings)
{
    const Field<std::uint8_t>& id = parameter.record->optionList;
    const auto& lists = module.contentOrNone<OptionLists>(mxformat::group::optionLists).lists;
    const bool exists = std::any_of(lists.begin(), lists.end(), [&id](const OptionList& list) {
        return list.id.value == id.value;
    });
    if (id.value != 0 && mxformat::isConverted(parameter.record->flags.value)) {
        findings.add(optionListIgnored, id.place, named(parameter),
                     "names option list " + std::to_string(id.value) +
                         ", but is shown in physical units");
    } else if (parameter.usesOptions() && !exists) {
        findings.add(optionListMissing, id.place, named(parameter),
                     "names option list " + std::to_string(id.value) +
                         ", which group 20c1 does not hold");
    }
}

// Values that the parameter cannot take, or that occur twice; each reported once.
void checkValues(const ModuleView& module, const Parameter& parameter, Findings& findings)
{
    const mxformat::BlockField& field = parameter.value.field;
    std::map<std::uint64_t, unsigned> seen;
    for (const Option* option : module.options(parameter.record->optionList.value)) {
        const std::uint64_t slot = option->value.value;
        if (!holdsSlot(field, slot)) {
            findings.add(optionValue, option->value.place, named(parameter),
                         "its option value " + std::to_string(slot) + " does not fit in " +
                             text::counted(field.bits(), "bit"));
        } else if (++seen[numberOfSlot(field, slot).bits()] == 2) {
            findings.add(optionRepeated, option->value.place, named(parameter),
                         "its option value " + numberOfSlot(field, slot).text() +
                             " is repeated here, the first text is shown");
        }
    }
}

// Faults of a shared list are reported once per parameter shape.
using ListUse = std::tuple<std::uint8_t, unsigned, bool>;

ListUse useOf(const Parameter& parameter)
{
    return {parameter.record->optionList.value, parameter.value.field.bits(),
            parameter.value.field.isSigned()};
}

void checkWidth(const Parameter& parameter, Findings& findings)
{
    if (parameter.value.field.size() > 1) {
        findings.add(optionListWide, parameter.record->optionList.place, named(parameter),
                     "has options and " + std::to_string(parameter.value.field.size()) +
                         " bytes, of which Modbus registers compare the first");
    }
}

void checkList(const OptionList& list, bool isUsed, std::set<std::uint8_t>& seen,
               Findings& findings)
{
    const std::string subject = named("option list", list.id.value, "");
    if (list.options.empty()) {
        findings.add(optionListEmpty, list.id.place, subject, "has no options");
    }
    if (!seen.insert(list.id.value).second) {
        findings.add(optionListRepeated, list.id.place, subject,
                     "is repeated here, its options are added to the earlier ones");
    } else if (!isUsed) {
        findings.add(optionListUnused, list.id.place, subject, "no parameter names it");
    }
}

void checkOptionLists(const ModuleView& module, Findings& findings)
{
    std::set<std::uint8_t> used;
    std::set<ListUse> checked;
    for (const Parameter& parameter : module.parameters()) {
        checkReference(module, parameter, findings);
        if (parameter.usesOptions()) {
            used.insert(parameter.record->optionList.value);
            // A field without bits, an error by itself, would hold none of the options.
            if (parameter.value.field.exists() && checked.insert(useOf(parameter)).second) {
                checkValues(module, parameter, findings);
            }
            checkWidth(parameter, findings);
        }
    }
    std::set<std::uint8_t> seen;
    const auto& group = module.contentOrNone<OptionLists>(mxformat::group::optionLists);
    for (const OptionList& list : group.lists) {
        checkList(list, used.count(list.id.value) != 0, seen, findings);
    }
}

} // namespace

const Check optionListCheck(optionListRows, checkOptionLists);

} // namespace mxauthor
