#pragma once

#include "api/AnswerText.h"

#include <mxmodule/Module.h>

#include <string>
#include <vector>

namespace workbench {

/// Returns the JSON of a module whose raw parameter image is `image`: `raw` and `modbus` are what
/// `mxtool config` prints, `noRegisters` says why there is no Modbus form (then `modbus` is null),
/// `callNames` has for each parameter, "#ID", the shortest name that sets it.
std::string configuredText(const mxmodule::Module& module, const std::vector<char>& image);

/// Returns the bits of `channel` in its image, counted from byte 0: `firstBit`, `bits`.
text::Json bitsJson(const mxmodule::MappedChannel& channel);

/// Adds what `module` is to `answer`: `device` and `channels` are what `mxtool show` and `mxtool
/// channels` print, `picture` is that of the product as a data URL or null, `processImage` is a
/// drawing (SVG), `sizes` are bytes, `callTexts` has for each parameter, "#ID", what selects its
/// options, `places` are those of the channels of `channels`.
void addDescription(AnswerText& answer, const mxmodule::Module& module);

} // namespace workbench
