#pragma once

#include <mxmodule/FileKind.h>

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
/// Writes a temporary file in the same directory and renames it, so that a failure keeps the
/// previous file. Throws a `Failure` naming the file and the reason, also when the file is an input
/// or another output of this run, or when, without --overwrite, it is of another kind or its
/// comments would be lost.
void writeOutput(const std::string& path, const std::string& content);

/// Checks all outputs, then writes them. A verb writes all its files in one call: a second call
/// asserts.
void writeOutputs(const std::vector<Output>& outputs);

/// Makes the directory at `path`, and those above it, unless it exists. Throws a `Failure`.
void makeDirectory(const std::string& path);

/// Output files written one by one because their contents together may not fit into memory.
class OutputFiles
{
public:
    /// Checks each of `paths`, which will have content of `kind`.
    OutputFiles(const std::vector<std::string>& paths, mxmodule::FileKind kind);

    /// Throws a `Failure` when the file at `path`, one of the checked paths, cannot be written:
    /// before work that cannot be done again. Leaves no file.
    void requireWritable(const std::string& path) const;

    /// Writes the file at `path`, one of the checked paths.
    void write(const std::string& path, const std::string& content);
};

} // namespace mxtool
