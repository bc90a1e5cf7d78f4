#pragma once

#include "export/PictureColumns.h"

#include <cstddef>
#include <string>

namespace mxstation {

// Lengths of the picture in pixels.
constexpr std::size_t byteGutter = 72; ///< The number of the byte, left of the cells.
constexpr std::size_t cellWidth = 52;  ///< Of a bit.
constexpr std::size_t allCells = 8 * cellWidth;
constexpr std::size_t textBase = 13;  ///< Of a text, below the top of its line.
constexpr std::size_t besideText = 4; ///< Left of a text in its cell.
constexpr std::size_t glyphWidth = 6; ///< Of the monospaced font.

/// Returns the left edge of a bit's cell, in a column that begins at `left`.
inline std::size_t cellLeft(std::size_t left, unsigned bit)
{
    return left + byteGutter + (7 - bit) * cellWidth;
}

/// Returns "byte 3" or "bytes 3 to 5".
std::string bytesText(const ImageBytes& bytes);

/// Draws what is placed in columns.
class RowDrawing
{
public:
    /// The first column has its left upper corner there.
    RowDrawing(std::size_t leftmost, std::size_t topmost) : origin(leftmost), upper(topmost) {}

    /// Returns the shapes of `placed`.
    std::string draw(const PlacedRow& placed);

private:
    std::string heading(const PictureBlock& block, bool continues) const;
    std::string byteNumber(const PictureRow& row, bool isAlarm) const;
    std::string emptyRow(const PictureBlock& block, const PictureRow& row) const;
    std::string freeCells(const PictureBlock& block, const PictureRow& row) const;
    std::string pieceShapes(const PlacedRow& placed, const PicturePiece& piece) const;
    std::string hiddenCount(const PictureRow& row) const;

    std::size_t origin;
    std::size_t upper;
    std::size_t left = 0; // of the row that is drawn
    std::size_t top = 0;
};

} // namespace mxstation
