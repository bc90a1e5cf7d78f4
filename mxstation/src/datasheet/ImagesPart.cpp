#include "datasheet/StationSheet.h"
#include "export/PictureRows.h"

#include <fmt/format.h>
#include <text/Counted.h>
#include <text/Html.h>

#include <algorithm>

namespace mxstation {

namespace {

using text::htmlText;

constexpr std::size_t sheetColours = 10; // of the style sheet

text::HtmlBits pieceBits(const Plan& plan, const PicturePiece& piece)
{
    const Channel& channel = *piece.channel;
    const auto number = static_cast<std::size_t>(piece.channel - plan.channels.data());
    const std::string name = channel.alias.empty() ? channel.name : channel.alias;
    const std::string more = piece.byte == 0 ? channel.symbol : fmt::format("+{}", piece.byte);
    return {piece.highBit, piece.lowBit,
            text::htmlLink(channelId(channel), htmlText(name.empty() ? channel.symbol : name)) +
                " <span class=\"faint\">" + htmlText(more) + "</span>",
            fmt::format("c{}", number % sheetColours), piece.lane};
}

text::HtmlByte sheetByte(const Plan& plan, const PictureRow& row, bool isOutside)
{
    text::HtmlByte byte;
    byte.number = row.firstByte;
    byte.lanes = row.lanes;
    byte.kind = isOutside ? "outside" : "";
    for (const PicturePiece& piece : row.pieces) {
        byte.bits.push_back(pieceBits(plan, piece));
    }
    std::stable_sort(
        byte.bits.begin(), byte.bits.end(),
        [](const text::HtmlBits& a, const text::HtmlBits& b) { return a.highBit > b.highBit; });
    return byte;
}

std::string wordsOf(const PictureBlock& block)
{
    if (block.gap == nullptr) {
        return block.module == nullptr ? "outside the image" : "no channel";
    }
    return gapReasonName(block.gap->reason) +
           (block.gap->name.empty() ? "" : ": " + htmlText(block.gap->name));
}

void addRow(const Plan& plan, const PictureBlock& block, const PictureRow& row,
            text::HtmlBitTable& table)
{
    const bool isOutside = block.module == nullptr && block.gap == nullptr;
    if (row.pieces.empty() && (row.count > 1 || block.module == nullptr)) {
        table.addRun(row.firstByte, row.count, wordsOf(block),
                     block.gap == nullptr ? "none" : gapReasonName(block.gap->reason));
        return;
    }
    table.add(sheetByte(plan, row, isOutside));
    if (row.hidden != 0) {
        table.addRun(row.firstByte, 1,
                     "and " + text::counted(row.hidden, "channel") + " more, see the list");
    }
}

std::string captionOf(const ImageBytes& image, bool isInput)
{
    return fmt::format("{} image: {}{}", isInput ? "Input" : "Output",
                       text::counted(image.size, "byte"),
                       image.size == 0 ? "" : fmt::format(" from byte {}", image.offset));
}

} // namespace

text::HtmlBitTable imageTable(const Plan& plan, bool isInput)
{
    text::HtmlBitTable table(captionOf(isInput ? plan.input : plan.output, isInput),
                             isInput ? "in-" : "out-");
    for (const PictureBlock& block : pictureBlocks(plan, isInput)) {
        table.beginGroup(block.module == nullptr ? "" : StationSheet::moduleLink(*block.module));
        for (const PictureRow& row : block.rows) {
            addRow(plan, block, row, table);
        }
    }
    return table;
}

std::string imagesHtml(const StationSheet& sheet)
{
    if (sheet.inputs.empty() && sheet.outputs.empty()) {
        return "<p>The station has no process data.</p>\n";
    }
    return "<div class=\"images\">\n" + (sheet.inputs.empty() ? "" : sheet.inputs.html()) +
           (sheet.outputs.empty() ? "" : sheet.outputs.html()) + "</div>\n";
}

} // namespace mxstation
