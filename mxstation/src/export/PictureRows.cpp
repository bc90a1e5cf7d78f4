#include "export/PictureRows.h"

#include "export/ByteText.h"

#include <algorithm>
#include <map>

namespace mxstation {

namespace {

using PiecesByByte = std::map<std::uint64_t, std::vector<PicturePiece>>;

constexpr std::size_t mostLanes = 4;
constexpr std::uint64_t leastRun = 3; // bytes of a module without channels that share a row

void addPieces(const Channel& channel, PiecesByByte& pieces)
{
    const std::uint64_t lastBit = channel.firstBit + channel.bits - 1;
    const std::uint64_t first = channel.firstBit / 8;
    for (std::uint64_t byte = first; byte <= lastBit / 8; ++byte) {
        const auto low = static_cast<unsigned>(byte == first ? channel.firstBit % 8 : 0);
        const auto high = static_cast<unsigned>(byte == lastBit / 8 ? lastBit % 8 : 7);
        pieces[byte].push_back({&channel, high, low, byte - first, byte == lastBit / 8});
    }
}

PiecesByByte piecesOf(const Plan& plan, bool isInput)
{
    PiecesByByte pieces;
    for (const Channel& channel : plan.channels) {
        if (channel.isInput == isInput && channel.bits != 0) {
            addPieces(channel, pieces);
        }
    }
    return pieces;
}

unsigned bitsOfPiece(const PicturePiece& piece)
{
    return (2U << piece.highBit) - (1U << piece.lowBit);
}

// A byte with channels.
PictureRow byteRow(std::uint64_t byte, const std::vector<PicturePiece>& pieces)
{
    PictureRow row{byte, 1};
    std::vector<unsigned> lanes;
    for (PicturePiece piece : pieces) {
        const unsigned bits = bitsOfPiece(piece);
        row.occupied |= bits;
        const auto lane = std::find_if(lanes.begin(), lanes.end(),
                                       [bits](unsigned taken) { return (taken & bits) == 0; });
        piece.lane = static_cast<std::size_t>(lane - lanes.begin());
        if (lane != lanes.end()) {
            *lane |= bits;
        } else if (lanes.size() < mostLanes) {
            lanes.push_back(bits);
        } else {
            ++row.hidden;
            continue;
        }
        row.pieces.push_back(piece);
    }
    row.lanes = lanes.size();
    return row;
}

void addRow(PictureRow row, PictureBlock& block)
{
    if (!block.rows.empty()) {
        const PictureRow& above = block.rows.back();
        row.joinsAbove = above.firstByte + above.count == row.firstByte && above.count == 1;
    }
    block.rows.push_back(std::move(row));
}

void addFreeBytes(std::uint64_t begin, std::uint64_t end, PictureBlock& block)
{
    const bool isRun = block.module == nullptr || end - begin >= leastRun;
    while (begin < end) {
        const std::uint64_t count = isRun ? end - begin : 1;
        addRow({begin, count}, block);
        begin += count;
    }
}

void addRows(const PiecesByByte& pieces, PictureBlock& block)
{
    std::uint64_t next = block.bytes.offset;
    for (auto piece = pieces.lower_bound(next);
         piece != pieces.end() && piece->first < block.bytes.end(); ++piece) {
        addFreeBytes(next, piece->first, block);
        addRow(byteRow(piece->first, piece->second), block);
        next = piece->first + 1;
    }
    addFreeBytes(next, block.bytes.end(), block);
}

// A block for each run of bytes with channels that are not in `image`.
void addOutside(const PiecesByByte& pieces, const ImageBytes& image,
                std::vector<PictureBlock>& blocks)
{
    PictureBlock* last = nullptr;
    for (const auto& [byte, ofByte] : pieces) {
        if (byte >= image.offset && byte < image.end()) {
            continue;
        }
        if (last == nullptr || last->bytes.end() != byte) {
            last = &blocks.emplace_back(PictureBlock{nullptr, nullptr, {byte, 0}});
        }
        ++last->bytes.size;
        addRow(byteRow(byte, ofByte), *last);
    }
}

} // namespace

std::vector<PictureBlock> pictureBlocks(const Plan& plan, bool isInput)
{
    std::vector<PictureBlock> blocks;
    for (const PlannedModule& module : plan.modules) {
        const ImageBytes& bytes = isInput ? module.input : module.output;
        if (bytes.size != 0) {
            blocks.push_back({&module, nullptr, bytes});
        }
    }
    for (const Gap& gap : plan.gaps) {
        if (gap.isInput == isInput && gap.reason != GapReason::NoChannel) {
            blocks.push_back({nullptr, &gap, touchedBytes(gap)});
        }
    }
    const PiecesByByte pieces = piecesOf(plan, isInput);
    for (PictureBlock& block : blocks) {
        addRows(pieces, block);
    }
    addOutside(pieces, isInput ? plan.input : plan.output, blocks);
    std::sort(blocks.begin(), blocks.end(), [](const PictureBlock& a, const PictureBlock& b) {
        return a.bytes.offset < b.bytes.offset;
    });
    return blocks;
}

} // namespace mxstation
