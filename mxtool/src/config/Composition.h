#pragma once

#include "AcceptedValue.h"
#include "Assignment.h"
#include "Diagnostic.h"
#include "TranslatedModule.h"

#include <vector>

namespace mxtool {

/// What came of writing values into a parameter image.
struct Composition
{
    std::vector<char> image;          ///< The raw parameter image; empty after an error.
    std::vector<Diagnostic> findings; ///< The first 50 refused values, every side effect.
    ExitCode code = ExitCode::Done;   ///< Of the first refused value.
};

/// Writes the values that `assignments` ask for into the parameter image of `base`, a translation
/// of `module`, through the parsing library. Every assignment is looked at before any is written.
Composition compose(TranslatedModule& module, TranslatedModule::Device& base,
                    const std::vector<Assignment>& assignments, ValueCheck check);

} // namespace mxtool
