#pragma once

#include "ChannelNameIndex.h"

#include <array>
#include <cstdint>
#include <vector>

namespace devices::parser::mx {

/// What is known of a text table (group 0x20d3): where the first text of each identifier starts, as
/// far as its records were walked. It grows with the walk, so that each record is read once and a
/// damaged record fails the very look-ups that reach it.
class TextIndex
{
public:
    /// Whether the table is that of the indexing with this number.
    bool isAttachedTo(std::uint64_t indexing) const { return indexing == attached; }

    /// Takes the table of `inSize` bytes at `inPayload` (null: the file has no table) in place of
    /// the last one. The caller keeps it.
    void attachTo(std::uint64_t indexing, const std::uint8_t* inPayload, std::uint32_t inSize);

    /// Returns where the text of `id` starts, from the payload's start in bytes; 0 when no record
    /// that was walked has the identifier.
    std::uint32_t startOf(std::uint16_t id) const { return starts[id]; }

    /// Takes note of a record. The first of an identifier counts.
    void add(std::uint16_t id, std::uint32_t textStart);

    ChannelNameIndex channelNames; ///< Which texts are the names of channels.

    const std::uint8_t* payload = nullptr;
    std::uint32_t size = 0; ///< Of the payload, in bytes.

    std::uint32_t next = 0;        ///< The record to read next, from the payload's start.
    std::uint32_t skippedText = 0; ///< Start of the text still to be skipped before that; 0: none.

private:
    void clear();

    std::uint64_t attached = 0;
    std::array<std::uint16_t, 65536> starts{};
    std::vector<std::uint16_t> ids; // with a start, so that clearing costs what the walk cost
};

} // namespace devices::parser::mx
