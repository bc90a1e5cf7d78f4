#pragma once

#include "Csv.h"
#include "DeviceJson.h"
#include "channels/ProcessImage.h"

namespace mxtool {

/// Returns the channels as a table for people.
std::string channelMapText(const ChannelMap& map);

/// Returns the channels as CSV with a line of headings.
std::string channelMapCsv(const ChannelMap& map, const CsvStyle& style = {});

/// Returns the channels, those without an address, and the free and overlapping bits of both
/// images, schema "mxtool.channels" version 1. `image` is made from `map`.
Json channelMapJson(const ChannelMap& map, const ProcessImage& image);

} // namespace mxtool
