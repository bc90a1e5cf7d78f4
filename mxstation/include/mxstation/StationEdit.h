#pragma once

#include "mxstation/Station.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <variant>

namespace mxstation {

// Changes of a station's text, for a page or a script. Entries count from 0, as
// `Station::entries`; `before` names the entry in front of which another one is put, the number
// of entries is the end of the row.

/// Adds a module to the row.
struct AddModule
{
    std::size_t before = 0; ///< The entry after it.
    std::string reference;  ///< A path from the station's directory, or an identifier.
    std::string name;       ///< Of its own; empty: none.
};

/// Adds a reserved place to the row.
struct AddReserve
{
    std::size_t before = 0;   ///< The entry after it.
    std::uint32_t input = 0;  ///< Bytes of the input image.
    std::uint32_t output = 0; ///< Bytes of the output image; one of the two is not 0.
    std::string name;         ///< May be empty.
};

/// Moves an entry to another place of the row.
struct MoveEntry
{
    std::size_t entry = 0;  ///< Which one.
    std::size_t before = 0; ///< The entry after it, counted before the move.
};

/// Removes an entry from the row, with the comment directly above it.
struct RemoveEntry
{
    std::size_t entry = 0; ///< Which one.
};

/// Names a module or a reserved place.
struct NameEntry
{
    std::size_t entry = 0; ///< Which one.
    std::string name;      ///< Empty: it has no name of its own.
};

/// States the size of a reserved place, also of one that a module begins.
struct SetReserve
{
    std::size_t entry = 0;    ///< Which one.
    std::uint32_t input = 0;  ///< Bytes of the input image.
    std::uint32_t output = 0; ///< Bytes of the output image; both 0: the module begins no place.
};

/// States the value of a parameter.
struct SetValue
{
    std::size_t entry = 0;            ///< Which module.
    std::string parameter;            ///< As `mxmodule::Assignment::name`.
    std::optional<std::string> value; ///< As `Assignment::value`; empty: no longer stated.
};

/// States alias and comment of a channel. A note that the text does not have yet is stated under
/// the name of the channel if no other one has it, otherwise under its identifier.
struct NoteChannel
{
    std::size_t entry = 0; ///< Which module.
    std::string channel;   ///< As `ChannelNote::channel`.
    std::string alias;     ///< Empty: none.
    std::string comment;   ///< Empty: none.
};

/// Pins an entry to addresses, in bytes.
struct PinEntry
{
    std::size_t entry = 0;               ///< Which one.
    std::optional<std::uint32_t> input;  ///< In the input image; empty: not pinned.
    std::optional<std::uint32_t> output; ///< In the output image; empty: not pinned.
};

/// Pins every entry to the addresses that it has, as `pinned`: the plan must have no error.
struct PinAll
{};

/// One of these changes.
using StationEdit = std::variant<AddModule, AddReserve, MoveEntry, RemoveEntry, NameEntry,
                                 SetReserve, SetValue, NoteChannel, PinEntry, PinAll>;

/// Returns the text of `station` with one change. Every other byte is kept: comments, quotes, order
/// and line ends. Comments directly above an entry are moved and removed with it.
///
/// Only YAML that is a station's is needed: except for `PinAll`, modules may be missing and values
/// be wrong. A new value is not checked either, plan the result for that. The name of a parameter
/// or channel is, if the module is there.
///
/// The result is read again and compared before it is returned. Throws a `mxmodule::Failure`: of
/// `Origin::Request` for an entry, parameter or channel that does not exist and for a text or
/// number that no station states; otherwise with the place that cannot be changed on its own, such
/// as an entry that an alias repeats, and what to do by hand.
MXSTATION_API std::string edited(const Station& station, const StationEdit& edit);

} // namespace mxstation
