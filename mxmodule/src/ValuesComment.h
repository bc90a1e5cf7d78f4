#pragma once

#include <string>

namespace mxmodule {

/// Returns the first lines of a values file: `title`, and the command that reads the file.
std::string valuesTitle(const std::string& title);

/// Returns the comment above a value, without its "#": the accepted values, the default, and a
/// remark, which may be empty.
std::string valuesComment(const std::string& accepted, const std::string& standard,
                          const std::string& remark);

/// Returns whether `content` has the first lines of a values file.
bool hasValuesMark(const std::string& content);

/// Returns whether mxtool wrote `comment`, the text from "#" to the end of line `line` (from 1).
/// The title is recognised by its place.
bool isValuesComment(const std::string& comment, std::size_t line);

} // namespace mxmodule
