#pragma once

#include <Poco/Base64Encoder.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

namespace text {

/// Returns the `size` bytes at `data` as one line of base64 text, padded with "=".
inline std::string toBase64(const std::uint8_t* data, std::size_t size)
{
    std::ostringstream text;
    Poco::Base64Encoder encoder(text);
    encoder.rdbuf()->setLineLength(0);
    encoder.exceptions(std::ios::badbit); // out of memory: the text must not end early
    encoder.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    encoder.close();
    return text.str();
}

/// Returns `bytes` in the same form.
inline std::string toBase64(const std::vector<std::uint8_t>& bytes)
{
    return toBase64(bytes.data(), bytes.size());
}

/// Returns the bytes that `text` spells in base64 with its padding; white space is ignored. Nothing
/// if it is not base64.
[[nodiscard]] std::optional<std::vector<std::uint8_t>> fromBase64(const std::string& text);

} // namespace text
