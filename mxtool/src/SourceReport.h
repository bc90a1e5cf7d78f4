#pragma once

#include <mxauthor/TextForm.h>

namespace mxtool {

/// Returns how diagnostics show a place in the text called `file`: "FILE:LINE:COLUMN".
std::string placeInText(const std::string& file, const mxauthor::SourceError& where);

/// Returns the line of `source` in which `where` is, and a caret below its column.
std::string shownExcerpt(const std::string& source, const mxauthor::SourceError& where);

/// Reports `error` at its place in `source`, the text called `file`, with its line.
void reportAt(const std::string& file, const std::string& source,
              const mxauthor::SourceError& error, const std::string& severity,
              const std::string& hint);

} // namespace mxtool
