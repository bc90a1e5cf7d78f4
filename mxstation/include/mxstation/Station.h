#pragma once

#include "mxstation/Layout.h"
#include "mxstation/Modbus.h"

#include <mxmodule/Catalogue.h>
#include <mxmodule/Finding.h>
#include <mxmodule/ModuleFile.h>
#include <mxmodule/ModuleFolder.h>
#include <mxmodule/Observer.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace mxstation {

/// A place in the text of a station.
struct SourcePlace
{
    std::size_t line = 0;      ///< From 1; 0: not in a text.
    std::size_t column = 0;    ///< From 1, in characters.
    std::size_t lineStart = 0; ///< First byte of the line in the text.
};

/// A byte of a process image, as a station states it.
struct StatedByte
{
    std::uint32_t value = 0; ///< The byte, or a number of bytes.
    SourcePlace place;       ///< Where it is stated.
};

/// Bytes that a station states for its two images.
struct StatedBytes
{
    std::optional<StatedByte> input;  ///< Of the input image; empty: not stated.
    std::optional<StatedByte> output; ///< Of the output image; empty: not stated.
    SourcePlace place;                ///< Where they are stated.
};

/// A place of a station that is kept for a module. What it does not state of an image is 0 bytes.
struct Reserve
{
    StatedBytes size; ///< In bytes.
    std::string name; ///< May be empty.
};

/// A value for a parameter of a module.
struct StatedValue
{
    std::string name;  ///< As `mxmodule::Assignment::name`.
    std::string value; ///< As `mxmodule::Assignment::value`.
    SourcePlace place; ///< Where it is stated.
};

/// What a station says of a channel.
struct ChannelNote
{
    std::string channel;    ///< Name, number, "NUMBER NAME" or "#ID" of the channel.
    std::string alias;      ///< A name of its own in the station; empty: none.
    std::string comment;    ///< May be empty.
    SourcePlace place;      ///< Where the channel is named.
    SourcePlace aliasPlace; ///< Where the alias is stated.
};

/// A module, or a reserved place, in the row.
struct Entry
{
    std::string reference;                      ///< Identifier or path as stated; may be empty.
    std::optional<mxmodule::ModuleFile> module; ///< The mx file; empty: a reserved place.
    std::string name;                           ///< Of its own; empty: none.
    std::vector<StatedValue> parameters;        ///< In the order of the station.
    std::vector<ChannelNote> channels;          ///< In the order of the station.
    StatedBytes at;                             ///< Pinned addresses.
    std::optional<Reserve> reserve;             ///< The place that the module begins.
    SourcePlace place;                          ///< Where the entry begins.
    SourcePlace namePlace;                      ///< Where its name is stated.
};

/// Modules in a row, as a station file describes them or a host puts them together.
///
/// With an error among `findings` the station is incomplete, and its plan has no addresses.
struct Station
{
    std::string name;                ///< Of the station.
    Layout layout;                   ///< Of the coupler.
    SourcePlace layoutPlace;         ///< Where the layout is stated.
    std::optional<ModbusMap> modbus; ///< Registers of its coupler; empty: not stated.
    SourcePlace modbusPlace;         ///< Where that is stated.
    std::vector<Entry> entries;      ///< In the order of the row.

    std::string file;   ///< Name of the text for messages; empty: made by a host.
    std::string source; ///< The text, UTF-8.
    std::vector<mxmodule::Finding> findings; ///< What is wrong with the text, in its order.
};

/// How a station is read.
struct StationOptions
{
    /// The catalogue of modules named by identifier, as `mxmodule::Catalogue::open` takes it. It is
    /// opened at the first of them.
    std::string catalogueUrl = {};
    mxmodule::Observer* observer = nullptr; ///< Told of the files read; may be null.
    /// The folder from which alone mx files come, and the files that text forms name, also those of
    /// the catalogue; must live while the station is read. The station lies in it; a station whose
    /// name is in angle brackets lies in the folder itself. Null: any readable path.
    const mxmodule::ModuleFolder* folder = nullptr;
};

/// Reads the station file (YAML) at `path` and the mx files that it names; paths in it count from
/// its directory. Problems of the text, and modules that are missing, are `Station::findings`, all
/// of them. Throws a `mxmodule::Failure` when the file cannot be read or is of another kind.
MXSTATION_API Station readStation(const std::string& path, const StationOptions& options = {});

/// The same with the modules of an open catalogue.
MXSTATION_API Station readStation(const std::string& path, mxmodule::Catalogue& catalogue,
                                  mxmodule::Observer* observer = nullptr);

/// Reads the station in `source`, the content of a file called `name`. For a name in angle
/// brackets, such as "<standard input>", paths count from the current directory.
MXSTATION_API Station stationOf(const std::string& source, const std::string& name,
                                const StationOptions& options = {});

/// Returns the mx file that `reference` names in a station called `name`, as `stationOf` finds it.
/// Throws a `mxmodule::Failure` if there is none.
MXSTATION_API mxmodule::ModuleFile moduleOf(const std::string& reference, const std::string& name,
                                            const StationOptions& options = {});

} // namespace mxstation
