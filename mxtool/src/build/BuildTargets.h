#pragma once

#include <string>
#include <vector>

namespace mxtool {

/// Returns whether `output` is a directory, or names one that does not exist yet: it ends in "/".
bool namesDirectory(const std::string& output);

/// Returns the path of the mx file of each text of `files`: `output` itself or, in a directory, a
/// file with the name of the text. Throws a `Failure` when two texts would be written to one file.
std::vector<std::string> buildTargets(const std::vector<std::string>& files,
                                      const std::string& output);

} // namespace mxtool
