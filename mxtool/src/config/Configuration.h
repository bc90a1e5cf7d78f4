#pragma once

#include "Diagnostic.h"
#include "TranslatedModule.h"
#include "config/ParameterPlace.h"

#include <vector>

namespace mxtool {

/// A configured module: its parameter image and what stands in it.
struct Configuration
{
    DeviceReport defaults; ///< The module as its mx file describes it.
    DeviceReport device;   ///< With the values of the image.
    devices::parser::FieldbusType fieldbus;
    std::vector<char> image;            ///< The raw parameter image.
    std::vector<char> bytes;            ///< What the fieldbus master writes.
    std::vector<ParameterPlace> places; ///< The parameters in `bytes`, in their order there.
    bool changedOnly = false;           ///< Outputs list what differs from the defaults alone.

    /// Whether the parameter at `position` differs from the default.
    bool isChanged(std::size_t position) const;

    /// Whether outputs list the parameter at `position`.
    bool isShown(std::size_t position) const { return !changedOnly || isChanged(position); }
};

/// Reads the raw parameter image `image` of `module`. Throws a `Failure` when it has another size
/// than the module's, or the fieldbus cannot carry it.
Configuration configurationOf(TranslatedModule& module, const std::vector<char>& image,
                              devices::parser::FieldbusType fieldbus);

/// Returns what a person should know of `configuration`: differences from the defaults in bits of
/// no parameter, parameters that the buffer does not hold. `place` is where the image comes from.
std::vector<Diagnostic> notesOf(const Configuration& configuration, const std::string& place);

} // namespace mxtool
