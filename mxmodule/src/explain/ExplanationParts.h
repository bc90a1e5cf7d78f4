#pragma once

#include <mxmodule/Explanation.h>

#include <string>

namespace mxmodule {

/// Returns the bytes of a part in hexadecimal, separated by blanks.
std::string hexOfPart(const Explanation& explanation, const ExplainedPart& part);

/// Returns the value of a part for the value column: a number in decimal, a text in quotes.
std::string valueOfPart(const ExplainedPart& part);

/// Returns the meaning of a part, with "not read" if it is not read.
std::string meaningOfPart(const ExplainedPart& part);

/// Returns "group 20c0, parameters: 122 bytes at 0x00013c (316)".
std::string headingOf(const ExplainedGroup& group);

/// Returns whether a record, or a group, begins with `part`; `previous` is the part before it, or
/// null.
bool beginsRecord(const ExplainedPart& part, const ExplainedPart* previous);

/// The same of a group.
bool beginsGroup(const ExplainedPart& part, const ExplainedPart* previous);

} // namespace mxmodule
