#pragma once

#include "ExitCode.h"

#include <stdexcept>
#include <string>
#include <vector>

#include <mxauthor/TextForm.h>

namespace mxtool {

/// A message to the user, written to standard error.
struct Diagnostic
{
    std::string severity; ///< "error", "warning" or "note".
    std::string place; ///< A file, with line and column or byte offset where known; may be empty.
    std::string text;  ///< What is wrong, what was found, what is accepted.
    std::string hint = {}; ///< What to do; may be empty.
};

/// Returns `diagnostic` as "PLACE: SEVERITY: TEXT" and, where there is one, a "hint:" line. Control
/// characters in it are escaped.
std::string toText(const Diagnostic& diagnostic, bool coloured);

/// Writes `diagnostic` to standard error, coloured only on a terminal and without NO_COLOR.
void report(const Diagnostic& diagnostic);

/// Returns a byte offset in a file as diagnostics show it: "FILE:0x0001a4".
std::string placeInFile(const std::string& file, std::size_t offset);

/// Returns the first `most` of `items`, with `separator` between them, and how many more there are:
/// "a, b and 3 more" where `beforeRest` is a blank.
std::string beginningOfList(const std::vector<std::string>& items, std::size_t most,
                            const std::string& separator, const std::string& beforeRest);

/// Ends a verb: `run` reports the diagnostic and exits with the code.
class Failure : public std::runtime_error
{
public:
    Failure(ExitCode exitCode, const std::string& place, const std::string& text,
            const std::string& hint = {})
        : std::runtime_error(text), code(exitCode), diagnostic{"error", place, text, hint}
    {}

    ExitCode code;
    Diagnostic diagnostic;
};

/// Ends a verb whose output is a closed pipe (`mxtool ... | head`): nothing is reported.
class ReaderLeft : public Failure
{
public:
    ReaderLeft() : Failure(ExitCode::Output, "", "") {}
};

/// Returns whether output to `descriptor` may be coloured: it is a terminal, and NO_COLOR is not
/// set.
bool takesColour(int descriptor);

/// Returns `text` with the terminal colour code `colour`, or unchanged unless `coloured`.
std::string painted(const std::string& text, const char* colour, bool coloured);

/// Returns a place in the text `file` for diagnostics: "FILE:LINE:COLUMN".
std::string placeInText(const std::string& file, const mxauthor::SourceError& where);

/// Returns the line of `source` at `where`, and a caret below its column.
std::string shownExcerpt(const std::string& source, const mxauthor::SourceError& where);

/// Reports `error` with its place in `file` and its line of `source`, the text of `file`.
void reportAt(const std::string& file, const std::string& source,
              const mxauthor::SourceError& error, const std::string& severity,
              const std::string& hint);

} // namespace mxtool
