#pragma once

#include "mxmodule/Catalogue.h"
#include "mxmodule/Finding.h"
#include "mxmodule/Observer.h"

#include <cstddef>
#include <string>
#include <vector>

namespace mxmodule {

/// The entries of a directory with names of mx files, MX*.bin.
struct MxDirectory
{
    std::string path;                    ///< As the caller named it.
    std::vector<std::string> files = {}; ///< Paths of files and of links to files, unordered.
    std::vector<Finding> leftOut = {};   ///< An error for each entry that is no file: a pipe.
};

/// Lists the directory at `path`, without those in it. `observer` is told each file: it is going to
/// be read. Throws a `Failure` if the directory cannot be read or has no such file.
MXMODULE_API MxDirectory listMxDirectory(const std::string& path, Observer* observer = nullptr);

/// Returns `path` itself or, for a directory, the paths of its files MX*.bin ordered by name.
/// Throws a `Failure` for a directory that cannot be read, has no such file, or has a pipe or
/// device of such a name, which may never end.
MXMODULE_API std::vector<std::string> mxFilesOf(const std::string& path);

/// How a catalogue is populated.
struct PopulateOptions
{
    /// Remove the modules of the family kv38 that no file of the directory states. Nothing is
    /// removed if an entry was left out or a file states no module: it may be any of them.
    bool replace = false;
};

/// What populating a catalogue has changed.
struct Population
{
    std::size_t inserted = 0; ///< New modules.
    std::size_t replaced = 0; ///< Files of modules present before, or inserted from another file.
    std::size_t failed = 0;   ///< Files that are not stored, and entries that were left out.
    std::vector<CatalogueEntry> removed = {}; ///< By `PopulateOptions::replace`.
    std::vector<Finding> findings = {};       ///< Failed files, modules with several files, and why
                                        ///< nothing is removed; as `Observer::notice` got them.
};

/// Translates the files of `directory` and stores their modules, with their files and content, in
/// `catalogue`: in one transaction, which is committed when it returns. Until then others read the
/// previous state.
///
/// A file that cannot be translated, or whose record the database rejects, is a finding, and the
/// others are stored. Throws a `Failure`, and the catalogue is unchanged, when a file cannot be
/// read or the database fails. `observer` is told the findings when they occur, the parser's log
/// lines, and the progress in files.
MXMODULE_API Population populate(const MxDirectory& directory, Catalogue& catalogue,
                                 const PopulateOptions& options = {}, Observer* observer = nullptr);

} // namespace mxmodule
