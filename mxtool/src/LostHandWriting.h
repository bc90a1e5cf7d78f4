#pragma once

#include <mxauthor/HandWriting.h>

#include <optional>
#include <string>

namespace mxtool {

/// Returns the first comment or repetition in the text `present` that would be lost if `output`, a
/// text form or a file of values, replaced it. Returns nothing if none is lost or `output` is of
/// another kind. Comments written by mxtool do not count.
[[nodiscard]] std::optional<mxauthor::HandWriting> lostHandWriting(const std::string& present,
                                                                   const std::string& output);

/// Returns it as messages show it: the comment "# for pump 2", the key "repeat".
std::string shownHandWriting(const mxauthor::HandWriting& writing);

} // namespace mxtool
