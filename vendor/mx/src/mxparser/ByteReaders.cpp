#include "devices/parser/mx/ByteReaders.h"

namespace devices::parser::mx {

namespace {

constexpr unsigned slotSize = 8;

// The bytes of a value that stands at the end of its slot.
const std::uint8_t* inSlot(const std::uint8_t* slot, unsigned valueSize)
{
    return slot + (slotSize - valueSize);
}

} // namespace

std::uint8_t readU8(const std::uint8_t* bytes)
{
    return bytes[0];
}

std::int8_t readS8(const std::uint8_t* bytes)
{
    return static_cast<std::int8_t>(readU8(bytes));
}

std::uint16_t readU16BE(const std::uint8_t* bytes)
{
    return static_cast<std::uint16_t>(bytes[0] << 8 | bytes[1]);
}

std::int16_t readS16BE(const std::uint8_t* bytes)
{
    return static_cast<std::int16_t>(readU16BE(bytes));
}

std::uint32_t readU32BE(const std::uint8_t* bytes)
{
    return std::uint32_t{readU16BE(bytes)} << 16 | readU16BE(bytes + 2);
}

std::int32_t readS32BE(const std::uint8_t* bytes)
{
    return static_cast<std::int32_t>(readU32BE(bytes));
}

std::uint64_t readU64BE(const std::uint8_t* bytes)
{
    return std::uint64_t{readU32BE(bytes)} << 32 | readU32BE(bytes + 4);
}

std::int64_t readS64BE(const std::uint8_t* bytes)
{
    return static_cast<std::int64_t>(readU64BE(bytes));
}

std::string kv38ParameterValueToString(const std::uint8_t* value, MxParameterDatatype type)
{
    switch (type) {
    case MxParameterDatatype::UInt8:
    case MxParameterDatatype::Byte:
        return std::to_string(readU8(inSlot(value, 1)));
    case MxParameterDatatype::UInt16:
        return std::to_string(readU16BE(inSlot(value, 2)));
    case MxParameterDatatype::SInt8:
        return std::to_string(readS8(inSlot(value, 1)));
    case MxParameterDatatype::SInt16:
        return std::to_string(readS16BE(inSlot(value, 2)));
    case MxParameterDatatype::UInt32:
        return std::to_string(readU32BE(inSlot(value, 4)));
    case MxParameterDatatype::SInt32:
        return std::to_string(readS32BE(inSlot(value, 4)));
    case MxParameterDatatype::UInt64:
        return std::to_string(readU64BE(value));
    case MxParameterDatatype::SInt64:
        return std::to_string(readS64BE(value));
    }
    return {};
}

} // namespace devices::parser::mx
