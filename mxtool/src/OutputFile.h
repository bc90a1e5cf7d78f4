#pragma once

#include "FileKind.h"

#include <string>
#include <vector>

namespace mxtool {

/// A file that a verb writes.
struct Output
{
    std::string path; ///< "-" for standard output.
    std::string content;
};

/// Writes `content` to the file at `path`, to standard output for "-".
///
/// A file is written beside its place and renamed: after a failure what was there before is still
/// there. Throws a `Failure` naming the file and the reason; an input of the call, another output
/// of it, and without --overwrite a file of another kind or comments that would be lost, are such
/// reasons.
void writeOutput(const std::string& path, const std::string& content);

/// Writes all of them, after each was checked. Everything that a verb writes to files goes through
/// one such call: the second one asserts.
void writeOutputs(const std::vector<Output>& outputs);

/// Files that are written one by one, too many to be kept in memory.
class OutputFiles
{
public:
    /// Checks each of `paths`, which will hold content of `kind`.
    OutputFiles(const std::vector<std::string>& paths, FileKind kind);

    /// Writes the file at `path`, one of those that were checked.
    void write(const std::string& path, const std::string& content);
};

} // namespace mxtool
