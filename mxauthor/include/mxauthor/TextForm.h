#pragma once

#include "mxauthor/MxFile.h"
#include "mxauthor/NamedFile.h"

#include <filesystem>
#include <memory>
#include <string>

namespace mxauthor {

/// An error in the text form of an mx file.
struct SourceError
{
    std::size_t line = 1;      ///< From 1.
    std::size_t column = 1;    ///< From 1, in characters.
    std::string text;          ///< What is wrong, what was found, what is accepted.
    std::size_t lineStart = 0; ///< Where the line starts in the text, in bytes.
};

/// Which repetition of a repeated line something comes from.
struct Repetition
{
    std::uint32_t number = 0; ///< From 1.
    std::uint32_t count = 0;  ///< Of the line; 0: the line is not repeated.
};

struct TextOrigins;

/// The result of building a text form. `file` is valid only without errors.
struct [[nodiscard]] BuildResult
{
    MxFile file;
    std::vector<SourceError> errors;              ///< In the order of the text, causes first.
    std::shared_ptr<const TextOrigins> origins;   ///< For `SourceMap`; null when there are errors.
    std::vector<std::filesystem::path> filesRead; ///< Named in the text: drawings, raw bytes.
};

/// Builds the mx file that the YAML text `source` describes. Identifiers, lengths, the content
/// length, the data sizes and the parameter block are computed where they are not stated; the same
/// text always gives the same bytes. Files named in it are looked for in `directory` and read by
/// `read`.
BuildResult buildFromText(const std::string& source, const std::filesystem::path& directory,
                          const FileReader& read = readNamedFile);

/// Returns the YAML text of `file`, which `buildFromText` turns into the same bytes. Content
/// without a form of its own is kept as raw bytes.
std::string dumpText(const MxFile& file);

/// Returns whether `text` has the keys of the text form at its outermost level. It may have errors.
bool isTextForm(const std::string& text);

/// Returns whether a key at the outermost level of `text` is one of the text form, or looks like a
/// misspelt one.
bool hasKeyOfTextForm(const std::string& text);

/// Returns the words before a colon at the outermost level of the YAML or JSON text `text`, empty
/// ones included; the rest may have errors.
std::vector<std::string> outermostKeys(const std::string& text);

/// A line of a text without control characters, shortened if long, and a caret below a column.
struct SourceExcerpt
{
    std::string line;
    std::string caret; ///< Blanks and "^".
};

/// Returns the line of `error` in `source`.
SourceExcerpt sourceExcerpt(const std::string& source, const SourceError& error);

} // namespace mxauthor
