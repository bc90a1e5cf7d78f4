#pragma once

#include <mxauthor/TextForm.h>

#include <string>
#include <vector>

namespace mxtool {

/// Returns the bytes of the file at `path` ("-": standard input), followed by the byte 0xFF that
/// `loadFile` appends to every mx file. Throws a `Failure` naming the file and the reason.
std::vector<char> loadInput(const std::string& path);

/// Returns the bytes of the file at `path` or of standard input, with nothing appended.
std::vector<char> loadBytes(const std::string& path);

/// Builds the mx file that `source`, the content of the file at `path` or of standard input,
/// describes. Files named in it are relative to its directory and are registered as inputs.
mxauthor::BuildResult buildInput(const std::string& source, const std::string& path);

/// Returns the name of the input for diagnostics: its path, "<standard input>" for "-".
std::string inputName(const std::string& path);

} // namespace mxtool
