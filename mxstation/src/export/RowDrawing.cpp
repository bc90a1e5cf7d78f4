#include "export/RowDrawing.h"

#include <fmt/format.h>
#include <text/ShownText.h>
#include <text/Svg.h>
#include <text/TextWidth.h>

#include <algorithm>
#include <filesystem>

namespace mxstation {

namespace {

using text::svgRectangle;
using text::svgText;

constexpr std::size_t pictureColours = 10;
constexpr std::size_t headingNames = 30; // columns of the font, of 79
constexpr std::size_t headingReference = 20;
constexpr const char* between = " \u00B7 "; // of words: several blanks are drawn as one

std::string colourClass(const Channel& channel)
{
    return fmt::format("c{} light", (channel.module - 1) % pictureColours);
}

std::string shownChannel(const Channel& channel)
{
    return text::forTerminal(channel.alias.empty() ? channel.name : channel.alias);
}

// What a pointer on the channel shows.
std::string channelHint(const Channel& channel)
{
    std::string hint = channel.moduleName + "/" + channel.name + ": " + channel.symbol;
    for (const std::string& note : {channel.alias, channel.comment}) {
        hint += note.empty() ? "" : ", " + note;
    }
    return "<title>" + text::xmlEscaped(text::forTerminal(hint)) + "</title>";
}

std::string pieceLabel(const PicturePiece& piece, std::size_t columns)
{
    const std::string name = shownChannel(*piece.channel);
    if (piece.byte != 0) {
        const std::string number = fmt::format(" +{}", piece.byte);
        return text::shortenedName(name, columns - std::min(columns, number.size())) + number;
    }
    const std::string original = text::forTerminal(piece.channel->name);
    for (const std::string& label :
         {name + between + piece.channel->symbol + (original == name ? "" : between + original),
          name + between + piece.channel->symbol}) {
        if (text::columnsOf(label) <= columns) {
            return label;
        }
    }
    return text::shortenedName(name, columns);
}

// The edges of a piece: between the bytes of a channel there are none.
std::string pieceOutline(std::size_t left, std::size_t top, std::size_t width, bool joinsAbove,
                         bool joinsBelow)
{
    const std::size_t right = left + width;
    const std::size_t bottom = top + pictureLine;
    if (joinsAbove && joinsBelow) {
        return fmt::format("M{} {}V{}M{} {}V{}", left, top, bottom, right, top, bottom);
    }
    if (joinsAbove) {
        return fmt::format("M{} {}V{}H{}V{}", left, top, bottom, right, top);
    }
    if (joinsBelow) {
        return fmt::format("M{} {}V{}H{}V{}", left, bottom, top, right, bottom);
    }
    return fmt::format("M{0} {1}H{2}V{3}H{0}Z", left, top, right, bottom);
}

// The file or identifier of a module that has a name of its own.
std::string referenceText(const PlannedModule& module)
{
    const std::string name = std::filesystem::path(module.reference).stem().string();
    return text::shortened(text::forTerminal(name), headingReference);
}

const char* gapClass(const PictureBlock& block)
{
    if (block.gap == nullptr) {
        return block.module == nullptr ? "outside" : "none";
    }
    return gapReasonName(block.gap->reason);
}

} // namespace

std::string bytesText(const ImageBytes& bytes)
{
    return bytes.size == 1 ? fmt::format("byte {}", bytes.offset)
                           : fmt::format("bytes {} to {}", bytes.offset, bytes.end() - 1);
}

std::string RowDrawing::draw(const PlacedRow& placed)
{
    left = origin + placed.column * pictureColumn;
    top = upper + placed.top;
    if (placed.row == nullptr) {
        return heading(*placed.block, placed.continues);
    }
    const PictureRow& row = *placed.row;
    if (row.pieces.empty()) {
        return byteNumber(row, false) + emptyRow(*placed.block, row);
    }
    std::string shapes = byteNumber(row, placed.block->module == nullptr);
    shapes += freeCells(*placed.block, row);
    for (const PicturePiece& piece : row.pieces) {
        shapes += pieceShapes(placed, piece);
    }
    return shapes + hiddenCount(row);
}

std::string RowDrawing::heading(const PictureBlock& block, bool continues) const
{
    const PlannedModule& module = *block.module;
    const std::string name = fmt::format(
        "{}  {}", module.position, text::shortened(text::forTerminal(module.name), headingNames));
    const std::string bytes = continues ? "continued" : bytesText(block.bytes);
    const std::string right = module.hasOwnName ? referenceText(module) + between + bytes : bytes;
    const std::size_t baseline = top + textBase;
    return svgRectangle(left, top, byteGutter + allCells, pictureLine,
                        fmt::format("class=\"c{} cell\"", (module.position - 1) % pictureColours)) +
           svgText(left + besideText, baseline, name, " class=\"module\"") +
           svgText(left + byteGutter + allCells - besideText, baseline, right,
                   " text-anchor=\"end\"");
}

std::string RowDrawing::byteNumber(const PictureRow& row, bool isAlarm) const
{
    const std::string number = std::to_string(row.firstByte) + (row.count > 1 ? "..." : "");
    return svgText(left + byteGutter - besideText, top + textBase, number,
                   isAlarm ? " class=\"alarm\" text-anchor=\"end\"" : " text-anchor=\"end\"");
}

// Bytes without channels.
std::string RowDrawing::emptyRow(const PictureBlock& block, const PictureRow& row) const
{
    const ImageBytes bytes{row.firstByte, row.count};
    std::string reason = gapReasonName(GapReason::NoChannel);
    if (block.gap != nullptr) {
        reason = gapReasonName(block.gap->reason);
        reason += block.gap->name.empty() ? "" : ": " + text::forTerminal(block.gap->name);
    }
    const std::string words = bytesText(bytes) + ": " + reason;
    return svgRectangle(left + byteGutter, top, allCells, pictureLine,
                        fmt::format("class=\"{}\"", gapClass(block))) +
           svgText(left + byteGutter + besideText, top + textBase,
                   text::shortened(words, allCells / glyphWidth - 1), " class=\"faint\"");
}

std::string RowDrawing::freeCells(const PictureBlock& block, const PictureRow& row) const
{
    std::string cells;
    for (unsigned bit = 8; bit-- > 0;) {
        if ((row.occupied >> bit & 1U) == 0) {
            cells += svgRectangle(cellLeft(left, bit), top, cellWidth, row.lanes * pictureLine,
                                  fmt::format("class=\"{}\"", gapClass(block)));
        }
    }
    return cells;
}

std::string RowDrawing::pieceShapes(const PlacedRow& placed, const PicturePiece& piece) const
{
    const std::size_t x = cellLeft(left, piece.highBit);
    const std::size_t y = top + piece.lane * pictureLine;
    const std::size_t width = (piece.highBit - piece.lowBit + 1) * cellWidth;
    const bool joinsAbove = piece.byte != 0 && placed.row->joinsAbove && !placed.isFirst;
    const bool isForeign =
        placed.block->module == nullptr || placed.block->module->position != piece.channel->module;
    const bool isBetween = joinsAbove && !piece.isLast;
    const std::string colour = colourClass(*piece.channel);
    std::string shapes = "<g>" + channelHint(*piece.channel);
    if (isBetween) {
        shapes += svgRectangle(x, y, width, pictureLine, "class=\"" + colour + "\"");
    }
    shapes += fmt::format("<path class=\"{}cell{}\" {}d=\"{}\"/>", isBetween ? "" : colour + " ",
                          isForeign ? " foreign" : "", isBetween ? "fill=\"none\" " : "",
                          pieceOutline(x, y, width, joinsAbove, !piece.isLast));
    if (joinsAbove) {
        shapes += text::svgLine(x, y, x + width, y, "seam");
    }
    return shapes +
           svgText(x + besideText, y + textBase,
                   pieceLabel(piece, (width - 2 * besideText) / glyphWidth),
                   isForeign         ? " class=\"alarm\""
                   : piece.byte != 0 ? " class=\"faint\""
                                     : "") +
           "</g>\n";
}

std::string RowDrawing::hiddenCount(const PictureRow& row) const
{
    return row.hidden == 0 ? ""
                           : svgText(left + byteGutter + allCells + besideText, top + textBase,
                                     fmt::format("+{}", row.hidden), " class=\"alarm\"");
}

} // namespace mxstation
