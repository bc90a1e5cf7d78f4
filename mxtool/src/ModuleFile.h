#pragma once

#include <mxauthor/CheckText.h>

#include <memory>
#include <string>
#include <vector>

namespace mxtool {

/// The mx file that a verb is given: as it is, or built in memory from its text form. Every verb
/// that reads an mx file reads it through this class.
class ModuleFile
{
public:
    /// Loads the file at `path`, standard input for "-". Throws a `Failure` naming it when it
    /// cannot be read, is empty or a database, or a text with errors, which are reported then.
    explicit ModuleFile(const std::string& path);

    /// The mx file called `file`, which has these bytes, whatever they are.
    ModuleFile(std::string file, std::vector<char> bytes);

    std::string name() const; ///< For diagnostics.

    /// The bytes of the mx file, nothing behind them.
    const std::vector<char>& bytes() const { return content; }

    /// The same with the one byte 0xFF behind them that every loaded mx file has.
    std::vector<char> loadedBytes() const;

    bool isText() const { return built != nullptr; }

    /// Returns how diagnostics show the place of the byte at `offset`: "FILE:0x0001a4", of a text
    /// "FILE:LINE:COLUMN".
    std::string placeOf(std::size_t offset) const;

    /// Returns what the checker finds in what was built from a text, told there.
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
