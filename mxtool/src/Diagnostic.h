#pragma once

#include "ExitCode.h"

#include <stdexcept>
#include <string>

namespace mxtool {

/// Something to tell a person, on standard error.
struct Diagnostic
{
    std::string severity; ///< "error", "warning" or "note".
    std::string place; ///< A file, with line and column or byte offset where known; may be empty.
    std::string text;  ///< What is wrong, what was found, what is accepted.
    std::string hint;  ///< What to do; may be empty.
};

/// Returns `diagnostic` as "PLACE: SEVERITY: TEXT" and, where there is one, a "hint:" line. Control
/// characters in it are escaped.
std::string toText(const Diagnostic& diagnostic, bool coloured);

/// Writes `diagnostic` to standard error, coloured only on a terminal and without NO_COLOR.
void report(const Diagnostic& diagnostic);

/// Returns `offset` as diagnostics show places in a file: "FILE:0x0001a4".
std::string placeInFile(const std::string& file, std::size_t offset);

/// Ends a verb: the diagnostic is reported, the program exits with the code.
class Failure : public std::runtime_error
{
public:
    Failure(ExitCode exitCode, Diagnostic what)
        : std::runtime_error(what.text), code(exitCode), diagnostic(std::move(what))
    {}

    ExitCode code;
    Diagnostic diagnostic;
};

/// Ends a verb whose output goes to a reader that has left (`mxtool ... | head`): nothing is
/// reported.
class ReaderLeft : public Failure
{
public:
    ReaderLeft() : Failure(ExitCode::Output, {}) {}
};

} // namespace mxtool
