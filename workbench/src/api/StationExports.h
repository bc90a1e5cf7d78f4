#pragma once

#include "api/ExportedFile.h"

#include <mxstation/Declarations.h>
#include <mxstation/Plan.h>

#include <cstddef>
#include <string>
#include <vector>

namespace workbench {

/// A station to be exported.
struct PlannedStation
{
    mxstation::Plan plan;
    mxstation::DeclarationOptions declarations; ///< For Structured Text and PLCopen XML.
    mxmodule::CsvStyle csv;                     ///< For CSV.
    std::size_t module = 0;                     ///< Position of a module, from 1; 0: none.
};

/// Returns the forms of a station, in the order of a menu.
std::vector<ExportFormat> stationExportFormats();

/// Returns `station` in the form called `format`, byte for byte as mxtool writes it; its file is
/// called after `name`. Throws a `CallFailure` for an unknown form or module, a
/// `mxmodule::Failure` when the plan has errors or no Modbus form.
Response stationExport(const PlannedStation& station, const std::string& format,
                       const std::string& name);

} // namespace workbench
