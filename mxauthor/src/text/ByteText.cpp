#include "ByteText.h"

#include <text/Hexadecimal.h>

#include <algorithm>
#include <array>

namespace mxauthor {

namespace {

constexpr std::string_view base64Digits =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

std::string withoutBlanks(const std::string& text)
{
    std::string kept;
    std::copy_if(text.begin(), text.end(), std::back_inserter(kept),
                 [](char c) { return c != ' ' && c != '\n' && c != '\t' && c != '\r'; });
    return kept;
}

} // namespace

std::string toHex(const Bytes& bytes)
{
    return text::hexOfBytes(bytes.data(), bytes.size(), "");
}

std::optional<Bytes> fromHex(const std::string& text)
{
    const std::string digits = withoutBlanks(text);
    if (digits.size() % 2 != 0) {
        return std::nullopt;
    }
    Bytes bytes;
    for (std::size_t i = 0; i < digits.size(); i += 2) {
        const auto high = text::hexDigit(digits[i]);
        const auto low = text::hexDigit(digits[i + 1]);
        if (!high || !low) {
            return std::nullopt;
        }
        bytes.push_back(static_cast<std::uint8_t>(*high << 4 | *low));
    }
    return bytes;
}

std::string toBase64(const Bytes& bytes)
{
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        const std::size_t count = std::min<std::size_t>(3, bytes.size() - i);
        std::uint32_t group = 0;
        for (std::size_t k = 0; k < 3; ++k) {
            group = group << 8 | (k < count ? bytes[i + k] : 0U);
        }
        for (std::size_t k = 0; k < 4; ++k) {
            text += k <= count ? base64Digits[group >> (18 - 6 * k) & 0x3FU] : '=';
        }
    }
    return text;
}

std::optional<Bytes> fromBase64(const std::string& text)
{
    std::string digits = withoutBlanks(text);
    if (digits.size() % 4 != 0) {
        return std::nullopt;
    }
    for (int padding = 0; padding < 2 && !digits.empty() && digits.back() == '='; ++padding) {
        digits.pop_back();
    }
    Bytes bytes;
    std::uint32_t collected = 0;
    unsigned bits = 0;
    for (const char c : digits) {
        const std::size_t digit = base64Digits.find(c);
        if (digit == std::string_view::npos) {
            return std::nullopt;
        }
        collected = (collected << 6 | static_cast<std::uint32_t>(digit)) & 0xFFFFU;
        bits += 6;
        if (bits >= 8) {
            bits -= 8;
            bytes.push_back(static_cast<std::uint8_t>(collected >> bits));
        }
    }
    return bytes;
}

} // namespace mxauthor
