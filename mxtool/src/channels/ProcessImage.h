#pragma once

#include "ChannelMap.h"

namespace mxtool {

/// What a picture of a module's process images shows, however it is drawn.
///
/// Its size depends on the number of channels alone: long runs of bytes without a channel are one
/// row, and of channels on top of one another in a byte only the first `maximumLanes` are drawn.
struct ProcessImage
{
    static constexpr unsigned maximumLanes = 4;
    static constexpr unsigned colours = 10;

    struct Channel
    {
        std::string name; ///< As `labelOf` shows it.
        std::string symbol;
        std::uint8_t number;
        unsigned bits;
        unsigned colour; ///< Below `colours`; neighbours differ.
    };

    /// The bits of one byte that a channel holds.
    struct Piece
    {
        std::size_t channel; ///< Index in the area's channels.
        unsigned highBit;
        unsigned lowBit;
        unsigned lane;   ///< Below `maximumLanes`; pieces that share bits have different lanes.
        unsigned byte;   ///< Which byte of the channel it is: 0, 1, ...
        bool joinsAbove; ///< Goes on from the row above as one block.
        bool joinsBelow; ///< Goes on in the row below as one block.
    };

    /// One byte of the image, or a run of bytes without a channel.
    struct Row
    {
        std::uint64_t firstByte = 0;
        std::uint64_t count = 1; ///< Above 1: a run without a channel.
        bool inData = true;      ///< Lies in the module's data; false: beyond it.
        std::vector<Piece> pieces;
        unsigned lanes = 1;        ///< How many the pieces take.
        std::uint8_t occupied = 0; ///< Bits that a channel holds.
        std::uint8_t overlaps = 0; ///< Bits that more than one channel holds.
        unsigned hidden = 0;       ///< Pieces that are not drawn.

        /// Returns the bits of the module's data that no channel holds.
        std::uint8_t gaps() const { return inData ? static_cast<std::uint8_t>(~occupied) : 0; }
    };

    struct BitRun
    {
        std::uint64_t firstBit; ///< Counted from byte 0.
        std::uint64_t bits;
    };

    struct Area
    {
        std::string title; ///< "Inputs" or "Outputs".
        ChannelMap::Data data{};
        std::vector<Channel> channels;
        std::vector<Row> rows; ///< Ordered by their bytes.

        std::vector<BitRun> gaps() const;     ///< Bits of the data that no channel holds.
        std::vector<BitRun> overlaps() const; ///< Bits that more than one channel holds.
    };

    std::string title;
    Area input;
    Area output;
};

/// Lays the channels of `map` out.
ProcessImage makeProcessImage(const ChannelMap& map);

/// Returns "22 bytes from byte 0", or "no data".
std::string dataText(const ChannelMap::Data& data);

/// Returns the number of all bits of `runs`.
std::uint64_t totalBits(const std::vector<ProcessImage::BitRun>& runs);

/// Returns what stands in `columns` columns of `piece`: the name and, where there is room, the
/// symbol of the channel; from its second byte on the name and the number of the byte. A shortened
/// name keeps the number at its end.
std::string pieceText(const ProcessImage::Channel& channel, const ProcessImage::Piece& piece,
                      std::size_t columns);

/// Returns what stands in a row of several bytes.
std::string runText(const ProcessImage::Row& row);

} // namespace mxtool
