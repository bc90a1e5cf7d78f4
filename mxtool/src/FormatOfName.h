#pragma once

#include <string>
#include <vector>

namespace mxtool {

/// Returns the output format for a file name when --format is not given: the one of `accepted` that
/// its extension means (.json, .html and .htm, .csv, .yaml and .yml: values, .bin: binary, .txt:
/// text, in upper or lower case), else `otherwise`.
std::string formatOfName(const std::string& output, const std::vector<std::string>& accepted,
                         const std::string& otherwise);

/// Whether `file` has the extension of a picture other than SVG, such as .png.
bool isOtherPicture(const std::string& file);

} // namespace mxtool
