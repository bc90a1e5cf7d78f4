#pragma once

#include <string>

namespace mxtool {

/// What the content of a file is, as far as losing it would cost work.
enum class FileKind
{
    Other,
    MxFile,
    TextForm, ///< Of an mx file, correct or not.
    Station,
    Database ///< An SQLite file.
};

/// Returns what `content` is, judged by nothing but its bytes; a damaged one counts too.
FileKind kindOf(const std::string& content);

/// Returns what the file at `path` is; other than all of them where there is no file to be read.
FileKind kindOfFile(const std::string& path);

/// Returns how a text calls a kind: "an mx file"; "something else" for the first.
const char* nameOf(FileKind kind);

} // namespace mxtool
