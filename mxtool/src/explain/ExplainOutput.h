#pragma once

#include <text/Json.h>

#include <mxauthor/Explain.h>

namespace mxtool {

/// An mx file and the meaning of its bytes.
struct ExplainedFile
{
    std::string name;
    std::vector<char> bytes;
    mxauthor::Explanation explanation;
};

/// Returns an annotated hexadecimal dump. Bytes that are not read are marked, and faint on a
/// terminal.
std::string explainText(const ExplainedFile& file, bool coloured);

/// Returns the parts as JSON, schema "mxtool.explain" version 1.
text::Json explainJson(const ExplainedFile& file);

/// Returns the dump as a self-contained HTML page.
std::string explainHtml(const ExplainedFile& file);

/// Returns the bytes of a part in hexadecimal, separated by blanks.
std::string hexOfPart(const ExplainedFile& file, const mxauthor::ExplainedPart& part);

/// Returns the value of a part for the value column: a number in decimal, a text in quotes.
std::string valueOfPart(const mxauthor::ExplainedPart& part);

/// Returns the meaning of a part, with "not read" if it is not read.
std::string meaningOfPart(const mxauthor::ExplainedPart& part);

/// Returns "group 20c0, parameters: 122 bytes at 0x00013c (316)".
std::string headingOf(const mxauthor::ExplainedGroup& group);

/// Returns the explanation of the byte at `offset`. Throws a `Failure` when the offset is
/// outside the file.
std::string explainByte(const ExplainedFile& file, const std::string& offset);

/// Returns the places of the parameters, channels and texts called `name`. Throws a `Failure`
/// when there are none.
std::string explainName(const ExplainedFile& file, const std::string& name);

} // namespace mxtool
