#include "channels/ChannelMapOutput.h"

#include <fmt/format.h>
#include <text/Counted.h>
#include <text/Svg.h>
#include <text/TextWidth.h>

#include <algorithm>
#include <array>

namespace mxmodule {

namespace {

using Area = ProcessImage::Area;
using Piece = ProcessImage::Piece;
using Row = ProcessImage::Row;
using text::svgLine;
using text::svgRectangle;
using text::svgText;

// All lengths are pixels.
constexpr std::size_t margin = 20;
constexpr std::size_t byteColumn = 96; // the numbers of the bytes
constexpr std::size_t bitWidth = 84;
constexpr std::size_t cellsWidth = 8 * bitWidth;
constexpr std::size_t laneHeight = 22;
constexpr std::size_t barHeight = 3;   // marks an overlap above and below, beside the text
constexpr std::size_t lineHeight = 18; // of a text
constexpr std::size_t baseline = 15;   // of a text, below the top of its line
constexpr std::size_t padding = 5;     // beside a text in its cell
constexpr std::size_t letterWidth = 7; // of the monospaced font, rounded up
constexpr std::size_t moreWidth = 50;  // the "+3" for channels not drawn, right of the cells
constexpr std::size_t swatchWidth = 18;
constexpr std::size_t legendGap = 28;                  // between the columns of the legend
constexpr std::size_t headHeight = 2 * lineHeight + 8; // title and bit numbers of an area
constexpr std::size_t mostLegendColumns = 4;
constexpr std::size_t leastLegendLines = 20;
constexpr std::size_t longestLegendName = 60;

constexpr std::array<const char*, ProcessImage::colours> fills = {
    "#a6cee3", "#fdd0a2", "#b8e0a8", "#e3c9ec", "#fff3a3",
    "#f7b6b6", "#bfe5e0", "#c6cbef", "#e2d3c0", "#d9e8a0"};

constexpr const char* style = R"(<style>
text { font: 11px "DejaVu Sans Mono", "Liberation Mono", Consolas, Menlo, monospace; fill: #222; }
.title { font-weight: bold; }
.faint { fill: #505050; }
.alarm { fill: #b00020; }
.cell { fill: none; stroke: #ccc; }
.gap { fill: url(#gap); stroke: #ccc; }
.edge { fill: none; stroke: #555; }
.seam { fill: none; stroke: #555; stroke-opacity: 0.35; stroke-dasharray: 2 3; }
.overlap { fill: #d00020; }
</style>
<defs><pattern id="gap" width="6" height="6" patternUnits="userSpaceOnUse">
<rect width="6" height="6" fill="#f6f6f6"/><path d="M0 6L6 0" stroke="#d4d4d4"/></pattern></defs>
)";

// The left edge of a bit's cell.
std::size_t leftOf(unsigned bit)
{
    return margin + byteColumn + (7 - bit) * bitWidth;
}

// The runs of adjacent bits in a byte, as (highest, lowest), from the left.
std::vector<std::pair<unsigned, unsigned>> bitRuns(unsigned bits)
{
    std::vector<std::pair<unsigned, unsigned>> runs;
    for (unsigned bit = 8; bit-- > 0;) {
        if ((bits >> bit & 1U) == 0) {
            continue;
        }
        if ((bits >> bit & 2U) != 0 && !runs.empty()) {
            runs.back().second = bit;
        } else {
            runs.emplace_back(bit, bit);
        }
    }
    return runs;
}

std::size_t heightOf(const Row& row)
{
    return row.lanes * laneHeight;
}

std::string pieceShape(const Area& area, const Piece& piece, std::size_t rowTop)
{
    const auto& channel = area.channels[piece.channel];
    const std::size_t left = leftOf(piece.highBit);
    const std::size_t width = (piece.highBit - piece.lowBit + 1) * bitWidth;
    const std::size_t top = rowTop + piece.lane * laneHeight;
    const std::size_t bottom = top + laneHeight;
    std::string shape = svgRectangle(left, top, width, laneHeight,
                                     fmt::format("fill=\"{}\"", fills[channel.colour]));
    shape += svgLine(left, top, left, bottom, "edge");
    shape += svgLine(left + width, top, left + width, bottom, "edge");
    shape += svgLine(left, top, left + width, top, piece.joinsAbove ? "seam" : "edge");
    if (!piece.joinsBelow) {
        shape += svgLine(left, bottom, left + width, bottom, "edge");
    }
    const std::size_t columns = (width - 2 * padding) / letterWidth;
    return shape + svgText(left + padding, top + baseline, pieceText(channel, piece, columns),
                           piece.byte == 0 ? "" : " class=\"faint\"");
}

std::string emptyCells(const Row& row, std::size_t top)
{
    std::string cells;
    for (unsigned bit = 8; bit-- > 0;) {
        const bool isGap = (row.gaps() >> bit & 1U) != 0;
        if (isGap || (row.occupied >> bit & 1U) == 0) {
            cells += svgRectangle(leftOf(bit), top, bitWidth, heightOf(row),
                                  isGap ? "class=\"gap\"" : "class=\"cell\"");
        }
    }
    return cells;
}

std::string overlapMarks(const Row& row, std::size_t top)
{
    std::string marks;
    for (const auto& [high, low] : bitRuns(row.overlaps)) {
        const std::size_t width = (high - low + 1) * bitWidth;
        marks += svgRectangle(leftOf(high), top, width, barHeight, "class=\"overlap\"");
        marks += svgRectangle(leftOf(high), top + heightOf(row) - barHeight, width, barHeight,
                              "class=\"overlap\"");
    }
    if (row.hidden != 0) {
        marks += svgText(margin + byteColumn + cellsWidth + padding, top + baseline,
                         fmt::format("+{}", row.hidden), " class=\"alarm\"");
    }
    return marks;
}

std::string byteNumber(const Row& row, std::size_t top)
{
    const std::string number = std::to_string(row.firstByte) + (row.count > 1 ? "..." : "");
    return svgText(margin + byteColumn - 2 * padding, top + baseline, number,
                   row.inData ? " text-anchor=\"end\"" : " class=\"alarm\" text-anchor=\"end\"");
}

std::string rowShapes(const Area& area, const Row& row, std::size_t top)
{
    if (row.count > 1) {
        return byteNumber(row, top) +
               svgRectangle(leftOf(7), top, cellsWidth, laneHeight,
                            row.inData ? "class=\"gap\"" : "class=\"cell\"") +
               svgText(leftOf(7) + padding, top + baseline, runText(row), " class=\"faint\"");
    }
    std::string shapes = byteNumber(row, top) + emptyCells(row, top);
    for (const Piece& piece : row.pieces) {
        shapes += pieceShape(area, piece, top);
    }
    return shapes;
}

std::string grid(const Area& area, std::size_t top)
{
    std::string shapes;
    std::string marks; // drawn over everything else
    for (const Row& row : area.rows) {
        shapes += rowShapes(area, row, top);
        marks += overlapMarks(row, top);
        top += heightOf(row);
    }
    return shapes + marks;
}

std::string bitNumbers(std::size_t y)
{
    std::string numbers = svgText(margin + byteColumn - 2 * padding, y, "byte",
                                  " class=\"faint\" text-anchor=\"end\"");
    for (unsigned bit = 8; bit-- > 0;) {
        numbers += svgText(leftOf(bit) + bitWidth / 2, y, std::to_string(bit),
                           " class=\"faint\" text-anchor=\"middle\"");
    }
    return numbers;
}

std::string areaTitle(const Area& area)
{
    std::string title = area.title + ": " + dataText(area.data);
    if (const auto free = totalBits(area.gaps); free != 0) {
        title += fmt::format(", {} without a channel", text::counted(free, "bit"));
    }
    if (const auto shared = totalBits(area.overlaps); shared != 0) {
        title += fmt::format(", {} of several channels", text::counted(shared, "bit"));
    }
    return title;
}

// The list of an area's channels right of its cells.
struct Legend
{
    std::size_t lines; // in each column, without the heading
    std::size_t columns;
    std::size_t symbolWidth;
    std::size_t nameWidth;

    std::size_t columnWidth() const
    {
        return swatchWidth + symbolWidth + nameWidth + 4 * letterWidth + legendGap;
    }
};

std::size_t rowsHeight(const Area& area)
{
    std::size_t height = 0;
    for (const Row& row : area.rows) {
        height += heightOf(row);
    }
    return height;
}

Legend legendOf(const Area& area)
{
    std::size_t symbol = 7; // the heading "Address"
    std::size_t name = 7;   // "Channel"
    for (const auto& channel : area.channels) {
        symbol = std::max(symbol, text::columnsOf(channel.symbol));
        name = std::max(name, text::columnsOf(text::shortened(channel.name, longestLegendName)));
    }
    const std::size_t count = area.channels.size();
    const std::size_t fitting = std::max(leastLegendLines, rowsHeight(area) / lineHeight);
    const std::size_t columns =
        std::clamp<std::size_t>((count + fitting - 1) / fitting, 1, mostLegendColumns);
    return {(count + columns - 1) / columns, columns, (symbol + 2) * letterWidth,
            (name + 2) * letterWidth};
}

std::size_t legendLeft()
{
    return margin + byteColumn + cellsWidth + moreWidth;
}

std::string legendEntry(const Legend& legend, std::size_t left, std::size_t y,
                        const ProcessImage::Channel& channel)
{
    const std::size_t text = left + swatchWidth;
    return svgRectangle(left, y - baseline + padding, 11, 11,
                        fmt::format("fill=\"{}\" stroke=\"#555\"", fills[channel.colour])) +
           svgText(text, y, channel.symbol) +
           svgText(text + legend.symbolWidth, y, text::shortened(channel.name, longestLegendName)) +
           svgText(text + legend.symbolWidth + legend.nameWidth, y, std::to_string(channel.number),
                   " class=\"faint\"");
}

std::string legendHeading(const Legend& legend, std::size_t left, std::size_t y)
{
    const std::size_t text = left + swatchWidth;
    return svgText(text, y, "Address", " class=\"faint\"") +
           svgText(text + legend.symbolWidth, y, "Channel", " class=\"faint\"") +
           svgText(text + legend.symbolWidth + legend.nameWidth, y, "No.", " class=\"faint\"");
}

std::string legendShapes(const Area& area, const Legend& legend, std::size_t top)
{
    std::string shapes;
    for (std::size_t i = 0; i < area.channels.size(); ++i) {
        const std::size_t left = legendLeft() + i / legend.lines * legend.columnWidth();
        if (i % legend.lines == 0) {
            shapes += legendHeading(legend, left, top - lineHeight + baseline);
        }
        shapes += legendEntry(legend, left, top + i % legend.lines * lineHeight + baseline,
                              area.channels[i]);
    }
    return shapes;
}

bool isEmpty(const Area& area)
{
    return area.rows.empty() && area.channels.empty();
}

std::size_t heightOf(const Area& area)
{
    if (isEmpty(area)) {
        return lineHeight;
    }
    return headHeight + std::max(rowsHeight(area), legendOf(area).lines * lineHeight);
}

std::size_t widthOf(const Area& area)
{
    const Legend legend = legendOf(area);
    const std::size_t cells = legendLeft() + margin;
    return area.channels.empty() ? cells : cells + legend.columns * legend.columnWidth();
}

std::string areaShapes(const Area& area, std::size_t top)
{
    std::string title = svgText(margin, top + baseline, areaTitle(area), " class=\"title\"");
    if (isEmpty(area)) {
        return title;
    }
    const std::size_t gridTop = top + headHeight;
    return title + bitNumbers(gridTop - lineHeight + baseline - 2) + grid(area, gridTop) +
           legendShapes(area, legendOf(area), gridTop);
}

// The legend of the marks.
std::string key(std::size_t top)
{
    const std::size_t y = top + baseline;
    std::string shapes = svgRectangle(margin, top + 3, 14, 14, "class=\"gap\"");
    shapes += svgText(margin + 22, y, "no channel");
    shapes += svgRectangle(margin + 140, top + 3, 14, barHeight, "class=\"overlap\"");
    shapes += svgRectangle(margin + 140, top + 17 - barHeight, 14, barHeight, "class=\"overlap\"");
    shapes += svgText(margin + 162, y, "several channels");
    shapes += svgText(margin + 310, y, "12", " class=\"alarm\"");
    return shapes + svgText(margin + 330, y, "outside the data of the module");
}

} // namespace

std::string processImageSvg(const ProcessImage& image)
{
    const std::size_t inputTop = margin + 2 * lineHeight;
    const std::size_t outputTop = inputTop + heightOf(image.input) + 2 * lineHeight;
    const std::size_t keyTop = outputTop + heightOf(image.output) + lineHeight;
    const std::size_t height = keyTop + lineHeight + margin;
    const std::size_t width = std::max({widthOf(image.input), widthOf(image.output),
                                        2 * margin + letterWidth * text::columnsOf(image.title)});
    return text::svgBegin(width, height) + "<title>" + text::xmlEscaped(image.title) +
           "</title>\n" + style + svgRectangle(0, 0, width, height, "fill=\"#fff\"") +
           svgText(margin, margin + baseline, image.title, " class=\"title\"") +
           areaShapes(image.input, inputTop) + areaShapes(image.output, outputTop) + key(keyTop) +
           "</svg>\n";
}

} // namespace mxmodule
