#include "text/Beginning.h"

namespace text {

bool continuesCharacter(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

std::string beginningOf(const std::string& bytes, std::size_t most)
{
    constexpr std::size_t longestCharacter = 4;
    if (bytes.size() <= most) {
        return bytes;
    }
    std::size_t end = most;
    while (end > 0 && most - end < longestCharacter && continuesCharacter(bytes[end])) {
        --end;
    }
    return bytes.substr(0, end);
}

std::string shortened(const std::string& bytes)
{
    constexpr std::size_t most = 60;
    return bytes.size() <= most ? bytes : beginningOf(bytes, most) + "...";
}

std::string abbreviated(const std::string& bytes)
{
    constexpr std::size_t most = 300; // more than an option or a name of a real module has
    return bytes.size() <= most ? bytes : beginningOf(bytes, most) + " ...";
}

std::string beginningOfList(const std::vector<std::string>& items, std::size_t most,
                            const std::string& separator, const std::string& beforeRest)
{
    std::string list;
    for (std::size_t i = 0; i < items.size() && i < most; ++i) {
        list += (i == 0 ? "" : separator) + items[i];
    }
    return items.size() <= most
               ? list
               : list + beforeRest + "and " + std::to_string(items.size() - most) + " more";
}

} // namespace text
