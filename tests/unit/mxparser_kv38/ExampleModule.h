#pragma once

#include "MxBuffer.h"

#include <cstdint>
#include <utility>
#include <vector>

using Groups = std::vector<std::pair<std::uint16_t, testkit::Bytes>>;

/// A module with every group that the translation reads, but no header group: 4 parameter bytes,
/// three parameters (plain, option list, converted), five channels (the third is dropped).
Groups exampleGroups();

/// The groups concatenated.
testkit::MxBuffer bufferOf(const Groups& groups);
