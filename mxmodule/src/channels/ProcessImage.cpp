#include "channels/ProcessImage.h"

#include "channels/FreeBits.h"

#include <text/Counted.h>

#include <text/ShownText.h>
#include <text/TextWidth.h>

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <utility>

namespace mxmodule {

namespace {

using Area = ProcessImage::Area;
using Piece = ProcessImage::Piece;
using Row = ProcessImage::Row;

// Up to this number of bytes without a channel are drawn as one row each.
constexpr std::uint64_t shortRun = 2;

// The bits of one channel in the image.
struct Span
{
    std::size_t channel;
    std::uint64_t begin;
    std::uint64_t end;
    unsigned lane;
};

// Assigns each span, ordered by begin, the first free lane.
void assignLanes(std::vector<Span>& spans)
{
    std::vector<std::uint64_t> ends;
    for (Span& span : spans) {
        const auto free = std::find_if(ends.begin(), ends.end(),
                                       [&span](std::uint64_t end) { return end <= span.begin; });
        span.lane = static_cast<unsigned>(free - ends.begin());
        if (free == ends.end()) {
            ends.push_back(span.end);
        } else {
            *free = span.end;
        }
    }
}

std::uint8_t bitsBetween(unsigned lowBit, unsigned highBit)
{
    return static_cast<std::uint8_t>((2U << highBit) - (1U << lowBit));
}

void addPiece(Row& row, const Piece& piece)
{
    const std::uint8_t bits = bitsBetween(piece.lowBit, piece.highBit);
    row.overlaps = static_cast<std::uint8_t>(row.overlaps | (row.occupied & bits));
    row.occupied = static_cast<std::uint8_t>(row.occupied | bits);
    if (piece.lane >= ProcessImage::maximumLanes) {
        ++row.hidden;
        return;
    }
    row.lanes = std::max(row.lanes, piece.lane + 1);
    row.pieces.push_back(piece);
}

// The rows with a channel, by byte.
std::map<std::uint64_t, Row> occupiedRows(const std::vector<Span>& spans)
{
    std::map<std::uint64_t, Row> rows;
    for (const Span& span : spans) {
        const std::uint64_t lastByte = (span.end - 1) / 8;
        for (std::uint64_t byte = span.begin / 8; byte <= lastByte; ++byte) {
            const std::uint64_t low = std::max(span.begin, byte * 8);
            const std::uint64_t high = std::min(span.end, byte * 8 + 8) - 1;
            Row& row = rows[byte];
            row.firstByte = byte;
            addPiece(row,
                     {span.channel, static_cast<unsigned>(high % 8), static_cast<unsigned>(low % 8),
                      span.lane, static_cast<unsigned>(byte - span.begin / 8), false, false});
        }
    }
    return rows;
}

void addEmptyRows(std::vector<Row>& rows, std::uint64_t begin, std::uint64_t end, bool inData)
{
    if (begin >= end) {
        return;
    }
    Row row;
    row.inData = inData;
    row.count = inData && end - begin <= shortRun ? 1 : end - begin;
    for (row.firstByte = begin; row.firstByte < end; row.firstByte += row.count) {
        rows.push_back(row);
    }
}

// Adds the bytes from `begin` to `end`, which have no channel: separate rows for those within the
// module's data and those outside it.
void fillBetween(std::vector<Row>& rows, const ChannelTable::Data& data, std::uint64_t begin,
                 std::uint64_t end)
{
    const std::uint64_t dataBegin = std::clamp(data.firstByte, begin, end);
    const std::uint64_t dataEnd = std::clamp(data.firstByte + data.size, dataBegin, end);
    addEmptyRows(rows, begin, dataBegin, false);
    addEmptyRows(rows, dataBegin, dataEnd, true);
    addEmptyRows(rows, dataEnd, end, false);
}

// All rows from the first byte of the data or of a channel to the last.
std::vector<Row> withEmptyRows(std::map<std::uint64_t, Row> occupied,
                               const ChannelTable::Data& data)
{
    const std::uint64_t dataEnd = data.firstByte + data.size;
    std::vector<Row> rows;
    std::uint64_t next = data.firstByte;
    if (!occupied.empty()) {
        const std::uint64_t first = occupied.begin()->first;
        next = data.size == 0 ? first : std::min(first, data.firstByte);
    }
    for (auto& [byte, row] : occupied) {
        fillBetween(rows, data, next, byte);
        row.inData = data.firstByte <= byte && byte < dataEnd;
        rows.push_back(std::move(row));
        next = byte + 1;
    }
    fillBetween(rows, data, next, std::max(next, dataEnd));
    return rows;
}

bool isWholeByte(const Row& row)
{
    return row.lanes == 1 && row.hidden == 0 && row.pieces.size() == 1 && row.occupied == 0xFF;
}

void joinBlocks(std::vector<Row>& rows)
{
    for (std::size_t i = 1; i < rows.size(); ++i) {
        if (isWholeByte(rows[i - 1]) && isWholeByte(rows[i]) &&
            rows[i - 1].pieces[0].channel == rows[i].pieces[0].channel) {
            rows[i - 1].pieces[0].joinsBelow = true;
            rows[i].pieces[0].joinsAbove = true;
        }
    }
}

Area makeArea(const ChannelTable& map, bool input)
{
    Area area;
    area.title = input ? "Inputs" : "Outputs";
    area.data = input ? map.input : map.output;
    std::vector<Span> spans;
    for (const MappedChannel& channel : map.channels) {
        if (channel.isInput != input) {
            continue;
        }
        const std::size_t index = area.channels.size();
        area.channels.push_back({text::labelOf(channel.name), channel.symbol, channel.number,
                                 channel.bits,
                                 static_cast<unsigned>(index % ProcessImage::colours)});
        if (channel.bits != 0) {
            spans.push_back({index, channel.firstBit, channel.firstBit + channel.bits, 0});
        }
    }
    std::stable_sort(spans.begin(), spans.end(),
                     [](const Span& a, const Span& b) { return a.begin < b.begin; });
    assignLanes(spans);
    area.rows = withEmptyRows(occupiedRows(spans), area.data);
    joinBlocks(area.rows);
    ImageArea bits = areaOf(map, input);
    area.gaps = std::move(bits.free);
    area.overlaps = std::move(bits.overlapping);
    return area;
}

} // namespace

ProcessImage makeProcessImage(const ChannelTable& map)
{
    return {text::labelOf(map.label) + " (" + text::forTerminal(map.deviceTypeId) + ")",
            makeArea(map, true), makeArea(map, false)};
}

std::string dataText(const ChannelTable::Data& data)
{
    if (data.size == 0) {
        return "no data";
    }
    return fmt::format("{} from byte {}", text::counted(data.size, "byte"), data.firstByte);
}

std::uint64_t totalBits(const std::vector<BitRun>& runs)
{
    std::uint64_t total = 0;
    for (const BitRun& run : runs) {
        total += run.bits;
    }
    return total;
}

std::string pieceText(const ProcessImage::Channel& channel, const Piece& piece, std::size_t columns)
{
    if (piece.byte != 0) {
        const std::string number = fmt::format(" +{}", piece.byte);
        return text::shortenedName(channel.name, columns - number.size()) + number;
    }
    const std::string both = channel.name + "  " + channel.symbol;
    return text::columnsOf(both) <= columns ? both : text::shortenedName(channel.name, columns);
}

std::string runText(const Row& row)
{
    return fmt::format("bytes {} to {}: {}", row.firstByte, row.firstByte + row.count - 1,
                       row.inData ? "no channel" : "outside the data, no channel");
}

} // namespace mxmodule
