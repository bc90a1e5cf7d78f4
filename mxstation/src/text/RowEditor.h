#pragma once

#include "text/EditedText.h"

#include <cstddef>
#include <string>

namespace mxstation {

/// Adds the entry `item` before the entry `before`, or after the last one.
void addToRow(EditedText& text, std::size_t before, const YamlMember& item);

/// Moves the entry `index` before what is entry `before` now, or after the last one.
void moveInRow(EditedText& text, std::size_t index, std::size_t before);

/// Removes the entry `index`.
void removeFromRow(EditedText& text, std::size_t index);

} // namespace mxstation
