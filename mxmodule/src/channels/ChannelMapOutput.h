#pragma once

#include "DeviceJson.h"
#include "channels/ProcessImage.h"
#include <mxmodule/CsvStyle.h>
#include <text/Csv.h>

namespace mxmodule {

/// Returns the channels as a table for people.
std::string channelMapText(const ChannelTable& map);

/// Returns the channels as CSV with a line of headings.
std::string channelMapCsv(const ChannelTable& map, const CsvStyle& style = {});

/// Returns the channels, those without an address, and the free and overlapping bits of both
/// images, schema "mxtool.channels" version 1. `image` is made from `map`.
text::Json channelMapJson(const ChannelTable& map, const ProcessImage& image);

/// Returns the channels as IEC 61131-3 declarations of global variables, in their order.
///
/// Addresses count bytes. A bit field becomes one BOOL per bit, because a variable of whole bytes
/// would include, and write, bits of its neighbours. A bit field that fills whole bytes becomes a
/// BYTE or an array of BYTE; any other of more than 32 bits becomes a comment.
std::string iecDeclarations(const ChannelTable& map);

/// Returns the picture as text of 80 columns, UTF-8: a line per byte, more where channels overlap.
/// `coloured`: with terminal colour codes.
std::string processImageMap(const ProcessImage& image, bool coloured);

/// Returns the picture as a self-contained SVG document, always the same for the same image.
std::string processImageSvg(const ProcessImage& image);

} // namespace mxmodule
