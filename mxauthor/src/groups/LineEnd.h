#pragma once

#include "PayloadReader.h"
#include "PayloadWriter.h"

namespace mxauthor {

/// Reads a text and its line end CR LF. A text with NUL or LF has no one meaning, since readers end
/// it in different places: `UnexpectedShape`.
void readLine(PayloadReader& in, Field<std::string>& text);

void writeLine(PayloadWriter& out, const Field<std::string>& text);

} // namespace mxauthor
