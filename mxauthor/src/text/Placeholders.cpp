#include "Placeholders.h"

#include <charconv>

namespace mxauthor {

namespace {

constexpr std::size_t longest = 20; // characters between the brackets

// A piece of a text from one "<" to its ">", both included.
struct Piece
{
    std::size_t begin = 0;
    std::size_t end = 0;
};

// Texts such as "<5 V>" are not placeholders: those hold an n and otherwise only arithmetic.
bool isArithmetic(const std::string& inner)
{
    return inner.size() <= longest && inner.find_first_of("nN") != std::string::npos &&
           inner.find_first_not_of("nN0123456789*/+- ") == std::string::npos;
}

std::optional<Piece> nextPlaceholder(const std::string& text, std::size_t from)
{
    for (std::size_t begin = text.find('<', from); begin != std::string::npos;
         begin = text.find('<', begin + 1)) {
        const std::size_t end = text.find_first_of("<>", begin + 1);
        if (end != std::string::npos && text[end] == '>' &&
            isArithmetic(text.substr(begin + 1, end - begin - 1))) {
            return Piece{begin, end + 1};
        }
    }
    return std::nullopt;
}

std::string inside(const std::string& text, const Piece& piece)
{
    return text.substr(piece.begin + 1, piece.end - piece.begin - 2);
}

// Removes digits from the start of `text` and returns their value. Empty when there are none, or
// too many.
std::optional<std::int64_t> takeNumber(std::string& text)
{
    std::uint32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc()) {
        return std::nullopt;
    }
    text.erase(0, static_cast<std::size_t>(end - text.data()));
    return number;
}

bool take(std::string& text, char what)
{
    const bool isThere = !text.empty() && text.front() == what;
    text.erase(0, isThere ? 1 : 0);
    return isThere;
}

// The value of FACTOR*n+SUMMAND; the factor and the summand may be missing.
std::optional<std::int64_t> valueOf(std::string inner, std::uint32_t n)
{
    std::int64_t value = n;
    if (const auto factor = takeNumber(inner)) {
        value *= *factor;
        if (!take(inner, '*')) {
            return std::nullopt;
        }
    }
    if (!take(inner, 'n')) {
        return std::nullopt;
    }
    const bool isPlus = !inner.empty() && inner.front() == '+';
    if (take(inner, '+') || take(inner, '-')) {
        const auto summand = takeNumber(inner);
        if (!summand) {
            return std::nullopt;
        }
        value += isPlus ? *summand : -*summand;
    }
    return inner.empty() ? std::optional(value) : std::nullopt;
}

} // namespace

bool hasPlaceholder(const std::string& text)
{
    return nextPlaceholder(text, 0).has_value();
}

std::optional<std::string> wrongPlaceholder(const std::string& text)
{
    std::size_t from = 0;
    while (const auto piece = nextPlaceholder(text, from)) {
        if (!valueOf(inside(text, *piece), 0)) {
            return text.substr(piece->begin, piece->end - piece->begin);
        }
        from = piece->end;
    }
    return std::nullopt;
}

std::string withNumbers(const std::string& text, std::uint32_t n)
{
    std::string result;
    std::size_t from = 0;
    while (const auto piece = nextPlaceholder(text, from)) {
        result += text.substr(from, piece->begin - from) +
                  std::to_string(valueOf(inside(text, *piece), n).value());
        from = piece->end;
    }
    return result + text.substr(from);
}

} // namespace mxauthor
