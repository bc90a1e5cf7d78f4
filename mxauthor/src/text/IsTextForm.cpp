#include "FormKeys.h"
#include "mxauthor/TextForm.h"

#include <text/NearestWords.h>

#include <algorithm>
#include <cctype>

namespace mxauthor {

namespace {

bool isKeyCharacter(char c)
{
    return std::isalnum(static_cast<unsigned char>(c)) != 0;
}

// The key before a colon at `place` of `text`, in quotes or not; empty: none.
std::string keyAt(const std::string& text, std::size_t place)
{
    const char quote =
        place < text.size() && (text[place] == '"' || text[place] == '\'') ? text[place] : '\0';
    place += quote != '\0' ? 1 : 0;
    std::size_t end = place;
    while (end < text.size() && isKeyCharacter(text[end])) {
        ++end;
    }
    const std::string key = text.substr(std::min(place, text.size()), end - place);
    end += quote != '\0' && end < text.size() && text[end] == quote ? 1 : 0;
    return end < text.size() && text[end] == ':' ? key : "";
}

// Those at the beginnings of lines.
std::vector<std::string> keysOfLines(const std::string& text)
{
    std::vector<std::string> keys;
    for (std::size_t line = 0; line < text.size();) {
        keys.push_back(keyAt(text, line));
        const std::size_t end = text.find('\n', line);
        line = end == std::string::npos ? text.size() : end + 1;
    }
    return keys;
}

// Those of the mapping whose brace is at `open`.
std::vector<std::string> keysInBraces(const std::string& text, std::size_t open)
{
    std::vector<std::string> keys;
    int depth = 0;
    char quote = '\0';
    for (std::size_t i = open; i < text.size(); ++i) {
        const char c = text[i];
        if (quote != '\0') {
            i += c == '\\' ? 1 : 0;
            quote = c == quote ? '\0' : quote;
            continue;
        }
        depth += c == '{' || c == '[' ? 1 : c == '}' || c == ']' ? -1 : 0;
        if (depth == 1 && (c == '{' || c == ',')) {
            keys.push_back(keyAt(text, text.find_first_not_of(" \t\r\n", i + 1)));
        }
        quote = c == '"' || c == '\'' ? c : '\0';
    }
    return keys;
}

} // namespace

std::vector<std::string> outermostKeys(const std::string& text)
{
    const std::string byteOrderMark = "\xEF\xBB\xBF";
    const std::size_t start =
        text.compare(0, byteOrderMark.size(), byteOrderMark) == 0 ? byteOrderMark.size() : 0;
    const std::size_t first = text.find_first_not_of(" \t\r\n", start);
    if (first != std::string::npos && text[first] == '{') {
        return keysInBraces(text, first);
    }
    return keysOfLines(text.substr(start));
}

bool hasKeyOfTextForm(const std::string& text)
{
    const std::vector<std::string> keys = outermostKeys(text);
    return std::any_of(keys.begin(), keys.end(), [](const std::string& key) {
        return !key.empty() && !text::nearestWords(key, keysOf("file")).empty();
    });
}

bool isTextForm(const std::string& text)
{
    const std::vector<std::string> keys = outermostKeys(text);
    const auto has = [&keys](const std::string& key) {
        return std::find(keys.begin(), keys.end(), key) != keys.end();
    };
    const std::vector<std::string>& known = keysOf("file");
    // JSON written by mxtool has keys of these names too, and a schema.
    return !has("schema") && (has("module") || std::count_if(known.begin(), known.end(), has) > 1);
}

} // namespace mxauthor
