#pragma once

#include "mxmodule/MxmoduleApi.h"

#include <string>

namespace mxmodule {

/// The kinds of files around modules.
enum class FileKind
{
    Other,         ///< None of these.
    MxFile,        ///< Binary.
    TextForm,      ///< The text form of an mx file, with or without errors.
    Station,       ///< The description of a station.
    Database,      ///< An SQLite file.
    Values,        ///< Parameter values with comments; without its first lines it is `Other`.
    Configuration, ///< A configuration as JSON or CSV.
    Result         ///< Another result of mxtool as JSON.
};

/// Returns the kind of `content`, recognised by its bytes alone; damaged files are recognised too.
MXMODULE_API FileKind kindOf(const std::string& content);

/// Returns the first bytes of the file at `path`, as many as `kindOf` needs; empty if it cannot be
/// read.
MXMODULE_API std::string judgedContent(const std::string& path);

/// Returns the kind of the file at `path`; `Other` if it cannot be read.
MXMODULE_API FileKind kindOfFile(const std::string& path);

/// Returns the name of a kind in messages: "an mx file"; "something else" for `Other`.
MXMODULE_API const char* nameOf(FileKind kind);

/// Returns whether a file of this kind may contain a user's work, unlike one that can be written
/// again.
MXMODULE_API bool costsWork(FileKind kind);

/// Returns the hint that names the call of mxtool for the file of this kind at `path`; empty if
/// there is none, and for a name in angle brackets, which is not a path.
MXMODULE_API std::string callThatTakes(FileKind kind, const std::string& path);

} // namespace mxmodule
