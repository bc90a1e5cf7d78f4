#pragma once

#include "export/PictureRows.h"

#include <cstddef>
#include <vector>

namespace mxstation {

// Lengths of the picture in pixels.
constexpr std::size_t pictureLine = 18;    ///< Height of a heading, and of each lane of a row.
constexpr std::size_t pictureBlockGap = 5; ///< Between blocks.
constexpr std::size_t pictureColumn = 528; ///< Width of a column with the space after it.

/// A row, or the heading of a module's block, at its place.
struct PlacedRow
{
    std::size_t column; ///< From 0.
    std::size_t top;    ///< Pixels below the top of the column.
    const PictureBlock* block;
    const PictureRow* row; ///< Null: the heading.
    bool continues;        ///< A heading repeated at the top of a column.
    bool isFirst;          ///< A row at the top of its column, or below a heading.
};

/// The rows of an image, in columns of about the same height.
struct PictureColumns
{
    std::vector<PlacedRow> rows = {};
    std::size_t count = 0;  ///< Of the columns.
    std::size_t height = 0; ///< Of the highest one.
};

/// Arranges `blocks`, to which the result refers, so that the picture is not much longer in one
/// direction than in the other. A block is split only if it is long.
PictureColumns inColumns(const std::vector<PictureBlock>& blocks);

} // namespace mxstation
