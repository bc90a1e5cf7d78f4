#include "devices/parser/mx/ByteReaders.h"

#include <mxformat/BigEndian.h>
#include <mxformat/Datatype.h>

namespace devices::parser::mx {

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
    return mxformat::readBigEndian<std::uint16_t>(bytes);
}

std::int16_t readS16BE(const std::uint8_t* bytes)
{
    return static_cast<std::int16_t>(readU16BE(bytes));
}

std::uint32_t readU32BE(const std::uint8_t* bytes)
{
    return mxformat::readBigEndian<std::uint32_t>(bytes);
}

std::int32_t readS32BE(const std::uint8_t* bytes)
{
    return static_cast<std::int32_t>(readU32BE(bytes));
}

std::uint64_t readU64BE(const std::uint8_t* bytes)
{
    return mxformat::readBigEndian<std::uint64_t>(bytes);
}

std::int64_t readS64BE(const std::uint8_t* bytes)
{
    return static_cast<std::int64_t>(readU64BE(bytes));
}

std::string kv38ParameterValueToString(const std::uint8_t* value, MxParameterDatatype type)
{
    const auto* const datatype = mxformat::findDatatype(static_cast<std::uint8_t>(type));
    return datatype == nullptr ? std::string() : datatype->numberInSlot(readU64BE(value)).text();
}

} // namespace devices::parser::mx
