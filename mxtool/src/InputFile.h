#pragma once

#include <mxauthor/TextForm.h>

#include <string>
#include <vector>

namespace mxtool {

/// Returns the bytes of the file at `path`, of standard input for "-", and the one byte 0xFF behind
/// them that every loaded mx file has. Throws a `Failure` naming the file and the reason.
std::vector<char> loadInput(const std::string& path);

/// Returns the bytes of the file at `path` or of standard input, nothing behind them.
std::vector<char> loadBytes(const std::string& path);

/// Builds the mx file that `source`, the content of the file at `path` or of standard input,
/// describes. Files that it names are looked for beside it, and are inputs of the call too.
mxauthor::BuildResult buildInput(const std::string& source, const std::string& path);

/// Returns whether the parser takes a file of this name when it populates a database: MX*.bin.
bool isMxFileName(const std::string& name);

/// Refuses a pipe or device that a directory holds in the place of a file: reading it may never
/// end. Throws a `Failure` naming it.
void requireNoDevice(const std::string& path);

/// Returns how diagnostics name the input: its path, "<standard input>" for "-".
std::string inputName(const std::string& path);

} // namespace mxtool
