#pragma once

#include "DeviceJson.h"

#include <mxauthor/Explain.h>

namespace mxtool {

/// An mx file and what its bytes are.
struct ExplainedFile
{
    std::string name;
    std::vector<char> bytes;
    mxauthor::Explanation explanation;
};

/// Returns an annotated hexadecimal dump; bytes that nobody reads are marked, and on a terminal
/// shown faint.
std::string explainText(const ExplainedFile& file, bool coloured);

/// Returns the parts as JSON, schema "mxtool.explain" version 1.
Json explainJson(const ExplainedFile& file);

/// Returns the dump as an HTML page that needs no other file.
std::string explainHtml(const ExplainedFile& file);

/// Returns the bytes of a part as hexadecimal digits, blanks between.
std::string hexOfPart(const ExplainedFile& file, const mxauthor::ExplainedPart& part);

/// Returns what stands in the column of values: a number in decimal, a text in quotes.
std::string valueOfPart(const mxauthor::ExplainedPart& part);

/// Returns the meaning, with "not read" where nobody reads the part.
std::string meaningOfPart(const mxauthor::ExplainedPart& part);

/// Returns "group 20c0, parameters: 122 bytes at 0x00013c (316)".
std::string headingOf(const mxauthor::ExplainedGroup& group);

/// Returns what the one byte at `offset` is. Throws a `Refusal` when the file has none there.
std::string explainByte(const ExplainedFile& file, const std::string& offset);

/// Returns where the parameters, channels and texts called `name` lie. Throws a `Refusal` when
/// there are none.
std::string explainName(const ExplainedFile& file, const std::string& name);

} // namespace mxtool
