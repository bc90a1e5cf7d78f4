#pragma once

#include "ChannelTable.h"

#include <mxmodule/ChannelMap.h>

namespace mxmodule {

/// The content of a picture of a module's process images, independent of how it is drawn.
///
/// Its size depends on the number of channels alone: a long run of bytes without a channel is one
/// row, and at most `maximumLanes` overlapping channels are drawn in a byte.
struct ProcessImage
{
    static constexpr unsigned maximumLanes = 4;
    static constexpr unsigned colours = 10;

    struct Channel
    {
        std::string name; ///< As returned by `labelOf`.
        std::string symbol;
        std::uint8_t number;
        unsigned bits;
        unsigned colour; ///< Below `colours`; neighbours differ.
    };

    /// The bits of a channel in one byte.
    struct Piece
    {
        std::size_t channel; ///< Index in the area's channels.
        unsigned highBit;
        unsigned lowBit;
        unsigned lane;   ///< Below `maximumLanes`; pieces that share bits have different lanes.
        unsigned byte;   ///< Which byte of the channel it is: 0, 1, ...
        bool joinsAbove; ///< Continues the block of the row above.
        bool joinsBelow; ///< Continues in the row below.
    };

    /// One byte of the image, or a run of bytes without a channel.
    struct Row
    {
        std::uint64_t firstByte = 0;
        std::uint64_t count = 1; ///< Above 1: a run without a channel.
        bool inData = true;      ///< Whether it lies within the module's data.
        std::vector<Piece> pieces;
        unsigned lanes = 1;        ///< Number of lanes in use.
        std::uint8_t occupied = 0; ///< Bits of any channel.
        std::uint8_t overlaps = 0; ///< Bits of more than one channel.
        unsigned hidden = 0;       ///< Pieces that are not drawn.

        /// Returns the bits of the module's data without a channel.
        std::uint8_t gaps() const { return inData ? static_cast<std::uint8_t>(~occupied) : 0; }
    };

    struct Area
    {
        std::string title; ///< "Inputs" or "Outputs".
        ChannelTable::Data data{};
        std::vector<Channel> channels;
        std::vector<Row> rows; ///< Ordered by their bytes.

        std::vector<BitRun> gaps{};     ///< Bits of the data without a channel.
        std::vector<BitRun> overlaps{}; ///< Bits of more than one channel.
    };

    std::string title;
    Area input;
    Area output;
};

/// Lays out the channels of `map`.
ProcessImage makeProcessImage(const ChannelTable& map);

/// Returns "22 bytes from byte 0", or "no data".
std::string dataText(const ChannelTable::Data& data);

/// Returns the number of bits in `runs`.
std::uint64_t totalBits(const std::vector<BitRun>& runs);

/// Returns the text of `piece` in `columns` columns: the name of the channel and, if it fits, the
/// symbol; from its second byte on the name and the number of the byte. A shortened name keeps the
/// number at its end.
std::string pieceText(const ProcessImage::Channel& channel, const ProcessImage::Piece& piece,
                      std::size_t columns);

/// Returns the text of a row of several bytes.
std::string runText(const ProcessImage::Row& row);

} // namespace mxmodule
