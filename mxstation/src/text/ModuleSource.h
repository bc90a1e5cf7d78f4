#pragma once

#include "text/StationErrors.h"

#include <filesystem>
#include <map>
#include <optional>
#include <string>

namespace mxstation {

/// Gives the mx files that a station names, each read once.
class ModuleSource
{
public:
    /// Paths count from the directory of `station`.
    ModuleSource(const std::string& station, const StationOptions& howRead,
                 mxmodule::Catalogue* openCatalogue);

    /// The same for the text of `station`, of which each mx file is known: none is read.
    explicit ModuleSource(const Station& station);

    /// Returns a source that reads no file: every reference has no module, which is no error.
    static ModuleSource withoutFiles();

    /// Returns the mx file that `reference` at `place` names; an error, and nothing, if there is
    /// none.
    std::optional<mxmodule::ModuleFile> find(const std::string& reference, const SourcePlace& place,
                                             StationErrors& errors);

    /// Returns the mx file that `reference` names. Throws a `mxmodule::Failure` if there is none.
    mxmodule::ModuleFile require(const std::string& reference);

private:
    enum class Gives
    {
        Any,   // reads what is not known yet
        Known, // reads nothing
        None
    };

    struct Found
    {
        std::optional<mxmodule::ModuleFile> file;
        mxmodule::Finding finding; // why there is no file
    };

    Found read(const std::string& reference);
    std::filesystem::path pathOf(const std::string& reference) const;
    Found readFile(const std::string& reference) const;
    Found readFromFolder(const std::string& reference) const;
    std::string directoryInFolder() const;
    Found readRecord(const std::string& moduleId);
    mxmodule::Catalogue& openedCatalogue();

    bool isFile; // the station: it has a directory
    std::string directory;
    StationOptions options;
    mxmodule::Catalogue* catalogue;
    std::optional<mxmodule::Catalogue> opened;
    std::map<std::string, Found> known;
    Gives gives = Gives::Any;
};

} // namespace mxstation
