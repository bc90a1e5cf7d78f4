#include "TextContent.h"

#include <algorithm>

namespace mxtool {

bool isUtf16(std::string_view content)
{
    const std::string_view mark = content.substr(0, 2);
    return mark == "\xFF\xFE" || mark == "\xFE\xFF";
}

} // namespace mxtool
