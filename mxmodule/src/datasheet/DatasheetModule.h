#pragma once

#include "TranslatedModule.h"

#include <mxmodule/Datasheet.h>
#include <text/HtmlBits.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace mxmodule {

/// A module with an image of values, as the parts of its data sheet need it.
class __attribute__((visibility("hidden"))) DatasheetModule
{
public:
    /// Throws a `Failure` when the size of `image` is wrong.
    DatasheetModule(const Module& module, const std::vector<char>& image, DatasheetPlace place);

    /// Returns the identifier `name` with the prefix of the page's part.
    std::string id(const std::string& name) const { return place.prefix + name; }

    /// Returns the identifiers of the elements of a parameter and of a channel of the device.
    std::string parameterId(const Parameter& parameter) const;
    std::string channelId(const std::string& channel) const;

    /// Returns a heading of the part's own level.
    std::string heading(const std::string& name, const std::string& words) const;

    const TranslatedModule& translated() const { return *content; }

    /// Returns the bytes of the mx file.
    std::vector<char> mxBytes() const;

    Module module;
    DatasheetPlace place;
    Configuration raw;
    std::optional<Configuration> modbus; ///< Empty: no Modbus form.
    std::string noRegisters;             ///< Why there is none.
    std::vector<Parameter> parameters;   ///< With the values of the image.
    std::vector<Parameter> defaults;     ///< With those of the mx file.

private:
    std::shared_ptr<const TranslatedModule> content;
};

/// Returns the name of `parameter` with that of its channel.
std::string longNameOf(const Parameter& parameter);

/// Returns "Module", or the number and the names of the channel of `parameter`.
std::string groupOf(const Parameter& parameter);

/// Returns the positions of `parameters` in groups: those of the module, then those of each channel
/// in the order of the first one.
std::vector<std::vector<std::size_t>> groupsOf(const std::vector<Parameter>& parameters);

// The parts of a page, as HTML.

/// The picture of the product; empty if there is none that browsers show.
std::string productImageHtml(const Module& module);

/// The static properties.
std::string identityHtml(const DatasheetModule& module);

/// The sizes of the data; `isPlaced`: and where it begins in the images of the same page.
std::string sizesHtml(const DatasheetModule& module, bool isPlaced);

/// Both process images, a row for each byte, and the channels.
std::string channelsHtml(const DatasheetModule& module);

/// The parameter image, a row for each byte.
text::HtmlBitTable parameterImageTable(const DatasheetModule& module);

/// What the parameters accept, and their defaults; `withPlaces`: and where they are.
std::string parametersHtml(const DatasheetModule& module, bool withPlaces);

/// The values of the parameters, and where they are.
std::string valuesHtml(const DatasheetModule& module);

/// The parameter image and its registers.
std::string parameterBytesHtml(const DatasheetModule& module, const std::string& name);

/// The groups of the mx file.
std::string fileHtml(const DatasheetModule& module);

/// Returns the bytes of `parameter` as links to those of `image`, with its bits.
std::string imagePlaceHtml(const Parameter& parameter, const text::HtmlBitTable& image);

/// Returns the registers of each parameter as links; empty: it is in none.
std::vector<std::string> registerLinks(const DatasheetModule& module);

/// Returns the style sheet. `footer` is a text for the foot of each printed page.
std::string datasheetStyle(const std::string& footer);

} // namespace mxmodule
