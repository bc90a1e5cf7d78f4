#pragma once

#include <Poco/String.h>

#include <string>

namespace text {

/// Whether `file` ends in `extension` (given in lower case), ignoring case.
inline bool endsInExtension(const std::string& file, const std::string& extension)
{
    return file.size() > extension.size() &&
           Poco::icompare(file, file.size() - extension.size(), extension.size(), extension) == 0;
}

} // namespace text
