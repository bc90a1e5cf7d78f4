#pragma once

#include <mxstation/Plan.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace mxstation {

/// The bits of a channel in one byte.
struct PicturePiece
{
    const Channel* channel;
    unsigned highBit;     ///< Of the byte.
    unsigned lowBit;      ///< Of the byte.
    std::uint64_t byte;   ///< Of the channel, from 0.
    bool isLast;          ///< Of the channel's bytes.
    std::size_t lane = 0; ///< Pieces that share bits are below each other.
};

/// A byte of an image, or several bytes without channels.
struct PictureRow
{
    std::uint64_t firstByte;
    std::uint64_t count; ///< Above 1: of bytes without channels.
    std::vector<PicturePiece> pieces = {};
    std::size_t lanes = 1;
    std::size_t hidden = 0;  ///< Pieces left out, because too many share bits.
    unsigned occupied = 0;   ///< The bits of the pieces.
    bool joinsAbove = false; ///< The byte before it is in the row above.
};

/// Bytes of an image that belong together.
struct PictureBlock
{
    const PlannedModule* module; ///< Null: not data of a module.
    const Gap* gap;              ///< Null: data of a module, or outside the image.
    ImageBytes bytes;
    std::vector<PictureRow> rows = {};
};

/// Returns the input or the output image of `plan`, by address. It refers to `plan`. Channels
/// outside the image have blocks of their own.
std::vector<PictureBlock> pictureBlocks(const Plan& plan, bool isInput);

} // namespace mxstation
