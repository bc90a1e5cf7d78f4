#pragma once

#include "ExitCode.h"

#include <mxmodule/Finding.h>

#include <string>
#include <vector>

namespace mxtool {

using mxmodule::Failure;
using mxmodule::Finding;
using mxmodule::Origin;
using mxmodule::Severity;

/// Returns `finding` as "PLACE: SEVERITY: TEXT", where there is one a "hint:" line, and the line of
/// the text form that it is about. Control characters in it are escaped.
std::string toText(const Finding& finding, bool coloured);

/// Writes `finding` to standard error, coloured only on a terminal and without NO_COLOR.
void report(const Finding& finding);

/// Writes each of `findings`.
void report(const std::vector<Finding>& findings);

/// Returns the exit code for the first error of `failure`.
ExitCode exitCodeFor(const Failure& failure);

/// Ends a verb whose output is a closed pipe (`mxtool ... | head`): nothing is reported.
class ReaderLeft : public Failure
{
public:
    ReaderLeft() : Failure(Origin::Output, "", "") {}
};

/// Returns whether output to `descriptor` may be coloured: it is a terminal, and NO_COLOR is not
/// set.
bool takesColour(int descriptor);

/// Returns `text` with the terminal colour code `colour`, or unchanged unless `coloured`.
std::string painted(const std::string& text, const char* colour, bool coloured);

} // namespace mxtool
