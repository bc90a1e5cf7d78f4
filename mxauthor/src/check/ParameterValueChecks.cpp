#include "check/Checks.h"

#include <algorithm>

namespace mxauthor {

namespace {

using Parameter = ModuleView::Parameter;

bool usesOptions(const Parameter& parameter)
{
    return parameter.record->optionList.value != 0 &&
           (parameter.record->flags.value & convertedFlag) == 0;
}

bool statesRange(const Parameter& parameter)
{
    return parameter.record->minimum.value != 0 || parameter.record->maximum.value != 0;
}

// A slot as people read it for the datatype. What is too large for a narrower one was negative.
std::string slotText(const ParameterValue& value, std::uint64_t slot)
{
    return WideNumber{slot, value.isSigned || value.bits < 64}.text();
}

std::string acceptedNumbers(const ParameterValue& value)
{
    const unsigned digits = value.bits - (value.isSigned ? 1 : 0);
    const std::uint64_t highest = digits == 0 ? 0 : ~std::uint64_t{0} >> (64 - digits);
    const WideNumber lowest{value.isSigned ? ~highest : 0, value.isSigned};
    return lowest.text() + " to " + std::to_string(highest) + " is accepted";
}

// Returns whether readers take the bound as it is stated.
bool checkBound(const Parameter& parameter, const Field<std::uint64_t>& bound, const char* what,
                Findings& findings)
{
    const bool isHeld = holdsSlot(parameter.value, bound.value);
    if (!isHeld) {
        findings.add("range-datatype", bound.place, named(parameter),
                     std::string(what) + " " + slotText(parameter.value, bound.value) +
                         " does not fit in " + std::to_string(parameter.value.bits) + " bits, " +
                         acceptedNumbers(parameter.value));
    }
    return isHeld;
}

void checkRange(const Parameter& parameter, Findings& findings)
{
    const ParameterValue& value = parameter.value;
    bool areHeld = checkBound(parameter, parameter.record->minimum, "minimum", findings);
    areHeld &= checkBound(parameter, parameter.record->maximum, "maximum", findings);
    if (areHeld && value.maximum.isBelow(value.minimum)) {
        findings.add("range-order", parameter.record->minimum.place, named(parameter),
                     "minimum " + value.minimum.text() + " is above maximum " +
                         value.maximum.text());
    }
}

Place placeOfDefault(const ModuleView& module, const ParameterValue& value)
{
    Place place = module.content<ParameterBlock>(0x0010)->block.place;
    place.offset += value.byteOffset;
    place.length = value.size;
    return place;
}

void checkDefaultInRange(const ModuleView& module, const Parameter& parameter, Findings& findings)
{
    const ParameterValue& value = parameter.value;
    if (value.maximum.isBelow(value.minimum)) {
        return; // no value lies in such a range
    }
    if (value.value.isBelow(value.minimum) || value.maximum.isBelow(value.value)) {
        findings.addDefault("default-range", placeOfDefault(module, value),
                            parameter.record->number.place, named(parameter),
                            "default " + value.value.text() + " lies outside " +
                                value.minimum.text() + " to " + value.maximum.text());
    }
}

void checkDefaultInOptions(const ModuleView& module, const Parameter& parameter, Findings& findings)
{
    const auto options = module.options(parameter.record->optionList.value);
    const ParameterValue& value = parameter.value;
    if (!options.empty() &&
        std::none_of(options.begin(), options.end(), [&value](const Option* option) {
            return numberOfSlot(value, option->value.value).bits == value.value.bits;
        })) {
        findings.addDefault("default-option", placeOfDefault(module, value),
                            parameter.record->number.place, named(parameter),
                            "default " + value.value.text() + " is none of its options");
    }
}

} // namespace

void checkParameterValues(const ModuleView& module, Findings& findings)
{
    for (const Parameter& parameter : module.parameters()) {
        if (!parameter.value.known) {
            continue;
        }
        if (statesRange(parameter)) {
            checkRange(parameter, findings);
        }
        if (parameter.value.present && usesOptions(parameter)) {
            checkDefaultInOptions(module, parameter, findings);
        } else if (parameter.value.present && statesRange(parameter)) {
            checkDefaultInRange(module, parameter, findings);
        }
    }
}

} // namespace mxauthor
