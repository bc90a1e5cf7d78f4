#pragma once

#include "mxstation/Plan.h"

#include <mxmodule/CsvStyle.h>

#include <string>

// The channels of a station as tables and data. Each result is the same, byte for byte, for the
// same plan. Texts are UTF-8, whatever bytes the names contain. For a plan that is not `ok` each
// function throws a `mxmodule::Failure` with its errors.

namespace mxstation {

/// Returns the channels as a table for people. Bits count from the lowest of the byte.
MXSTATION_API std::string channelsText(const Plan& plan);

/// Returns the channels as CSV with a line of headings.
///
/// A register is two bytes of the image, the first one at its first byte, and its first byte the
/// high one. Of a channel outside the image there is none. The last three columns state the version
/// and the SHA-256 of the station and of the mx file.
MXSTATION_API std::string channelsCsv(const Plan& plan, const mxmodule::CsvStyle& style = {});

/// Returns all channels as JSON, schema "mxtool.station-channels" version 1.
MXSTATION_API std::string channelsJson(const Plan& plan);

} // namespace mxstation
