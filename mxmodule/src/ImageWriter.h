#pragma once

#include "TranslatedModule.h"

#include <string>
#include <utility>
#include <vector>

namespace mxmodule {

/// Reads the values of a module's parameters in images. Made and used in the work of `withParser`:
/// the companion library keeps the tables of one mx file.
class ImageReader
{
public:
    /// Hands the mx file of `module`, which must outlive the object, to the companion library.
    ImageReader(TranslatedModule::Parser& parser, const TranslatedModule& module);

    /// Sets the value of `parameter`, the one at `position`, to what it shows in `image`.
    void show(const std::vector<char>& image, std::size_t position,
              DeviceReport::Parameter& parameter) const;

private:
    const TranslatedModule& module;
};

/// A parameter, by its position in the report, and the text of the value that it is set to.
using SetParameter = std::pair<std::size_t, std::string>;

/// Writes values into images of a module. Made and used in the work of `withParser`.
class ImageWriter
{
public:
    /// `image` is the one that values are written into. An `ImageReader` of the module was made.
    ImageWriter(TranslatedModule::Parser& parser, const TranslatedModule& module,
                std::vector<char> image);

    /// Returns the number of `parameter`, the one at `position`, after only its value was set to
    /// `text`. Throws `std::runtime_error` when the companion library rejects the text.
    std::optional<mxformat::WholeNumber> alone(const DeviceReport::Parameter& parameter,
                                               std::size_t position, const std::string& text) const;

    /// Returns the image with every value of `values`, in order.
    std::vector<char> imageWith(const std::vector<SetParameter>& values) const;

private:
    TranslatedModule::Parser& parser;
    const TranslatedModule& module;
    std::vector<char> base;
};

} // namespace mxmodule
