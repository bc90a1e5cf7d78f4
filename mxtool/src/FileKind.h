#pragma once

#include <string>

namespace mxtool {

/// The kinds of files that mxtool reads or writes.
enum class FileKind
{
    Other,
    MxFile,
    TextForm, ///< The text form of an mx file, with or without errors.
    Station,
    Database,      ///< An SQLite file.
    Values,        ///< Written by `config --format values`; without its first lines it is `Other`.
    Configuration, ///< Written by `config` as JSON or CSV.
    Result         ///< Written by another verb as JSON.
};

/// Returns the kind of `content`, recognised by its bytes alone; damaged files are recognised too.
FileKind kindOf(const std::string& content);

/// Returns the first bytes of the file at `path`, as many as `kindOf` needs; empty if it cannot be
/// read.
std::string judgedContent(const std::string& path);

/// Returns the kind of the file at `path`; `Other` if it cannot be read.
FileKind kindOfFile(const std::string& path);

/// Returns the name of a kind in messages: "an mx file"; "something else" for `Other`.
const char* nameOf(FileKind kind);

/// Returns whether a file of this kind may contain a user's work, unlike one that a verb can write
/// again.
bool costsWork(FileKind kind);

/// Returns the hint that names the verb for the file of this kind at `path`; empty if there is
/// none, and for standard input.
std::string callThatTakes(FileKind kind, const std::string& path);

/// Throws a `Failure` when `content`, that of the file at `path`, is of a known kind that is not a
/// module. The message names the kind found and `expected`, the hint the verb for it.
void requireModule(const std::string& path, const std::string& content,
                   const std::string& expected);

/// Throws a `Failure` when `source`, the text of the file at `path`, has no key of the text form.
/// Otherwise each of its lines would be reported as an error.
void requireKeyOfTextForm(const std::string& path, const std::string& source,
                          const std::string& expected);

} // namespace mxtool
