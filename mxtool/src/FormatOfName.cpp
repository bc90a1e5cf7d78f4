#include "FormatOfName.h"

#include <text/FileExtension.h>

#include <algorithm>
#include <array>
#include <utility>

namespace mxtool {

bool isOtherPicture(const std::string& file)
{
    constexpr std::array<const char*, 17> extensions = {
        ".png", ".jpg", ".jpeg", ".gif", ".bmp", ".webp", ".tif", ".tiff", ".ico",
        ".pdf", ".ps",  ".eps",  ".emf", ".wmf", ".svgz", ".dxf", ".avif"};
    return std::any_of(extensions.begin(), extensions.end(), [&file](const char* extension) {
        return text::endsInExtension(file, extension);
    });
}

std::string formatOfName(const std::string& output, const std::vector<std::string>& accepted,
                         const std::string& otherwise)
{
    constexpr std::array<std::pair<const char*, const char*>, 8> formats = {{{".json", "json"},
                                                                             {".html", "html"},
                                                                             {".htm", "html"},
                                                                             {".csv", "csv"},
                                                                             {".yaml", "values"},
                                                                             {".yml", "values"},
                                                                             {".bin", "binary"},
                                                                             {".txt", "text"}}};
    const auto found = std::find_if(formats.begin(), formats.end(), [&](const auto& format) {
        return text::endsInExtension(output, format.first) &&
               std::find(accepted.begin(), accepted.end(), format.second) != accepted.end();
    });
    return found == formats.end() ? otherwise : found->second;
}

} // namespace mxtool
