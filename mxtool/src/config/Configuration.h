#pragma once

#include "Diagnostic.h"
#include "TranslatedModule.h"
#include "config/ParameterPlace.h"

#include <string>
#include <vector>

namespace mxtool {

/// A configured module: its parameter image and the values in it.
struct Configuration
{
    DeviceReport defaults; ///< The module as its mx file describes it.
    DeviceReport device;   ///< With the values of the image.
    devices::parser::FieldbusType fieldbus;
    std::vector<char> image;            ///< The raw parameter image.
    std::vector<char> bytes;            ///< The bytes that the fieldbus master writes.
    std::vector<ParameterPlace> places; ///< The parameters in `bytes`, ordered by place.
    bool changedOnly = false;           ///< Outputs list only values that differ from the defaults.

    /// Whether the parameter at `position` differs from the default.
    bool isChanged(std::size_t position) const;

    /// Whether outputs list the parameter at `position`.
    bool isShown(std::size_t position) const { return !changedOnly || isChanged(position); }
};

/// Reads the raw parameter image `image` of `module`. Throws a `Failure` when its size is not that
/// of the module's image, or the fieldbus cannot carry it.
Configuration configurationOf(TranslatedModule& module, const std::vector<char>& image,
                              devices::parser::FieldbusType fieldbus);

/// Returns notes on `configuration`: differences from the defaults in bits of no parameter, and
/// parameters that are not in the buffer. `place` is the origin of the image.
std::vector<Diagnostic> notesOf(const Configuration& configuration, const std::string& place);

/// A comparison of the wanted configuration with the one read from a module.
struct ImageComparison
{
    Configuration wanted;
    Configuration read;
    std::vector<ParameterPlace> deviations; ///< The places whose bits differ, in order.
    std::vector<std::size_t> strayBytes;    ///< Raw bytes that differ in bits of no parameter.

    bool isSame() const { return deviations.empty() && strayBytes.empty(); }
};

/// Compares two configurations of the same module on the same fieldbus.
ImageComparison compared(Configuration wanted, Configuration read);

/// Returns a warning about differing bits of no parameter. `place` is the origin of `read`.
std::vector<Diagnostic> notesOf(const ImageComparison& comparison, const std::string& place);

} // namespace mxtool
