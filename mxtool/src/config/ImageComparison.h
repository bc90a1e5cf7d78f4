#pragma once

#include "config/Configuration.h"

#include <string>
#include <vector>

namespace mxtool {

/// A comparison of the wanted configuration with the one read from a module.
struct ImageComparison
{
    Configuration wanted;
    Configuration read;
    std::vector<ParameterPlace> deviations; ///< The places whose bits differ, in order.
    std::vector<std::size_t>
        strayBytes; ///< Bytes of the raw image that differ in bits of no parameter.

    bool isSame() const { return deviations.empty() && strayBytes.empty(); }
};

/// Compares two configurations of the same module on the same fieldbus.
ImageComparison compared(Configuration wanted, Configuration read);

/// Returns a warning about differing bits of no parameter. `place` is the origin of `read`.
std::vector<Diagnostic> notesOf(const ImageComparison& comparison, const std::string& place);

} // namespace mxtool
