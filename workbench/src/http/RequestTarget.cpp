#include "http/RequestTarget.h"

#include <charconv>
#include <sstream>

namespace workbench {

namespace {

// The byte that "%XY" at `position` means; nothing if it is malformed or a NUL.
std::optional<char> escapedByte(const std::string& text, std::size_t position)
{
    constexpr std::size_t digits = 2;
    constexpr int base = 16;
    if (text.size() - position <= digits) {
        return std::nullopt;
    }
    const char* const begin = text.data() + position + 1;
    unsigned byte = 0;
    const auto read = std::from_chars(begin, begin + digits, byte, base);
    if (read.ec != std::errc() || read.ptr != begin + digits || byte == 0) {
        return std::nullopt;
    }
    return static_cast<char>(byte);
}

std::optional<std::string> decoded(const std::string& text)
{
    std::string bytes;
    for (std::size_t position = 0; position < text.size(); ++position) {
        char byte = text[position] == '+' ? ' ' : text[position];
        if (byte == '%') {
            const auto escaped = escapedByte(text, position);
            if (!escaped) {
                return std::nullopt;
            }
            byte = *escaped;
            position += 2;
        }
        bytes.push_back(byte);
    }
    return bytes;
}

} // namespace

std::string pathOf(const std::string& target)
{
    return target.substr(0, target.find('?'));
}

std::optional<RequestTarget> parsedTarget(const std::string& target)
{
    RequestTarget parts;
    parts.path = pathOf(target);
    if (parts.path.size() == target.size()) {
        return parts;
    }
    std::istringstream query(target.substr(parts.path.size() + 1));
    for (std::string item; std::getline(query, item, '&');) {
        const std::size_t equals = item.find('=');
        const auto name = decoded(item.substr(0, equals));
        const auto value =
            decoded(equals == std::string::npos ? std::string() : item.substr(equals + 1));
        if (!name || name->empty() || !value || !parts.query.emplace(*name, *value).second) {
            return std::nullopt;
        }
    }
    return parts;
}

} // namespace workbench
