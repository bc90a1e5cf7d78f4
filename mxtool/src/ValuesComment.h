#pragma once

#include <string>

namespace mxtool {

/// Returns the first lines of a values file: what `title` says, and the call that reads the file.
std::string valuesTitle(const std::string& title);

/// Returns the comment above a value, without its "#": what is accepted, what is the default, and a
/// remark that may be empty.
std::string valuesComment(const std::string& accepted, const std::string& standard,
                          const std::string& remark);

/// Returns whether `content` has the first lines of a values file.
bool hasValuesMark(const std::string& content);

/// Returns whether `comment`, from its "#" to the end of line number `line`, from 1, is one that
/// the functions above make; the title is taken for one of them by its place.
bool isValuesComment(const std::string& comment, std::size_t line);

} // namespace mxtool
