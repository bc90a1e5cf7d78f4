#pragma once

#include <cstdint>
#include <string>

namespace devices::parser::mx {

/// Returns the `size` bytes at `data` as base64 text in one line, padded with "=". (Poco's encoder
/// writes character by character into a stream: more than the rest of a translation costs.)
std::string base64(const std::uint8_t* data, std::uint32_t size);

} // namespace devices::parser::mx
