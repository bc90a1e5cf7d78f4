#pragma once

#include "CsvTable.h"
#include "TranslatedModule.h"
#include <mxmodule/Finding.h>

#include <string>
#include <vector>

namespace mxmodule {

/// A parameter image read from a CSV table.
struct TableImage
{
    std::vector<char> image;    ///< The raw parameter image.
    bool hasIdentity = false;   ///< Whether the table states its module type.
    std::vector<Finding> notes; ///< Missing parameters.
};

/// Reads the raw parameter image of `module` from a CSV table: the output of `mxtool config
/// --format csv`, or Modbus registers with the columns "register" or "address", and "value".
/// Parameters that are not in the table keep the module's defaults. Throws a `Failure` naming
/// `file` and the line.
TableImage imageOfTable(const CsvTable& table, Fieldbus fieldbus, const TranslatedModule& module,
                        const std::string& file);

} // namespace mxmodule
