#include "text/Base64.h"

#include <Poco/Base64Decoder.h>

#include <algorithm>
#include <iterator>

namespace text {

namespace {

constexpr const char* base64Digits =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

// Poco's decoder would accept any number of "=" anywhere.
bool isPaddedBase64(const std::string& text)
{
    const std::size_t digits = text.find_last_not_of('=') + 1;
    return text.size() % 4 == 0 && text.size() - digits <= 2 &&
           text.find_first_not_of(base64Digits) >= digits;
}

} // namespace

std::optional<std::vector<std::uint8_t>> fromBase64(const std::string& text)
{
    std::string digits;
    std::copy_if(text.begin(), text.end(), std::back_inserter(digits),
                 [](char c) { return c != ' ' && c != '\n' && c != '\t' && c != '\r'; });
    if (!isPaddedBase64(digits)) {
        return std::nullopt;
    }
    std::istringstream source(digits);
    Poco::Base64Decoder decoder(source);
    return std::vector<std::uint8_t>(std::istreambuf_iterator<char>(decoder), {});
}

} // namespace text
