#include "text/ControlCharacters.h"

#include <algorithm>

namespace text {

namespace {

bool isOutsideTexts(char byte)
{
    return static_cast<unsigned char>(byte) < ' ' && byte != '\t' && byte != '\n' && byte != '\r';
}

} // namespace

bool isControl(char byte)
{
    constexpr char deleted = 0x7F;
    return static_cast<unsigned char>(byte) < ' ' || byte == deleted;
}

std::size_t countOfControls(std::string_view content)
{
    return static_cast<std::size_t>(std::count_if(content.begin(), content.end(), isOutsideTexts));
}

bool hasControls(std::string_view content)
{
    return std::any_of(content.begin(), content.end(), isOutsideTexts);
}

} // namespace text
