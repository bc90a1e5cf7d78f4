#pragma once

#include <string>

namespace mxtool {

/// What the content of a file is, as far as mxtool reads or writes it.
enum class FileKind
{
    Other,
    MxFile,
    TextForm, ///< Of an mx file, correct or not.
    Station,
    Database,      ///< An SQLite file.
    Values,        ///< What `config --format values` writes; one without its first lines is Other.
    Configuration, ///< What `config` writes as JSON or CSV.
    Result         ///< What another verb writes as JSON.
};

/// Returns what `content` is, judged by nothing but its bytes; a damaged one counts too.
FileKind kindOf(const std::string& content);

/// Returns the first bytes of the file at `path`, as many as `kindOf` needs; nothing where it
/// cannot be read.
std::string judgedContent(const std::string& path);

/// Returns what the file at `path` is; other than all of them where there is no file to be read.
FileKind kindOfFile(const std::string& path);

/// Returns how a text calls a kind: "an mx file"; "something else" for the first.
const char* nameOf(FileKind kind);

/// Returns whether losing a file of this kind would cost work: one that a verb can make again does
/// not.
bool costsWork(FileKind kind);

/// Returns the call that takes the file of this kind at `path`; empty when there is none, and for
/// standard input.
std::string callThatTakes(FileKind kind, const std::string& path);

/// Throws a `Failure` when `content`, that of the file at `path`, is of a known kind that is no
/// module: it says what the file is, that `expected` was, and which call takes the file.
void requireModule(const std::string& path, const std::string& content,
                   const std::string& expected);

/// Throws a `Failure` when the text `source` of the file at `path` has no key of the text form, so
/// that each of its lines would be an error.
void requireKeyOfTextForm(const std::string& path, const std::string& source,
                          const std::string& expected);

} // namespace mxtool
