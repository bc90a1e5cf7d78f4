#pragma once

#include <string>

namespace mxtool {

/// Writes `content` to the file at `path`, to standard output for "-".
///
/// A file is written beside its place and renamed: after a failure what was there before is still
/// there. Throws a `Failure` naming the file and the reason.
void writeOutput(const std::string& path, const std::string& content);

} // namespace mxtool
