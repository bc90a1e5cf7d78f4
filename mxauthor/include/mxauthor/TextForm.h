#pragma once

#include "mxauthor/MxFile.h"

#include <filesystem>
#include <string>

namespace mxauthor {

/// Something wrong in the text form of an mx file.
struct SourceError
{
    std::size_t line = 1;   ///< From 1.
    std::size_t column = 1; ///< From 1, in characters.
    std::string text;       ///< What is wrong, what was found, what is accepted.
};

/// What a text form stands for. `file` counts only when there are no errors.
struct BuildResult
{
    MxFile file;
    std::vector<SourceError> errors; ///< All of them, in the order of the text.
};

/// Builds the mx file that the YAML text `source` describes. Identifiers, lengths, the content
/// length, the data sizes and the parameter block are computed where they are not stated; the same
/// text always gives the same bytes. Files named in it are looked for in `directory`.
BuildResult buildFromText(const std::string& source, const std::filesystem::path& directory);

/// Returns the YAML text of `file`, which `buildFromText` turns into the same bytes. What has no
/// form of its own is kept as raw bytes.
std::string dumpText(const MxFile& file);

/// Returns the line of `source` in which `error` stands and, in a second line, a caret under its
/// column. A long line is cut around it; control characters are blanks.
std::string sourceExcerpt(const std::string& source, const SourceError& error);

} // namespace mxauthor
