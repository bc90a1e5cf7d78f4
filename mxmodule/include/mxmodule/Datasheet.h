#pragma once

#include "mxmodule/Module.h"
#include "mxmodule/MxmoduleApi.h"

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

// Data sheets: pages (HTML) for people, on a screen and on paper. A page contains all that it
// shows and no script. The same input always gives the same bytes. Texts of modules are never
// markup.

namespace mxmodule {

/// Returns the data sheet of `module`, with its places in the process images and the values of its
/// parameter block: identity, product image, channels, parameters, parameter image and Modbus
/// registers byte by byte, and the groups of the mx file. Each number that states a place is a
/// link to its byte.
MXMODULE_API std::string datasheet(const Module& module);

// The parts of such a page, for one about several modules.

/// Where a part is in its page.
struct DatasheetPlace
{
    std::string prefix = {};   ///< Begins the identifiers of its elements: letters, digits, "-".
    unsigned headingLevel = 2; ///< Of its own headings, 2 to 6.
    /// Address on a coupler of the first register of the parameters; empty: not stated.
    std::optional<std::uint64_t> firstRegister = {};
};

/// Returns what all modules of the type of `module` have in common: identity, product image, sizes,
/// what the parameters accept and their defaults, the groups of the mx file.
MXMODULE_API std::string datasheetOfType(const Module& module, const DatasheetPlace& place);

/// Returns the values in the raw image `image` of `module`, those that differ from the defaults
/// marked, with their places, then the image byte by byte and its Modbus registers. Throws a
/// `Failure` when the size of the image is wrong.
MXMODULE_API std::string datasheetOfValues(const Module& module, const std::vector<char>& image,
                                           const DatasheetPlace& place);

/// A page of parts.
struct DatasheetPage
{
    std::string title;  ///< Any text.
    std::string header; ///< HTML with the heading of level 1.
    /// Identifiers of headings of level 2 in `content`, and their texts, for the list of contents.
    std::vector<std::pair<std::string, std::string>> contents;
    std::string content;    ///< HTML.
    std::string style = {}; ///< Rules after those of the parts.
};

/// Returns the page. It ends with the version of this library.
MXMODULE_API std::string datasheetPage(const DatasheetPage& page);

} // namespace mxmodule
