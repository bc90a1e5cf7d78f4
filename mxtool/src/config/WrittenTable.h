#pragma once

#include "CsvTable.h"
#include "Diagnostic.h"
#include "TranslatedModule.h"

#include <string>
#include <vector>

namespace mxtool {

/// A parameter image that a CSV table gives.
struct TableImage
{
    std::vector<char> image;       ///< The raw parameter image.
    bool hasIdentity = false;      ///< The table says of which module type it is.
    std::vector<Diagnostic> notes; ///< What the table does not say.
};

/// Returns the raw parameter image of `module` that a CSV table gives: that of `mxtool config
/// --format csv`, or one of Modbus registers with the columns "register" or "address" and "value".
/// What the table leaves out is as in the module's defaults. Throws a `Failure` naming `file` and
/// the line.
TableImage imageOfTable(const CsvTable& table, devices::parser::FieldbusType fieldbus,
                        TranslatedModule& module, const std::string& file);

} // namespace mxtool
