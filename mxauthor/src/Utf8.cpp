#include "mxauthor/Utf8.h"

#include <text/Hexadecimal.h>
#include <text/Utf8.h>
#include <text/Windows1252.h>

#include <algorithm>

namespace mxauthor {

namespace {

std::string describeByte(const std::string& text, std::size_t pos)
{
    if (text::isUtf16(text)) {
        return "this text is UTF-16, expected UTF-8: save it as UTF-8";
    }
    std::size_t count = 0;
    for (std::size_t bad = pos; bad < text.size(); bad = text::nextNonUtf8(text, bad + 1)) {
        ++count;
    }
    return "the byte 0x" + text::hexOfBytes(&text[pos], 1, "") +
           " is not UTF-8, which is expected here (in Windows-1252 it is \"" +
           text::windows1252ToUtf8(text.substr(pos, 1)) + "\"): save the text as UTF-8" +
           (count == 1 ? "" : "; it has " + std::to_string(count) + " such bytes");
}

} // namespace

std::optional<SourceError> findNonUtf8(const std::string& text)
{
    const std::size_t bad = text::nextNonUtf8(text, 0);
    if (bad >= text.size()) {
        return std::nullopt;
    }
    SourceError error;
    const std::string before = text.substr(0, bad);
    error.lineStart = before.rfind('\n') + 1; // 0 where there is none
    error.line += static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n'));
    error.column += text::characterCount(before.substr(error.lineStart));
    error.text = describeByte(text, bad);
    return error;
}

} // namespace mxauthor
