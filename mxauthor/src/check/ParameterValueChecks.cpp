#include "check/Checks.h"
#include "module/ParameterScale.h"
#include <text/Counted.h>

#include <text/Beginning.h>

#include <algorithm>

namespace mxauthor {

namespace {

const CheckRule valueRows[] = {
    {"range-datatype", error,
     "The datatype or bit field of a parameter cannot hold its minimum or maximum. Readers use the "
     "last bytes.",
     "group 20c0, parameter 4 \"Delay\": maximum 70000 does not fit in 16 bits, 0 to 65535 is "
     "accepted"},
    {"range-order", error, "The minimum is above the maximum: no value is accepted.",
     "group 20c0, parameter 4 \"Delay\": minimum 600 is above maximum 500"},
    {"default-range", error, "The default of a parameter is outside its range.",
     "group 0010, parameter 4 \"Delay\": default 501 is outside 1 to 500"},
    {"default-option", error,
     "The default of a parameter is not one of its options. It has no Modbus register.",
     "group 0010, parameter 1 \"Filter\": default 7 is not one of its options"},
};
const auto& [rangeDatatype, rangeOrder, defaultRange, defaultOption] = valueRows;

using mxformat::WholeNumber;
using Parameter = ModuleView::Parameter;

bool statesRange(const Parameter& parameter)
{
    return parameter.record->minimum.value != 0 || parameter.record->maximum.value != 0;
}

std::string withUnit(const ParameterScale& scale, const WholeNumber& raw)
{
    return scale.numbers.text(raw) + (scale.unit.empty() ? "" : " " + text::shortened(scale.unit));
}

// "12 V (raw 12000)"; only the raw number without a conversion.
std::string shownNumber(const ParameterScale& scale, const WholeNumber& raw)
{
    return scale.isConverted ? withUnit(scale, raw) + " (raw " + raw.text() + ")" : raw.text();
}

// "-10 V to 10 V (raw -10000 to 10000)", the least physical value first.
std::string shownRange(const ParameterScale& scale, WholeNumber low, WholeNumber high)
{
    if (!scale.isConverted) {
        return low.text() + " to " + high.text();
    }
    if (scale.numbers.factor < 0) {
        std::swap(low, high);
    }
    return withUnit(scale, low) + " to " + withUnit(scale, high) + " (raw " + low.text() + " to " +
           high.text() + ")";
}

// A slot as people read it for the datatype. A value too large for a narrower datatype was
// negative.
WholeNumber slotNumber(const mxformat::BlockField& field, std::uint64_t slot)
{
    return WholeNumber::ofBits(slot, field.isSigned() || field.bits() < 64);
}

std::string acceptedNumbers(const mxformat::BlockField& field, const ParameterScale& scale)
{
    return shownRange(scale, field.number(field.lowest()), field.number(field.highest())) +
           " is accepted";
}

// Returns whether readers use the bound as stated.
bool checkBound(const Parameter& parameter, const ParameterScale& scale,
                const Field<std::uint64_t>& bound, const char* what, Findings& findings)
{
    const mxformat::BlockField& field = parameter.value.field;
    const bool isHeld = holdsSlot(field, bound.value);
    if (!isHeld) {
        findings.add(rangeDatatype, bound.place, named(parameter),
                     std::string(what) + " " + shownNumber(scale, slotNumber(field, bound.value)) +
                         " does not fit in " + text::counted(field.bits(), "bit") + ", " +
                         acceptedNumbers(field, scale));
    }
    return isHeld;
}

void checkRange(const Parameter& parameter, const ParameterScale& scale, Findings& findings)
{
    const ParameterValue& value = parameter.value;
    bool areHeld = checkBound(parameter, scale, parameter.record->minimum, "minimum", findings);
    areHeld &= checkBound(parameter, scale, parameter.record->maximum, "maximum", findings);
    if (areHeld && value.maximum < value.minimum) {
        findings.add(rangeOrder, parameter.record->minimum.place, named(parameter),
                     "minimum " + shownNumber(scale, value.minimum) + " is above maximum " +
                         shownNumber(scale, value.maximum));
    }
}

Place placeOfDefault(const ModuleView& module, const ParameterValue& value)
{
    Place place = module.content<ParameterBlock>(mxformat::group::parameterBlock)->block.place;
    place.offset += value.field.begin();
    place.length = value.field.size();
    return place;
}

void checkDefaultInRange(const ModuleView& module, const Parameter& parameter,
                         const ParameterScale& scale, Findings& findings)
{
    const ParameterValue& value = parameter.value;
    if (value.maximum < value.minimum) {
        return; // no value is in such a range
    }
    if (value.value < value.minimum || value.maximum < value.value) {
        findings.addDefault(defaultRange, placeOfDefault(module, value),
                            parameter.record->number.place, named(parameter),
                            "default " + shownNumber(scale, value.value) + " is outside " +
                                shownRange(scale, value.minimum, value.maximum));
    }
}

void checkDefaultInOptions(const ModuleView& module, const Parameter& parameter, Findings& findings)
{
    const auto options = module.options(parameter.record->optionList.value);
    const ParameterValue& value = parameter.value;
    if (!options.empty() &&
        std::none_of(options.begin(), options.end(), [&value](const Option* option) {
            return numberOfSlot(value.field, option->value.value) == value.value;
        })) {
        findings.addDefault(defaultOption, placeOfDefault(module, value),
                            parameter.record->number.place, named(parameter),
                            "default " + value.value.text() + " is not one of its options");
    }
}

void checkParameterValues(const ModuleView& module, Findings& findings)
{
    for (const Parameter& parameter : module.parameters()) {
        if (!parameter.value.field.exists()) {
            continue; // reported as `parameter-datatype` or `bit-field`
        }
        const ParameterScale scale = scaleOf(module, parameter);
        if (statesRange(parameter)) {
            checkRange(parameter, scale, findings);
        }
        if (parameter.value.present && parameter.usesOptions()) {
            checkDefaultInOptions(module, parameter, findings);
        } else if (parameter.value.present && statesRange(parameter)) {
            checkDefaultInRange(module, parameter, scale, findings);
        }
    }
}

} // namespace

const Check valueCheck(valueRows, checkParameterValues);

} // namespace mxauthor
