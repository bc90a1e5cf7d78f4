#include "text/ShownText.h"

#include "text/Hexadecimal.h"
#include "text/Utf8.h"

namespace text {

namespace {

bool actsOnTerminal(char32_t point)
{
    return point < 0x20 || (point >= 0x7F && point < 0xA0);
}

// Separators of lines and paragraphs, and direction marks.
bool turnsTheLine(char32_t point)
{
    return point == 0x061C || point == 0x200E || point == 0x200F ||
           (point >= 0x2028 && point <= 0x202E) || (point >= 0x2066 && point <= 0x2069);
}

} // namespace

std::string forTerminal(const std::string& bytes)
{
    std::string shown;
    for (const char32_t point : codePoints(bytes)) {
        shown += actsOnTerminal(point) ? "\\x" + hexOf(point, 2)
                 : turnsTheLine(point) ? "\\u" + hexOf(point, 4)
                                       : toUtf8(point);
    }
    return shown;
}

std::string harmlessJson(const std::string& json)
{
    std::string text;
    for (const char32_t point : codePoints(json)) {
        const bool isHarmless = point == '\n' || !(actsOnTerminal(point) || turnsTheLine(point));
        text += isHarmless ? toUtf8(point) : "\\u" + hexOf(point, 4);
    }
    return text;
}

} // namespace text
