#include "text/TextWidth.h"

#include "text/Beginning.h"
#include "text/ShownText.h"
#include "text/Utf8.h"

#include <algorithm>
#include <array>

namespace text {

namespace {

// Far longer than names of real modules; without a limit one long text used as the name of every
// channel would be repeated in full.
constexpr std::size_t longestLabel = 100;
constexpr std::size_t longestLabelBytes = 1000;

constexpr const char* ellipsis = "\u2026";
constexpr const char* replacement = "\uFFFD";

struct Range
{
    char32_t first;
    char32_t last;
};

constexpr std::array<Range, 9> wide = {{{0x1100, 0x115F},
                                        {0x2E80, 0xA4CF},
                                        {0xAC00, 0xD7A3},
                                        {0xF900, 0xFAFF},
                                        {0xFE30, 0xFE6F},
                                        {0xFF00, 0xFF60},
                                        {0xFFE0, 0xFFE6},
                                        {0x1F300, 0x1FAFF},
                                        {0x20000, 0x3FFFD}}};

constexpr std::array<Range, 4> combining = {
    {{0x0300, 0x036F}, {0x1AB0, 0x1AFF}, {0x20D0, 0x20FF}, {0xFE00, 0xFE0F}}};

// Characters that are invisible or not text: they would reverse the line or break the markup.
constexpr std::array<Range, 6> unshowable = {{{0x200B, 0x200F},
                                              {0x2028, 0x202E},
                                              {0x2060, 0x206F},
                                              {0xFDD0, 0xFDEF},
                                              {0xFEFF, 0xFEFF},
                                              {0xFFFE, 0xFFFF}}};

template <std::size_t count>
bool isIn(const std::array<Range, count>& ranges, char32_t point)
{
    return std::any_of(ranges.begin(), ranges.end(), [point](const Range& range) {
        return range.first <= point && point <= range.last;
    });
}

std::size_t columnsOfPoint(char32_t point)
{
    if (isIn(combining, point)) {
        return 0;
    }
    return isIn(wide, point) ? 2 : 1;
}

} // namespace

std::size_t columnsOf(const std::string& text)
{
    std::size_t columns = 0;
    for (const char32_t point : codePoints(text)) {
        columns += columnsOfPoint(point);
    }
    return columns;
}

std::string shortened(const std::string& text, std::size_t columns)
{
    std::string cut;
    std::size_t used = 0;
    std::string whole;
    for (const char32_t point : codePoints(text)) {
        used += columnsOfPoint(point);
        if (used > columns) {
            return columns == 0 ? "" : cut + ellipsis;
        }
        whole += toUtf8(point);
        if (used < columns) {
            cut = whole;
        }
    }
    return whole;
}

std::string shortenedName(const std::string& name, std::size_t columns)
{
    const std::size_t begin = name.find_last_not_of("0123456789") + 1;
    const std::string number = name.substr(begin);
    if (columnsOf(name) <= columns || number.size() > columns / 2) {
        return shortened(name, columns);
    }
    return shortened(name.substr(0, begin), columns - number.size()) + number;
}

std::string fitted(const std::string& text, std::size_t columns)
{
    const std::string fitting = shortened(text, columns);
    return fitting + std::string(columns - columnsOf(fitting), ' ');
}

std::string labelOf(const std::string& bytes)
{
    const std::string beginning = beginningOf(bytes, longestLabelBytes);
    const std::string shown =
        forTerminal(beginning) + (beginning.size() < bytes.size() ? ellipsis : "");
    std::string label;
    for (const char32_t point : codePoints(shortened(shown, longestLabel))) {
        label += isIn(unshowable, point) ? replacement : toUtf8(point);
    }
    return label;
}

} // namespace text
