#pragma once

#include "devices/parser/mx/MxParameterDatatype.h"
#include "devices/parser/mx/ParserMxApi.h"

#include <cstdint>
#include <string>

namespace devices::parser::mx {

/// @name Fixed-width big-endian readers
/// The most significant byte comes first, signed numbers are two's complement. The caller
/// guarantees that the bytes exist; any alignment will do. Nothing is thrown.
/// @{

PARSER_MX_API std::uint8_t readU8(const std::uint8_t* bytes);     ///< Reads 1 byte.
PARSER_MX_API std::int8_t readS8(const std::uint8_t* bytes);      ///< Reads 1 byte, signed.
PARSER_MX_API std::uint16_t readU16BE(const std::uint8_t* bytes); ///< Reads 2 bytes.
PARSER_MX_API std::int16_t readS16BE(const std::uint8_t* bytes);  ///< Reads 2 bytes, signed.
PARSER_MX_API std::uint32_t readU32BE(const std::uint8_t* bytes); ///< Reads 4 bytes.
PARSER_MX_API std::int32_t readS32BE(const std::uint8_t* bytes);  ///< Reads 4 bytes, signed.
PARSER_MX_API std::uint64_t readU64BE(const std::uint8_t* bytes); ///< Reads 8 bytes.
PARSER_MX_API std::int64_t readS64BE(const std::uint8_t* bytes);  ///< Reads 8 bytes, signed.

/// @}

/// Returns the decimal text of the value in the 8-byte big-endian slot `value`; a type narrower
/// than 64 bits is in the last bytes. An invalid `type` reads nothing and gives the empty text.
PARSER_MX_API std::string kv38ParameterValueToString(const std::uint8_t* value,
                                                     MxParameterDatatype type);

} // namespace devices::parser::mx
