#pragma once

#include "mxstation/Plan.h"

#include <mxmodule/Values.h>

#include <string>
#include <vector>

namespace mxstation {

// The parameter images of a station as a master writes them: as the modules hold them, or for
// Modbus as registers, each with its high byte first. Every operation throws a `mxmodule::Failure`
// when the plan has errors, and for Modbus with a finding for each module whose image has no Modbus
// form.

/// Returns the parameter images of the modules of `plan` as a table for people, and after it the
/// parameters that differ from the defaults.
MXSTATION_API std::string parametersText(const Plan& plan, mxmodule::Fieldbus fieldbus);

/// Returns the same as JSON, schema "mxtool.station-config" version 1.
MXSTATION_API std::string parametersJson(const Plan& plan, mxmodule::Fieldbus fieldbus);

/// A file of parameters.
struct ParameterFile
{
    std::string name;        ///< Without a directory; letters, digits, "-", "_", "%" and ".".
    std::vector<char> bytes; ///< Its content.
};

/// Returns a file for each module with the bytes that a master writes, in the order of the row, and
/// last "station.json", the JSON of `parametersJson` with the names of the files.
///
/// A file is named POSITION-NAME.bin. All positions have as many digits as the largest; bytes of
/// the name other than letters, digits, "-" and "_" are %xx; what is longer than 100 bytes is cut.
/// A module without parameters has an empty file.
MXSTATION_API std::vector<ParameterFile> parameterFiles(const Plan& plan,
                                                        mxmodule::Fieldbus fieldbus);

} // namespace mxstation
