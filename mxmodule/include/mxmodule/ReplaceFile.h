#pragma once

#include "mxmodule/Finding.h"

#include <string>

namespace mxmodule {

/// Writes the file at `path` so that a reader sees the content before or `content`, never a part.
///
/// A temporary file in the same directory, "mxtool.part-" and a random number, becomes the file; it
/// has the permissions of the file before, and is on the disk first if there was one. A symbolic
/// link is kept, the file that it leads to is replaced, wherever that is: whoever takes `path` from
/// someone else resolves it first. Only regular files can be replaced: a device or pipe at `path`
/// would become one. Throws a `Failure` as `cannotWrite` returns it, and leaves what was there.
MXMODULE_API void replaceFile(const std::string& path, const std::string& content);

/// Throws a `Failure` when `replaceFile` cannot write the file at `path`. Leaves no file.
MXMODULE_API void requireReplaceable(const std::string& path);

/// Returns the failure of origin `Output` to write to `path`, with the text of the system for
/// `systemError` (`errno`; 0: unknown) and a hint.
MXMODULE_API Failure cannotWrite(const std::string& path, int systemError);

/// Returns `path` with its last part, as far as it is a symbolic link, replaced by what it leads
/// to, which need not exist.
MXMODULE_API std::string followLinks(const std::string& path);

} // namespace mxmodule
