#pragma once

#include <optional>
#include <string>
#include <vector>

namespace mxauthor {

// The part of YAML that separates quotation marks and brackets from plain text. Lines and columns
// count from 0, columns in bytes.

/// A text in quotation marks.
struct QuotedText
{
    std::size_t line;
    std::size_t column;
    char mark;
    bool isClosed = false;
    std::size_t lastLine = 0; ///< The line with the closing mark.
    bool endsEntry = false;   ///< The closing mark is followed by the end of a value or key.
};

struct OpenBracket
{
    std::size_t line;
    std::size_t column;
    char character;
};

/// A comment from its "#" to the end of its line, or a key that is not quoted.
struct YamlWord
{
    std::size_t line;
    std::string text;
};

struct YamlTokens
{
    std::vector<YamlWord> words;           ///< In the order of the text.
    std::vector<QuotedText> quotes;        ///< In the order of the text.
    std::vector<OpenBracket> open;         ///< Those not closed, the outermost first.
    std::optional<OpenBracket> mismatched; ///< The first one that another bracket closes.
};

/// Returns the lines of `source`, without their ends.
std::vector<std::string> linesOf(const std::string& source);

/// Reads the lines up to number `last`; quoted texts that begin there are followed to their end.
YamlTokens tokensUpTo(const std::vector<std::string>& lines, std::size_t last);

} // namespace mxauthor
