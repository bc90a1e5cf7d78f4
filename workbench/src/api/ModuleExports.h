#pragma once

#include "api/ExportedFile.h"

#include <mxmodule/Module.h>

#include <string>
#include <vector>

namespace workbench {

/// A module to be exported.
struct ConfiguredModule
{
    mxmodule::ModuleFile file;
    mxmodule::Module module;
    std::vector<char> image;     ///< Its raw parameter image.
    mxmodule::CsvStyle csv = {}; ///< For CSV.
};

/// Returns the forms of a module, in the order of a menu.
std::vector<ExportFormat> moduleExportFormats();

/// Returns `configured` in the form called `format`, byte for byte as mxtool writes it. Throws a
/// `CallFailure` for an unknown form, a `mxmodule::Failure` if there is no Modbus form.
Response moduleExport(const ConfiguredModule& configured, const std::string& format);

} // namespace workbench
