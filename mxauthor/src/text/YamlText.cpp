#include "YamlText.h"

#include <Poco/String.h>

#include <devices/parser/mx/HexText.h>
#include <text/Windows1252.h>

#include <algorithm>
#include <set>

namespace mxauthor {

namespace {

bool isLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

// A printable character of the upper half in Windows-1252; five of its bytes, the no-break space
// and the soft hyphen are not.
bool isUpperLetter(char c)
{
    static const std::string unprintable = "\x81\x8D\x8F\x90\x9D\xA0\xAD";
    return static_cast<unsigned char>(c) >= 0x80 && unprintable.find(c) == std::string::npos;
}

bool isPlainCharacter(char c)
{
    static const std::string signs = " ._/()+-%=<>;^";
    return isLetter(c) || isDigit(c) || isUpperLetter(c) || signs.find(c) != std::string::npos;
}

// Words that readers of YAML do not read as text.
bool isReserved(const std::string& text)
{
    static const std::set<std::string> words = {"null", "true", "false", "yes", "no",
                                                "on",   "off",  "y",     "n"};
    return words.count(Poco::toLower(text)) != 0;
}

bool isPlain(const std::string& text)
{
    if (text.empty() || text.back() == ' ' || isReserved(text) ||
        !std::all_of(text.begin(), text.end(), isPlainCharacter)) {
        return false;
    }
    // Text that starts with a digit might be a number or a date, unless it contains a blank.
    return isLetter(text[0]) || isUpperLetter(text[0]) ||
           (isDigit(text[0]) && text.find(' ') != std::string::npos);
}

std::string escaped(char c)
{
    if (c == '"' || c == '\\') {
        return std::string("\\") + c;
    }
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x20 || byte == 0x7F || (byte >= 0x80 && !isUpperLetter(c))) {
        return "\\x" + devices::parser::mx::u8AsHex(byte);
    }
    return text::windows1252ToUtf8(std::string(1, c));
}

std::string joined(const std::vector<std::string>& values)
{
    return Poco::cat(std::string(", "), values.begin(), values.end());
}

} // namespace

std::string yamlText(const std::string& bytes)
{
    if (isPlain(bytes)) {
        return text::windows1252ToUtf8(bytes);
    }
    std::string text = "\"";
    for (const char c : bytes) {
        text += escaped(c);
    }
    return text + "\"";
}

std::string yamlQuoted(const std::string& utf8)
{
    return "\"" + utf8 + "\"";
}

std::string yamlDigits(const std::string& digits, const std::string& indent)
{
    constexpr std::size_t width = 80;
    if (digits.size() <= width) {
        return yamlQuoted(digits) + "\n";
    }
    std::string text = "|\n";
    for (std::size_t pos = 0; pos < digits.size(); pos += width) {
        text += indent + digits.substr(pos, width) + "\n";
    }
    return text;
}

FlowMapping& FlowMapping::add(const std::string& key, const std::string& value)
{
    items.push_back(key + ": " + value);
    return *this;
}

std::string FlowMapping::text() const
{
    return "{" + joined(items) + "}";
}

std::string FlowMapping::lines(const std::string& indent) const
{
    std::string text;
    for (const std::string& item : items) {
        text += indent + item + "\n";
    }
    return text;
}

std::string flowList(const std::vector<std::string>& values)
{
    return "[" + joined(values) + "]";
}

} // namespace mxauthor
