#include "channels/ChannelMapOutput.h"

#include <text/Counted.h>

#include <text/TextWidth.h>

#include <fmt/format.h>

#include <algorithm>
#include <array>

namespace mxmodule {

namespace {

using Area = ProcessImage::Area;
using Piece = ProcessImage::Piece;
using Row = ProcessImage::Row;

constexpr std::size_t cellWidth = 8;
constexpr std::size_t byteWidth = 5;  // of the column of byte numbers; large numbers are wider
constexpr std::size_t listedRuns = 4; // most runs of bits listed in a line
constexpr const char* border = "\u2502";
constexpr const char* dot = "\u00B7";

// Background colours of the 256 terminal colours, light enough for black text.
constexpr std::array<int, ProcessImage::colours> backgrounds = {153, 223, 157, 225, 230,
                                                                195, 217, 189, 194, 222};

std::string repeated(const char* text, std::size_t count)
{
    std::string all;
    for (std::size_t i = 0; i < count; ++i) {
        all += text;
    }
    return all;
}

// The width of `bits` adjacent bits, without the border after them.
std::size_t widthOf(std::size_t bits)
{
    return bits * (cellWidth + 1) - 1;
}

std::string pieceCell(const Area& area, const Piece& piece, bool coloured)
{
    const auto& channel = area.channels[piece.channel];
    const std::size_t width = widthOf(piece.highBit - piece.lowBit + 1);
    const std::string text = text::fitted(pieceText(channel, piece, width), width);
    return coloured ? fmt::format("\033[30;48;5;{}m{}\033[0m", backgrounds[channel.colour], text)
                    : text;
}

const Piece* pieceFrom(const Row& row, unsigned lane, unsigned highBit)
{
    const auto found =
        std::find_if(row.pieces.begin(), row.pieces.end(), [lane, highBit](const Piece& piece) {
            return piece.lane == lane && piece.highBit == highBit;
        });
    return found == row.pieces.end() ? nullptr : &*found;
}

std::string laneLine(const Area& area, const Row& row, unsigned lane, bool coloured)
{
    std::string line = border;
    for (unsigned bits = 8; bits > 0;) {
        const unsigned bit = bits - 1;
        if (const Piece* piece = pieceFrom(row, lane, bit)) {
            line += pieceCell(area, *piece, coloured) + border;
            bits = piece->lowBit;
            continue;
        }
        const bool isGap = lane == 0 && (row.gaps() >> bit & 1U) != 0;
        line += repeated(isGap ? dot : " ", cellWidth) + border;
        --bits;
    }
    return line + "\n";
}

// "!" where channels overlap, ">" outside the data of the module.
const char* markOf(const Row& row)
{
    if (row.overlaps != 0) {
        return "!";
    }
    return row.inData ? " " : ">";
}

std::string rowLines(const Area& area, const Row& row, bool coloured)
{
    if (row.count > 1) {
        return fmt::format("{:>{}} {}{}{}\n", "...", byteWidth, border,
                           text::fitted(runText(row), widthOf(8)), border);
    }
    std::string lines;
    for (unsigned lane = 0; lane < row.lanes; ++lane) {
        const std::string byte = lane == 0 ? std::to_string(row.firstByte) : "";
        lines += fmt::format("{:>{}}{}{}", byte, byteWidth, markOf(row),
                             laneLine(area, row, lane, coloured));
    }
    if (row.hidden != 0) {
        lines +=
            fmt::format("{:>{}}!{}{}{}\n", "", byteWidth, border,
                        text::fitted(fmt::format("and {} more", row.hidden), widthOf(8)), border);
    }
    return lines;
}

std::string headerLine()
{
    std::string line = fmt::format("{:>{}} ", "Byte", byteWidth);
    for (int bit = 7; bit >= 0; --bit) {
        line += fmt::format(" {:<{}}", bit, cellWidth);
    }
    line.erase(line.find_last_not_of(' ') + 1);
    return line + "\n";
}

std::string runsLine(const char* what, const std::vector<BitRun>& runs)
{
    if (runs.empty()) {
        return "";
    }
    const std::uint64_t total = totalBits(runs);
    std::string line = fmt::format("  {}: {}, from", what, text::counted(total, "bit"));
    for (std::size_t i = 0; i < std::min(runs.size(), listedRuns); ++i) {
        line += fmt::format("{} byte {} bit {}", i == 0 ? "" : ",", runs[i].firstBit / 8,
                            runs[i].firstBit % 8);
    }
    return line + (runs.size() > listedRuns ? ", ...\n" : "\n");
}

bool hasRowBeyond(const Area& area)
{
    return std::any_of(area.rows.begin(), area.rows.end(),
                       [](const Row& row) { return !row.inData; });
}

std::string areaText(const Area& area, bool coloured)
{
    std::string text = area.title + ": " + dataText(area.data) + "\n";
    if (area.rows.empty()) {
        return text;
    }
    text += headerLine();
    for (const Row& row : area.rows) {
        text += rowLines(area, row, coloured);
    }
    text += runsLine("no channel", area.gaps);
    text += runsLine("! several channels", area.overlaps);
    return text + (hasRowBeyond(area) ? "  > outside the data of the module\n" : "");
}

} // namespace

std::string processImageMap(const ProcessImage& image, bool coloured)
{
    return image.title + "\n\n" + areaText(image.input, coloured) + "\n" +
           areaText(image.output, coloured);
}

} // namespace mxmodule
