#pragma once

#include "config/Configuration.h"

#include <string>
#include <vector>

namespace mxtool {

/// What was wanted of a module against what was read from it.
struct ImageComparison
{
    Configuration wanted;
    Configuration read;
    std::vector<ParameterPlace> deviations; ///< Places whose bits differ, in their order.
    std::vector<std::size_t> strayBytes; ///< Of the raw image, with differing bits of no parameter.

    bool isSame() const { return deviations.empty() && strayBytes.empty(); }
};

/// Compares two configurations of the same module on the same fieldbus.
ImageComparison compared(Configuration wanted, Configuration read);

/// Returns a warning for the bits of no parameter that differ. `place` is where `read` comes from.
std::vector<Diagnostic> notesOf(const ImageComparison& comparison, const std::string& place);

} // namespace mxtool
