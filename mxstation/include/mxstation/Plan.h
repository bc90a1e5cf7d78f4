#pragma once

#include "mxstation/Station.h"

#include <mxmodule/ChannelMap.h>
#include <mxmodule/Module.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace mxstation {

/// Bytes of a process image.
struct ImageBytes
{
    std::uint64_t offset = 0; ///< Address of the first.
    std::uint64_t size = 0;   ///< Number of bytes.

    std::uint64_t end() const { return offset + size; } ///< Address after the last.
};

/// A module with its place in the process images.
struct PlannedModule
{
    std::size_t position;    ///< In the row, from 1; reserved places do not count.
    std::size_t entry;       ///< Index in `Station::entries`.
    std::string name;        ///< Its own, or made of its file or identifier; unique in the station.
    bool hasOwnName;         ///< Whether the station states the name.
    std::string reference;   ///< Identifier or path as in the station.
    ImageBytes input;        ///< Its data in the input image.
    ImageBytes output;       ///< Its data in the output image.
    mxmodule::Module module; ///< Translated at these offsets.
    mxmodule::ModuleFile file;            ///< Its mx file.
    std::vector<char> image;              ///< The raw parameter image, with the station's values.
    std::vector<std::uint16_t> registers; ///< Its Modbus registers; empty if there are none.
    std::optional<mxmodule::Finding> noRegisters; ///< Why the image has no Modbus form.
    SourcePlace place;                            ///< Of its entry in the station's text.
};

/// A channel with its place in a process image. The members of `mxmodule::MappedChannel` are those
/// of the module at its offsets: the symbol is the parser's own.
struct Channel : mxmodule::MappedChannel
{
    std::size_t module;     ///< Position of the module, from 1.
    std::string moduleName; ///< Name of the module.
    std::string alias;      ///< Name that the station gives it; may be empty.
    std::string comment;    ///< May be empty.
};

/// A channel of a module that is in no process image.
struct ChannelWithoutSymbol
{
    std::size_t module;        ///< Position of the module, from 1.
    std::string moduleName;    ///< Name of the module.
    mxmodule::Channel channel; ///< As in the module.
};

/// Why bits of a process image belong to no channel.
enum class GapReason
{
    Padding,  ///< Between modules: alignment, a pinned address, the padding of module or image.
    Reserved, ///< A place kept for a module.
    Status,   ///< Status bytes of the coupler.
    NoChannel ///< Data of a module without a channel.
};

/// Returns "padding", "reserved", "status" or "no channel".
MXSTATION_API const char* gapReasonName(GapReason reason);

/// Bits of a process image that belong to no channel. Only gaps with `GapReason::NoChannel` may be
/// other than whole bytes.
struct Gap
{
    bool isInput = false;                  ///< In the input image, otherwise in the output image.
    GapReason reason = GapReason::Padding; ///< Why.
    std::uint64_t firstBit = 0;            ///< In the image's addresses, counted from byte 0.
    std::uint64_t bits = 0;                ///< Number of bits.
    std::size_t module = 0;                ///< Position of the module that they belong to; 0: none.
    std::optional<std::size_t> entry = {}; ///< Index of the entry that reserves them.
    std::string name;                      ///< Of a reserved place; may be empty.
};

/// A station as planned. Complete only if `ok`: otherwise it has no modules, channels and gaps.
struct Plan
{
    std::string station;                ///< Name of the station.
    std::string file;                   ///< Name of its text for messages; empty: made by a host.
    std::string source;                 ///< Its text.
    Layout layout;                      ///< Of the coupler.
    std::optional<ModbusMap> modbus;    ///< Its registers; empty: not stated.
    ImageBytes input;                   ///< The whole input image.
    ImageBytes output;                  ///< The whole output image.
    std::vector<PlannedModule> modules; ///< In the order of the row.
    std::vector<Channel> channels;      ///< In the order of the row and of the modules' devices.
    std::vector<ChannelWithoutSymbol> withoutSymbol; ///< In the same order.
    std::vector<Gap> gaps; ///< Of the input image, then of the output image, by address.
    std::vector<mxmodule::Finding> findings; ///< Those of the station and those of the plan.

    /// Returns whether there is a plan: no finding is an error.
    bool ok() const
    {
        for (const mxmodule::Finding& finding : findings) {
            if (finding.severity == mxmodule::Severity::Error) {
                return false;
            }
        }
        return true;
    }
};

/// Plans `station`: gives each module its place by the layout, translates it there, and writes its
/// values into its parameter image. Modules that are not pinned follow the entry before them.
/// Problems are `Plan::findings`: those of the text, then those of the plan, each in the order of
/// the text; of more than 100 errors, and of more than 100 warnings and notes, the rest is one.
///
/// A module whose channels lie elsewhere from its first byte than at offset 0, or outside its data,
/// is a warning: addresses are those of the parser all the same.
MXSTATION_API Plan plan(const Station& station);

/// Returns the name that a plan gives to each entry of `station`, in their order, also with errors:
/// its own, or for a module without one that of its file or identifier, made unique with _2, _3,
/// ...; empty for a reserved place.
MXSTATION_API std::vector<std::string> entryNames(const Station& station);

} // namespace mxstation
