#pragma once

#include "export/Provenance.h"

#include <mxstation/Plan.h>
#include <text/HtmlBits.h>

#include <string>
#include <vector>

namespace mxstation {

/// A type of modules: those of the same mx file.
struct SheetType
{
    const PlannedModule* first;         ///< The first module of it.
    std::vector<std::size_t> positions; ///< Of its modules.
};

/// What the parts of a station's data sheet share.
class StationSheet
{
public:
    /// Refers to `plan`. Throws a `mxmodule::Failure` when the plan has errors.
    explicit StationSheet(const Plan& plan);

    /// Returns the index in `types` of the type of `module`.
    std::size_t typeOf(const PlannedModule& module) const;

    /// Returns the words for a module, such as "3 Levels", as a link to its chapter.
    static std::string moduleLink(const PlannedModule& module);

    /// Returns the label of a type, or its identifier, as a link to its chapter.
    std::string typeLink(std::size_t type) const;

    /// Returns the bytes of an image as links: "4–7"; "none" for no bytes.
    std::string bytesLink(const ImageBytes& bytes, bool isInput) const;

    const Plan& plan;
    Provenance provenance;
    std::vector<SheetType> types;        ///< In the order of their first modules.
    std::vector<std::size_t> typeOfFile; ///< By position - 1.
    text::HtmlBitTable inputs;           ///< The input image, its bytes are "in-0", ...
    text::HtmlBitTable outputs;          ///< The output image, its bytes are "out-0", ...
};

/// Returns the label of `module`, or its identifier if it has none.
std::string labelOf(const mxmodule::Module& module);

/// Returns a process image of `plan`, a row for each byte.
text::HtmlBitTable imageTable(const Plan& plan, bool isInput);

/// Returns the identifier of the row of a channel.
std::string channelId(const Channel& channel);

// The parts of the page, as HTML.

/// The pictures and the table of the row, totals and layout.
std::string rowHtml(const StationSheet& sheet);

/// Style rules for the pictures of the row: one for each type that has a picture.
std::string rowStyle(const StationSheet& sheet);

/// Both process images.
std::string imagesHtml(const StationSheet& sheet);

/// The channels of all modules.
std::string channelsHtml(const StationSheet& sheet);

/// The registers of the coupler; empty if the station states none.
std::string modbusHtml(const StationSheet& sheet);

/// A chapter for each module.
std::string modulesHtml(const StationSheet& sheet);

/// A chapter for each type.
std::string typesHtml(const StationSheet& sheet);

} // namespace mxstation
