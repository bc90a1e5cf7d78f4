#pragma once

#include <charconv>
#include <optional>
#include <string>
#include <system_error>

namespace text {

/// Returns the number that the whole of `text` states in digits of `base`, with "-" before them
/// where `Number` is signed. Returns nothing for any other text and for a number that `Number`
/// cannot hold.
template <typename Number>
std::optional<Number> wholeNumber(const std::string& text, int base = 10)
{
    Number number = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number, base);
    return error == std::errc() && rest == end ? std::optional(number) : std::nullopt;
}

} // namespace text
