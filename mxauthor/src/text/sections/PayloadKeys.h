#pragma once

#include "text/BuildContext.h"

namespace mxauthor {

/// Returns the bytes that a mapping gives by one of the keys "hex", "base64", "file" and "svg".
Bytes readPayloadKeys(const Section& section, BuildContext& context);

/// Returns the bytes of the file that `node` names: of FILE.svg the text compressed, of FILE.hex
/// the bytes that it spells, of others the bytes as they are.
Bytes readPayloadFile(const YAML::Node& node, BuildContext& context);

} // namespace mxauthor
