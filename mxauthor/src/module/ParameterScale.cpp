#include "module/ParameterScale.h"

#include <array>
#include <charconv>

namespace mxauthor {

std::string numberText(float number)
{
    std::array<char, 64> text{};
    const auto result = std::to_chars(text.data(), text.data() + text.size(), number);
    return {text.data(), result.ptr};
}

std::string ParameterScale::text() const
{
    return isConverted ? "x " + numberText(numbers.factor) + " + " + numberText(numbers.offset)
                       : "none";
}

ParameterScale scaleOf(const ModuleView& module, const ModuleView::Parameter& parameter)
{
    ParameterScale scale;
    const ParameterRecord& record = *parameter.record;
    std::uint16_t unitId = 0;
    const auto* const entry = module.conversions().find(record.conversion.value);
    if (entry != nullptr && mxformat::isConverted(record.flags.value)) {
        scale.isConverted = true;
        scale.numbers = entry->scale;
        unitId = entry->unitTextId;
    }
    if (record.unitId.value != 0) {
        unitId = record.unitId.value;
    }
    if (unitId != 0) {
        scale.unit = module.textOf(unitId);
    }
    return scale;
}

bool giveSameNumbers(const ParameterScale& a, const ParameterScale& b)
{
    const mxformat::PhysicalScale& one = a.numbers;
    const mxformat::PhysicalScale& other = b.numbers;
    return !(one.factor < other.factor) && !(other.factor < one.factor) &&
           !(one.offset < other.offset) && !(other.offset < one.offset);
}

} // namespace mxauthor
