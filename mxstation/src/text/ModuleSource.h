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

    /// The same for the text of `station`, whose mx files are not read again.
    explicit ModuleSource(const Station& station);

    /// Returns a source that reads no file: every reference has no module, which is no error.
    static ModuleSource withoutFiles();

    /// Returns the mx file that `reference` at `place` names; an error, and nothing, if there is
    /// none.
    std::optional<mxmodule::ModuleFile> find(const std::string& reference, const SourcePlace& place,
                                             StationErrors& errors);

private:
    struct Found
    {
        std::optional<mxmodule::ModuleFile> file;
        mxmodule::Finding finding; // why there is no file
    };

    Found read(const std::string& reference);
    std::filesystem::path pathOf(const std::string& reference) const;
    Found readFile(const std::string& reference) const;
    Found readRecord(const std::string& moduleId);
    mxmodule::Catalogue& openedCatalogue();

    std::string directory;
    StationOptions options;
    mxmodule::Catalogue* catalogue;
    std::optional<mxmodule::Catalogue> opened;
    std::map<std::string, Found> known;
    bool hasFiles = true;
};

} // namespace mxstation
