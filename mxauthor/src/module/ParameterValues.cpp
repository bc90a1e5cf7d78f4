#include "module/ParameterValues.h"

namespace mxauthor {

ParameterValue parameterValue(const ParameterRecord& record, const Bytes& block)
{
    const mxformat::ParameterRecord plain = plainRecord(record);
    ParameterValue value{mxformat::BlockField(plain)};
    const mxformat::BlockField& field = value.field;
    value.present = field.liesWithin(block.size());
    if (value.present) {
        value.value = field.number(field.read(block.data()));
    }
    const auto [lowest, highest] = mxformat::rangeOf(plain, field);
    value.minimum = field.number(lowest);
    value.maximum = field.number(highest);
    return value;
}

mxformat::WholeNumber numberOfSlot(const mxformat::BlockField& field, std::uint64_t slot)
{
    return field.datatype() == nullptr ? mxformat::WholeNumber(false, slot)
                                       : field.datatype()->numberInSlot(slot);
}

bool holdsSlot(const mxformat::BlockField& field, std::uint64_t slot)
{
    if (field.datatype() == nullptr || field.size() == 8) {
        return true;
    }
    const bool zeroExtended = slot >> (8 * field.size()) == 0;
    if (field.isSigned()) {
        return zeroExtended || field.fromSlot(slot) == slot;
    }
    return zeroExtended && slot >> field.bits() == 0;
}

std::string datatypeNumbers()
{
    return std::to_string(mxformat::datatypes.front().number) + " to " +
           std::to_string(mxformat::datatypes.back().number);
}

} // namespace mxauthor
