#include "ParameterField.h"

#include <devices/parser/mx/ByteReaders.h>
#include <mxformat/BitPlace.h>

#include <array>

namespace mxfileext {

namespace {

using devices::parser::mx::MxParameterDatatype;
using devices::parser::mx::readU8;

constexpr std::uint8_t blockPositionBias = 4; // a record counts positions from 4

struct Width
{
    std::uint8_t bytes;
    bool isSigned;
};

Width widthOf(std::uint8_t datatype)
{
    switch (static_cast<MxParameterDatatype>(datatype)) {
    case MxParameterDatatype::UInt8:
    case MxParameterDatatype::Byte:
        return {1, false};
    case MxParameterDatatype::SInt8:
        return {1, true};
    case MxParameterDatatype::UInt16:
        return {2, false};
    case MxParameterDatatype::SInt16:
        return {2, true};
    case MxParameterDatatype::UInt32:
        return {4, false};
    case MxParameterDatatype::SInt32:
        return {4, true};
    case MxParameterDatatype::UInt64:
        return {8, false};
    case MxParameterDatatype::SInt64:
        return {8, true};
    }
    return {0, false};
}

std::uint64_t lowBits(unsigned count)
{
    return count >= 64 ? ~std::uint64_t{0} : (std::uint64_t{1} << count) - 1;
}

// The low `count` bits of `value` as a number of 64 bits.
std::uint64_t signExtended(std::uint64_t value, unsigned count, bool isSigned)
{
    const std::uint64_t number = value & lowBits(count);
    const bool negative = isSigned && (number >> (count - 1U) & 1U) != 0;
    return negative ? number | ~lowBits(count) : number;
}

} // namespace

void toSlot(std::uint64_t value, std::uint8_t* slot)
{
    for (int i = 7; i >= 0; --i) {
        slot[i] = static_cast<std::uint8_t>(value);
        value >>= 8;
    }
}

ParameterField::ParameterField(const std::uint8_t* record)
    : offset(static_cast<std::uint8_t>(readU8(record + 3) - blockPositionBias)),
      datatype(readU8(record + 4))
{
    const Width width = widthOf(datatype);
    bytes = width.bytes;
    isSigned = width.isSigned;
    bits = static_cast<std::uint8_t>(8 * bytes);
    if (static_cast<MxParameterDatatype>(datatype) == MxParameterDatatype::Byte) {
        const auto place = mxformat::bitPlace(readU8(record + 26), readU8(record + 27));
        shift = static_cast<std::uint8_t>(place.shift);
        bits = static_cast<std::uint8_t>(place.count);
    }
}

bool ParameterField::liesWithin(std::size_t size) const
{
    return bits != 0 && std::size_t{offset} + bytes <= size;
}

std::uint64_t ParameterField::read(const std::uint8_t* block) const
{
    std::uint64_t value = 0;
    for (unsigned i = 0; i < bytes; ++i) {
        value = value << 8 | block[offset + i];
    }
    return signExtended(value >> shift, bits, isSigned);
}

void ParameterField::write(std::uint8_t* block, std::uint64_t rawValue) const
{
    const std::uint64_t field = lowBits(bits) << shift;
    std::uint64_t value = rawValue << shift;
    std::uint64_t changed = field;
    for (unsigned i = bytes; i-- > 0;) {
        std::uint8_t& byte = block[offset + i];
        byte = static_cast<std::uint8_t>((byte & ~changed) | (value & changed));
        value >>= 8;
        changed >>= 8;
    }
}

std::uint64_t ParameterField::lowest() const
{
    return isSigned ? ~lowBits(bits - 1U) : 0;
}

std::uint64_t ParameterField::highest() const
{
    return lowBits(isSigned ? bits - 1U : bits);
}

std::uint64_t ParameterField::fromSlot(std::uint64_t slot) const
{
    return signExtended(slot, 8U * bytes, isSigned);
}

mxformat::WholeNumber ParameterField::number(std::uint64_t rawValue) const
{
    return mxformat::WholeNumber::ofBits(rawValue, isSigned);
}

bool ParameterField::holds(const mxformat::WholeNumber& value) const
{
    return !(value < number(lowest())) && !(number(highest()) < value);
}

std::string ParameterField::text(std::uint64_t rawValue) const
{
    std::array<std::uint8_t, 8> slot{};
    toSlot(rawValue, slot.data());
    return devices::parser::mx::kv38ParameterValueToString(
        slot.data(), static_cast<MxParameterDatatype>(datatype));
}

} // namespace mxfileext
