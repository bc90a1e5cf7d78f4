#include "diff/PhysicalScale.h"

#include "module/ConversionNumbers.h"

#include <algorithm>
#include <cmath>

namespace mxauthor {

namespace {

// The conversion of the parameter, null where readers use none.
const Conversion* conversionOf(const ModuleView& module, const ParameterRecord& record)
{
    const auto* const table = module.content<Conversions>(0x20C2);
    const std::uint8_t id = record.conversion.value;
    if ((record.flags.value & convertedFlag) == 0 || table == nullptr || id == 0) {
        return nullptr;
    }
    const auto found = std::find_if(table->entries.begin(), table->entries.end(),
                                    [id](const Conversion& entry) { return entry.id.value == id; });
    if (found == table->entries.end()) {
        return nullptr;
    }
    const float factor = floatOf(found->factor.value);
    const float offset = floatOf(found->offset.value);
    return factor != 0 && std::isfinite(factor) && std::isfinite(offset) ? &*found : nullptr;
}

} // namespace

std::string PhysicalScale::text() const
{
    return isConverted ? "x " + numberText(factor) + " + " + numberText(offset) : "none";
}

PhysicalScale scaleOf(const ModuleView& module, const ModuleView::Parameter& parameter)
{
    PhysicalScale scale;
    const ParameterRecord& record = *parameter.record;
    if (const Conversion* const conversion = conversionOf(module, record)) {
        scale.isConverted = true;
        scale.factor = floatOf(conversion->factor.value);
        scale.offset = floatOf(conversion->offset.value);
        scale.unit = module.textOf(conversion->unitId.value);
    }
    if (record.unitId.value != 0) {
        scale.unit = module.textOf(record.unitId.value);
    }
    return scale;
}

bool giveSameNumbers(const PhysicalScale& a, const PhysicalScale& b)
{
    return !(a.factor < b.factor) && !(b.factor < a.factor) && !(a.offset < b.offset) &&
           !(b.offset < a.offset);
}

} // namespace mxauthor
