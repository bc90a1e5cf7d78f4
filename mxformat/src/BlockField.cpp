#include "mxformat/BlockField.h"

namespace mxformat {

BlockField::BlockField(std::uint8_t position, std::uint8_t datatype, std::uint8_t bitLength,
                       std::uint8_t bitOffset)
    : type(findDatatype(datatype)), firstByte(blockPosition(position))
{
    if (datatype == bitFieldDatatype) {
        const BitPlace place = bitPlace(bitLength, bitOffset);
        shift = place.shift;
        bitCount = place.count;
    } else {
        bitCount = static_cast<std::uint8_t>(8 * size());
    }
}

bool BlockField::overlaps(const BlockField& other) const
{
    if (!exists() || !other.exists() || end() <= other.begin() || other.end() <= begin()) {
        return false;
    }
    if (size() > 1 || other.size() > 1) {
        return true;
    }
    return firstBit() < other.firstBit() + other.bits() && other.firstBit() < firstBit() + bits();
}

std::uint64_t BlockField::valueBits() const
{
    return bitCount == 0 ? 0 : ~std::uint64_t{0} >> (64U - bitCount);
}

std::uint64_t BlockField::read(const std::uint8_t* block) const
{
    std::uint64_t value = 0;
    for (std::uint32_t i = begin(); i < end(); ++i) {
        value = value << 8 | block[i];
    }
    return fromSlot(value >> shift & valueBits());
}

void BlockField::write(std::uint8_t* block, std::uint64_t rawValue) const
{
    std::uint64_t changed = valueBits() << shift;
    std::uint64_t value = rawValue << shift;
    for (std::uint32_t i = end(); i-- > begin();) {
        block[i] = static_cast<std::uint8_t>((block[i] & ~changed) | (value & changed));
        value >>= 8;
        changed >>= 8;
    }
}

std::uint64_t BlockField::lowest() const
{
    return isSigned() ? ~(valueBits() >> 1) : 0;
}

std::uint64_t BlockField::highest() const
{
    return isSigned() ? valueBits() >> 1 : valueBits();
}

bool BlockField::holds(const WholeNumber& value) const
{
    return exists() && !(value < number(lowest())) && !(number(highest()) < value);
}

RawRange rangeOf(const ParameterRecord& record, const BlockField& field)
{
    if (record.minimum == 0 && record.maximum == 0) {
        return {field.lowest(), field.highest()};
    }
    return {field.fromSlot(record.minimum), field.fromSlot(record.maximum)};
}

} // namespace mxformat
