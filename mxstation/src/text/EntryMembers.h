#pragma once

#include "text/YamlEdit.h"

#include <mxstation/StationEdit.h>

namespace mxstation {

/// Returns a new entry; in double quotes if `isQuoted`, as in JSON.
YamlMember moduleMember(const AddModule& added, bool isQuoted);

/// Returns a new reserved place.
YamlMember reserveMember(const AddReserve& added, bool isQuoted);

/// Returns whether an entry has a reserved place of this size.
bool isReserve(const Entry& entry, std::uint32_t input, std::uint32_t output);

} // namespace mxstation
