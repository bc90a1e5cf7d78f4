#pragma once

#include "mxauthor/Field.h"

#include <optional>
#include <string>

namespace mxauthor {

// Bytes as text of the text form. White space between the digits is left out of account.

std::string toHex(const Bytes& bytes);    ///< Two digits each, without blanks.
std::string toBase64(const Bytes& bytes); ///< With "=" padding, on one line.

std::optional<Bytes> fromHex(const std::string& text);    ///< Empty when it is no hexadecimal text.
std::optional<Bytes> fromBase64(const std::string& text); ///< Empty when it is no Base64 text.

} // namespace mxauthor
