#pragma once

#include "AcceptedValue.h"
#include "Diagnostic.h"
#include "TranslatedModule.h"
#include "config/ValuesFile.h"

#include <vector>

namespace mxtool {

/// The result of writing values into a parameter image.
struct Composition
{
    std::vector<char> image;          ///< The raw parameter image; empty after an error.
    std::vector<Diagnostic> findings; ///< The first 50 rejected values and every side effect.
    ExitCode code = ExitCode::Done;   ///< Of the first rejected value.
};

/// Writes the values of `assignments` into the parameter image of `base`, a translation of
/// `module`, through the parsing library. Checks all of them before it writes the first.
Composition compose(TranslatedModule& module, TranslatedModule::Device& base,
                    const std::vector<Assignment>& assignments, ValueCheck check);

} // namespace mxtool
