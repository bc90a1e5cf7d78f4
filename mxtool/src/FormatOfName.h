#pragma once

#include <string>
#include <vector>

namespace mxtool {

/// Returns the format of an output for which the call names none: of `accepted` the one that the
/// end of the file's name says (.json, .csv, .yaml and .yml: values, .bin: binary, .txt: text,
/// upper or lower case), else `otherwise`.
std::string formatOfName(const std::string& output, const std::vector<std::string>& accepted,
                         const std::string& otherwise);

/// Whether the name of `file` ends as that of a picture that is no SVG, such as .png.
bool isOtherPicture(const std::string& file);

/// Whether `file` ends in `extension`, which is in lower case, in upper or lower case.
bool endsInExtension(const std::string& file, const std::string& extension);

} // namespace mxtool
