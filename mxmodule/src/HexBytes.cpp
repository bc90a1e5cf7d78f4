#include "HexBytes.h"

#include "InvalidInput.h"

#include <fmt/format.h>
#include <text/Hexadecimal.h>

namespace mxmodule {

namespace {

bool isSeparator(char c)
{
    return std::string(" \t\r\n,:").find(c) != std::string::npos;
}

bool startsPrefix(const std::string& text, std::size_t at)
{
    return text.compare(at, 2, "0x") == 0 || text.compare(at, 2, "0X") == 0;
}

} // namespace

std::vector<char> bytesOfHex(const std::string& text)
{
    std::vector<char> bytes;
    for (std::size_t at = 0; at < text.size();) {
        if (isSeparator(text[at])) {
            ++at;
        } else if (startsPrefix(text, at)) {
            at += 2;
        } else {
            const auto high = text::hexDigit(text[at]);
            const auto low = at + 1 < text.size() ? text::hexDigit(text[at + 1]) : std::nullopt;
            if (!high || !low) {
                throw InvalidInput(
                    fmt::format("Found \"{}\" at character {}, expected two hexadecimal "
                                "digits for each byte",
                                text.substr(at, 2), at + 1));
            }
            bytes.push_back(static_cast<char>(*high << 4U | *low));
            at += 2;
        }
    }
    return bytes;
}

} // namespace mxmodule
