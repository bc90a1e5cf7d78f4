#pragma once

#include "TranslatedModule.h"
#include "configuration/ParameterPlace.h"

#include <mxmodule/Configuration.h>

#include <memory>
#include <string>
#include <vector>

namespace mxmodule {

/// A configured module: its parameter image and the values in it.
struct ConfiguredImage
{
    const DeviceReport* defaults; ///< The module as its mx file describes it.
    DeviceReport device;          ///< With the values of the image.
    Fieldbus fieldbus;
    std::vector<char> image;            ///< The raw parameter image.
    std::vector<char> bytes;            ///< The bytes that the fieldbus master writes.
    std::vector<ParameterPlace> places; ///< The parameters in `bytes`, ordered by place.
    std::string file;                   ///< Of the module, for outputs.
    std::vector<Finding> findings = {};
    std::shared_ptr<const TranslatedModule> owner = nullptr; ///< Of `defaults`, where it is shared.

    /// Whether the parameter at `position` differs from the default.
    bool isChanged(std::size_t position) const;

    /// Whether a listing contains the parameter at `position`.
    bool isListed(std::size_t position, Listing listing) const
    {
        return listing == Listing::All || isChanged(position);
    }
};

/// Reads the raw parameter image `image` of `module`, of the size of the module's image. Throws a
/// `Failure` when the fieldbus cannot carry it. The module must outlive the result.
ConfiguredImage configurationOf(const TranslatedModule& module, const std::vector<char>& image,
                                Fieldbus fieldbus);

/// Returns the Modbus registers of `image`. Throws a `Failure` that names the parameters without
/// one.
std::vector<std::uint16_t> registersOf(const TranslatedModule& module,
                                       const std::vector<char>& image);

/// Returns notes on `configuration`: differences from the defaults in bits of no parameter, and
/// parameters that are not in the buffer. `place` is the origin of the image.
std::vector<Finding> notesOf(const ConfiguredImage& configuration, const std::string& place);

/// A comparison of the wanted configuration with the one read from a module.
struct ImageComparison
{
    ConfiguredImage wanted;
    ConfiguredImage read;
    std::vector<ParameterPlace> deviations; ///< The places whose bits differ, in order.
    std::vector<std::size_t> strayBytes;    ///< Raw bytes that differ in bits of no parameter.
    std::vector<Finding> findings = {};

    bool isSame() const { return deviations.empty() && strayBytes.empty(); }
};

/// Compares two configurations of the same module on the same fieldbus.
ImageComparison compared(ConfiguredImage wanted, ConfiguredImage read);

/// Returns a warning about differing bits of no parameter. `place` is the origin of `read`.
std::vector<Finding> notesOf(const ImageComparison& comparison, const std::string& place);

} // namespace mxmodule
