#pragma once

#include <mxauthor/CheckText.h>

#include <memory>
#include <string>
#include <vector>

namespace mxtool {

/// The mx file given to a verb, or built in memory from its text form. Every verb reads mx files
/// through this class.
class ModuleFile
{
public:
    /// Loads the file at `path` ("-": standard input). Throws a `Failure` naming it when it cannot
    /// be read, is empty, is a database, or is a text with errors (after reporting these).
    explicit ModuleFile(const std::string& path);

    /// Takes `bytes` as the mx file `file`, without checking them.
    ModuleFile(std::string file, std::vector<char> bytes);

    std::string name() const; ///< For diagnostics.

    /// The bytes of the mx file, with nothing appended.
    const std::vector<char>& bytes() const { return content; }

    /// The same, followed by the byte 0xFF that `loadFile` appends to every mx file.
    std::vector<char> loadedBytes() const;

    bool isText() const { return built != nullptr; }

    /// Returns the place of the byte at `offset` for diagnostics: "FILE:0x0001a4", for a text form
    /// "FILE:LINE:COLUMN".
    std::string placeOf(std::size_t offset) const;

    /// Returns the findings in the file built from a text form, with their places in the text.
    std::vector<mxauthor::TextFinding> checkText() const;

    /// Returns the text's line of `where` and a caret below its column.
    std::string excerptAt(const mxauthor::SourceError& where) const;

private:
    void build();

    std::string path;
    std::vector<char> content;
    std::string source; // of the text form
    std::unique_ptr<const mxauthor::BuildResult> built;
};

} // namespace mxtool
