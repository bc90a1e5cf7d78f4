#pragma once

#include <text/Json.h>

#include <mxauthor/Diff.h>

namespace mxtool {

/// Returns a line per difference, breaking ones first, and the verdict. `before` and `after` are
/// the names of the files.
std::string diffText(const mxauthor::Comparison& comparison, const std::string& before,
                     const std::string& after, bool coloured);

/// Returns the comparison, schema "mxtool.diff" version 1.
text::Json diffJson(const mxauthor::Comparison& comparison, const std::string& before,
                    const std::string& after);

} // namespace mxtool
