#pragma once

#include "mxauthor/TextForm.h"

#include <optional>
#include <string>

namespace mxauthor {

/// Returns whether `byte` is a later byte of a character, not its first.
bool continuesCharacter(char byte);

/// Returns where `text`, which people wrote, is not UTF-8, and which byte is there; nothing where
/// all of it is.
std::optional<SourceError> findNonUtf8(const std::string& text);

/// Returns `text` in UTF-8: bytes that are none are read as Windows-1252, one by one.
std::string repairedUtf8(const std::string& text);

} // namespace mxauthor
