#include "BlockField.h"

#include <devices/parser/mx/MxParameterDatatype.h>
#include <mxformat/BitPlace.h>

namespace mxauthor {

namespace {

using devices::parser::mx::MxParameterDatatype;

constexpr std::uint8_t positionBias = 4; // records state the position plus this
constexpr std::uint32_t bitsOfByte = 8;

struct Width
{
    std::uint32_t bytes;
    bool isSigned;
};

std::optional<Width> widthOf(std::uint8_t datatype)
{
    switch (static_cast<MxParameterDatatype>(datatype)) {
    case MxParameterDatatype::UInt8:
    case MxParameterDatatype::Byte:
        return Width{1, false};
    case MxParameterDatatype::UInt16:
        return Width{2, false};
    case MxParameterDatatype::SInt8:
        return Width{1, true};
    case MxParameterDatatype::SInt16:
        return Width{2, true};
    case MxParameterDatatype::UInt32:
        return Width{4, false};
    case MxParameterDatatype::SInt32:
        return Width{4, true};
    case MxParameterDatatype::UInt64:
        return Width{8, false};
    case MxParameterDatatype::SInt64:
        return Width{8, true};
    }
    return std::nullopt;
}

// The `bits` lowest bits, 64 at most.
std::uint64_t lowBits(std::uint32_t bits)
{
    return ~std::uint64_t{0} >> (64 - bits);
}

} // namespace

std::uint64_t BlockField::lowestMagnitude() const
{
    return isSigned ? std::uint64_t{1} << (bits - 1) : 0;
}

std::uint64_t BlockField::highest() const
{
    return isSigned ? lowBits(bits) >> 1 : lowBits(bits);
}

bool isSignedDatatype(std::uint8_t datatype)
{
    const auto width = widthOf(datatype);
    return width && width->isSigned;
}

std::uint8_t blockPosition(const ParameterRecord& record)
{
    return static_cast<std::uint8_t>(record.position.value - positionBias);
}

std::optional<BlockField> blockFieldOf(const ParameterRecord& record)
{
    const auto width = widthOf(record.datatype.value);
    if (!width) {
        return std::nullopt;
    }
    BlockField field;
    field.byte = blockPosition(record);
    field.size = width->bytes;
    field.bits = bitsOfByte * width->bytes;
    field.isSigned = width->isSigned;
    if (static_cast<MxParameterDatatype>(record.datatype.value) == MxParameterDatatype::Byte) {
        if (!mxformat::bitPlace(record.bitLength.value, record.bitOffset.value).exists()) {
            return std::nullopt;
        }
        const auto place = mxformat::bitPlace(record.bitLength.value, record.bitOffset.value);
        field.firstBit = place.shift;
        field.bits = place.count;
    }
    return field;
}

bool overlap(const BlockField& a, const BlockField& b)
{
    if (a.end() <= b.byte || b.end() <= a.byte) {
        return false;
    }
    if (a.size > 1 || b.size > 1) {
        return true;
    }
    return a.firstBit < b.firstBit + b.bits && b.firstBit < a.firstBit + a.bits;
}

std::uint64_t readBlockField(const Bytes& block, const BlockField& field)
{
    std::uint64_t value = 0;
    for (std::uint32_t i = field.byte; i < field.end(); ++i) {
        value = value << bitsOfByte | block.at(i);
    }
    value = value >> field.firstBit & lowBits(field.bits);
    const bool negative = field.isSigned && value > field.highest();
    return negative ? value | ~lowBits(field.bits) : value;
}

void writeBlockField(Bytes& block, const BlockField& field, std::uint64_t value)
{
    const std::uint64_t mask = lowBits(field.bits) << field.firstBit;
    std::uint64_t placed = value << field.firstBit & mask;
    std::uint64_t kept = ~mask;
    for (std::uint32_t i = field.end(); i > field.byte; --i) {
        std::uint8_t& byte = block.at(i - 1);
        byte = static_cast<std::uint8_t>((byte & kept) | placed);
        placed >>= bitsOfByte;
        kept >>= bitsOfByte;
    }
}

} // namespace mxauthor
