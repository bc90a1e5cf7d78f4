#pragma once

#include "mxauthor/groups/Channels.h"
#include "mxauthor/groups/Module.h"
#include "mxauthor/groups/Parameters.h"
#include "mxauthor/groups/Texts.h"

#include <mxformat/Groups.h>

#include <optional>
#include <variant>

namespace mxauthor {

using GroupContent = std::variant<RawGroup, Header, Identity, ParameterBlock, DataSizes, Entries,
                                  Parameters, OptionLists, Conversions, Channels, TextTable,
                                  ChannelNames, Extension, ProductImage>;

/// Largest size of a payload in bytes: a group's length has 16 bits.
constexpr std::size_t largestPayload = 0xFFFF - mxformat::groupOverhead;

/// A group as it is in an mx file.
struct Group
{
    std::uint16_t id = 0;
    Place place; ///< Of the whole group: identifier, length, payload, checksum.
    GroupContent content;
    Field<std::uint16_t> checksum;
};

/// An mx file as typed content, all of it: writing what was read gives the same bytes.
struct MxFile
{
    std::vector<Group> groups; ///< In file order, repeated ones included.
    Field<Bytes> tail;         ///< Bytes after the last group, not read.
};

/// Reads the mx data `bytes` (those of the file, nothing after them). A payload without the shape
/// that its group's identifier asks for becomes a `RawGroup`. Throws `std::runtime_error` with the
/// container reader's message when the framing does not hold.
MxFile readMxFile(const std::vector<char>& bytes);

/// What can be read of an mx file.
struct [[nodiscard]] ReadGroups
{
    MxFile file;                        ///< What follows the last whole group is the tail.
    std::optional<std::string> failure; ///< Of the framing: the container reader's message.
};

/// Reads the groups up to a framing failure.
ReadGroups readWholeGroups(const std::vector<char>& bytes);

/// The same, but a header that asks for more bytes than there are does not hide the groups after
/// it.
ReadGroups readDamagedMxFile(const std::vector<char>& bytes);

/// Returns the bytes of `file`. Lengths and counts are computed, the header's content length is
/// written unchanged. Throws `std::length_error` when a group would have more than 65,535 bytes, or
/// a record more parts than its count can hold.
Bytes writeMxFile(const MxFile& file);

/// Returns the typed content of the payload `bytes` of a group `id` that starts at `offset` of the
/// file; a `RawGroup` where it does not have the shape.
GroupContent readPayload(std::uint16_t id, const Bytes& bytes, std::uint32_t offset);

/// Returns the payload that `content` is written as.
Bytes writePayload(const GroupContent& content);

} // namespace mxauthor
