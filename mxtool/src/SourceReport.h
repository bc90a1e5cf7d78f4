#pragma once

#include <mxauthor/TextForm.h>

namespace mxtool {

/// Returns a place in the text `file` for diagnostics: "FILE:LINE:COLUMN".
std::string placeInText(const std::string& file, const mxauthor::SourceError& where);

/// Returns the line of `source` at `where`, and a caret below its column.
std::string shownExcerpt(const std::string& source, const mxauthor::SourceError& where);

/// Reports `error` with its place in `file` and its line of `source`, the text of `file`.
void reportAt(const std::string& file, const std::string& source,
              const mxauthor::SourceError& error, const std::string& severity,
              const std::string& hint);

} // namespace mxtool
