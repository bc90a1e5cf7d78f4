#pragma once

#include <mxmodule/CsvStyle.h>

#include <mxauthor/MxFile.h>

#include <string>

namespace mxtool {

/// Returns a table of the groups in `read`, with the places of their payloads.
std::string groupsText(const mxauthor::ReadGroups& read);

/// Returns the table as CSV.
std::string groupsCsv(const mxauthor::ReadGroups& read, const mxmodule::CsvStyle& style);

/// Returns the table as JSON, schema "mxtool.groups" version 1. `file` is the name of the file,
/// `size` its size in bytes.
std::string groupsJson(const mxauthor::ReadGroups& read, const std::string& file, std::size_t size);

} // namespace mxtool
