#pragma once

#include <mxauthor/HandWriting.h>

#include <optional>
#include <string>

namespace mxtool {

/// Returns the first comment or repetition in the text `present` that is lost when `output`, a text
/// form or a file of values, replaces it; nothing when none is lost, and for an output of another
/// kind. Comments that mxtool wrote itself do not count.
[[nodiscard]] std::optional<mxauthor::HandWriting> lostHandWriting(const std::string& present,
                                                                   const std::string& output);

/// Returns how a text calls it: the comment "# for pump 2", the key "repeat".
std::string shownHandWriting(const mxauthor::HandWriting& writing);

} // namespace mxtool
