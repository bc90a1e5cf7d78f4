#pragma once

#include "session/OpenedStation.h"

#include <mxmodule/ModuleFolder.h>
#include <mxstation/Station.h>

#include <chrono>
#include <memory>
#include <string>
#include <vector>

namespace workbench {

/// A module of the folder, as in a list.
struct ListedModule
{
    std::string reference; ///< The name that a station may use.
    std::string label;     ///< As on the product; empty: not known.
};

/// What calls work with: the opened file, the folder that files come from, and the catalogue. For
/// several threads; each call opens the catalogue itself.
class Workplace
{
public:
    /// `file` is a station, an mx file or its text form, in `folder`; empty: none. Throws a
    /// `mxmodule::Failure` when one of them cannot be read, or the file is something else.
    Workplace(const std::string& file, const std::string& folder, const std::string& catalogueUrl);

    OpenedStation* station() const { return openedStation.get(); } ///< Or null.
    const std::string& moduleFile() const { return openedModule; } ///< In the folder; may be empty.
    const std::string& catalogueUrl() const { return url; }

    /// Returns the mx file that `reference` names as a station does; empty: the opened one. Throws
    /// a `mxmodule::Failure`.
    mxmodule::ModuleFile module(const std::string& reference) const;

    /// Returns the station in `text`, with mx files of the folder and the catalogue.
    mxstation::Station stationOf(const std::string& text) const;

    /// Returns the name of the station's text in places of findings.
    std::string stationName() const;

    /// Returns the mx files and text forms of the folder. After `time` no more of them are read:
    /// the others have no label, those of files with errors neither.
    std::vector<ListedModule>
    moduleFiles(std::chrono::milliseconds time = std::chrono::milliseconds(300)) const;

private:
    std::string labelOf(const std::string& name) const;
    mxstation::StationOptions stationOptions() const;

    std::string url;
    std::string folderPath;
    mxmodule::ModuleFolder modules;
    std::unique_ptr<OpenedStation> openedStation; // null: none
    std::string openedModule;
};

} // namespace workbench
