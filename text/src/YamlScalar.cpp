#include "text/YamlScalar.h"

#include "text/JsonText.h"
#include "text/ShownText.h"

#include <algorithm>
#include <array>

namespace text {

namespace {

std::string lowerCase(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return text;
}

// Words that YAML readers do not read as text.
bool isYamlWord(const std::string& text)
{
    constexpr std::array<const char*, 9> words = {"true", "false", "yes",  "no", "on",
                                                  "off",  "null",  "none", "~"};
    return text.size() < 2 || std::find(words.begin(), words.end(), lowerCase(text)) != words.end();
}

bool isPlain(const std::string& text)
{
    const std::string allowed = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz"
                                "0123456789 _-.+/()%";
    const bool startsPlain = !text.empty() && text.find_first_of(" -.+/()%_") != 0;
    const bool isNumber = text.find_first_not_of("-.0123456789") == std::string::npos &&
                          text.find_first_of("0123456789") != std::string::npos;
    const bool isAllowed = std::all_of(text.begin(), text.end(), [&allowed](char c) {
        return static_cast<unsigned char>(c) >= 0x80 || allowed.find(c) != std::string::npos;
    });
    return isAllowed && (isNumber || (startsPlain && !isYamlWord(text))) && text.back() != ' ';
}

} // namespace

std::string yamlScalar(const std::string& utf8)
{
    const bool isSafe = !utf8.empty() && forTerminal(utf8) == utf8 && isPlain(utf8);
    return isSafe ? utf8 : yamlQuoted(utf8);
}

std::string yamlQuoted(const std::string& utf8)
{
    return harmlessJson(Json(utf8).dump());
}

} // namespace text
