#pragma once

#include <mxauthor/TextForm.h>
#include <mxmodule/Finding.h>

#include <cstddef>
#include <string>

namespace mxmodule {

/// Returns whether `name`, as a caller calls an input, is a path: it is neither empty nor in angle
/// brackets, such as "<standard input>".
bool isPath(const std::string& name);

/// Returns a byte offset in a file as messages show it: "FILE:0x0001a4".
std::string placeInFile(const std::string& file, std::size_t offset);

/// Returns a place in the text `file` as messages show it: "FILE:LINE:COLUMN".
std::string placeInText(const std::string& file, const mxauthor::SourceError& where);

/// Returns the line of `source` at `where`, and a caret below its column.
std::string excerptOf(const std::string& source, const mxauthor::SourceError& where);

/// Returns `error` in `source`, the text of `file`, as a finding.
Finding findingAt(const std::string& file, const std::string& source,
                  const mxauthor::SourceError& error, Severity severity,
                  const std::string& hint = {});

} // namespace mxmodule
