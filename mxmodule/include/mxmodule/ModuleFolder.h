#pragma once

#include "mxmodule/ModuleFile.h"
#include "mxmodule/Observer.h"

#include <memory>
#include <string>
#include <vector>

namespace mxmodule {

/// A folder from which alone mx files come, and the files that their text forms name: for names
/// that someone else states, such as the user of a page.
///
/// A name is a path relative to the folder, such as "modules/MX0304.bin"; parts such as ".." are
/// resolved in the name itself, without regard to links. A name is refused when it is absolute,
/// leads out of the folder, or is that of a link that leads out, of a directory, a pipe or a
/// device, or of a file of more than 16 MiB. The file that was opened is judged, not its name:
/// links that change meanwhile lead nowhere else. Of what is outside the folder nothing is read or
/// told: a name that leads there gives the same message whether there is a file or not.
///
/// Files are remembered as they were built, until one of the files read for them changes; the least
/// recently used are forgotten when they are too many. A copy shares the folder and its memory. All
/// operations may be called by many threads at once.
class MXMODULE_API ModuleFolder
{
public:
    /// Of the directory at `path`. Throws a `Failure` when there is none.
    explicit ModuleFolder(const std::string& path);

    const std::string& path() const; ///< As given.

    /// Returns the mx file, or the text form, called `name`; its own name is `name` without parts
    /// such as "..". `observer` is told of the files that it was built from, also when it is
    /// remembered. Throws a `Failure` when `name` is refused, and as `ModuleFile::read` does.
    ModuleFile file(const std::string& name, Observer* observer = nullptr) const;

    /// Returns `content`, as from a catalogue, as an mx file called `name`; if `name` is not in
    /// angle brackets, it is that of a file in the folder. Files that a text form names come from
    /// the folder alone. Nothing is remembered. Throws a `Failure` as `file` does.
    ModuleFile fileOf(const std::string& name, std::vector<char> content,
                      Observer* observer = nullptr) const;

    /// Returns whether `name` is that of a file which the folder gives to be read, of any kind.
    bool contains(const std::string& name) const;

    /// Returns the name in this folder of the directory or file at `path`, which is absolute or
    /// relative to the current directory; "." for the folder itself. Throws a `Failure` if it is
    /// not in the folder or does not exist.
    std::string nameOf(const std::string& path) const;

    /// Returns the names of the mx files and text forms of the folder and the directories below it,
    /// sorted. Only files called *.bin, *.yaml or *.yml; no hidden ones, none in directories that
    /// are links, and none that cannot be stated in a text. At most 2000 names, of the first 20000
    /// entries, in at most 8 directories, one in the other, the folder included.
    std::vector<std::string> names() const;

private:
    struct Content;
    std::shared_ptr<Content> content;
};

} // namespace mxmodule
