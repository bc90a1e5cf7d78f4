#include "TextContent.h"

#include <algorithm>

namespace mxtool {

namespace {

bool isControlByte(char c)
{
    return static_cast<unsigned char>(c) < 0x20 && c != '\t' && c != '\n' && c != '\r';
}

} // namespace

bool isUtf16(std::string_view content)
{
    const std::string_view mark = content.substr(0, 2);
    return mark == "\xFF\xFE" || mark == "\xFE\xFF";
}

std::size_t countOfControls(std::string_view content)
{
    return static_cast<std::size_t>(std::count_if(content.begin(), content.end(), isControlByte));
}

} // namespace mxtool
