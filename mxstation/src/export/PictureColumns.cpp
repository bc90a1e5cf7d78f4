#include "export/PictureColumns.h"

#include <algorithm>

namespace mxstation {

namespace {

constexpr std::size_t leastColumnHeight = 30 * pictureLine;
constexpr std::size_t leastBegun = 4 * pictureLine; // of a block at the end of a column

std::size_t heightOfRow(const PictureRow& row)
{
    return row.lanes * pictureLine;
}

std::size_t headingHeight(const PictureBlock& block)
{
    return block.module == nullptr ? 0 : pictureLine;
}

std::size_t heightOfBlock(const PictureBlock& block)
{
    std::size_t height = headingHeight(block);
    for (const PictureRow& row : block.rows) {
        height += heightOfRow(row);
    }
    return height;
}

// The height at which all columns together are about three times as wide as high: the images are
// below each other.
std::size_t columnHeight(std::size_t whole)
{
    std::size_t height = leastColumnHeight;
    while (whole * pictureColumn > height * height * 3) {
        height += pictureLine;
    }
    return height;
}

// Puts rows below each other, column by column.
class ColumnFiller
{
public:
    explicit ColumnFiller(std::size_t mostHeight) : most(mostHeight) { columns.count = 1; }

    void add(const PictureBlock& block)
    {
        const std::size_t height = heightOfBlock(block);
        top += top == 0 ? 0 : pictureBlockGap;
        if (top + height > most && (height < most / 2 || top + leastBegun > most)) {
            beginColumn();
        }
        addHeading(block, false);
        for (const PictureRow& row : block.rows) {
            if (top + heightOfRow(row) > most && top > headingHeight(block)) {
                beginColumn();
                addHeading(block, true);
            }
            place(block, &row, heightOfRow(row), false);
        }
    }

    PictureColumns take() { return std::move(columns); }

private:
    void beginColumn()
    {
        if (top != 0) {
            ++columns.count;
            top = 0;
        }
    }

    void addHeading(const PictureBlock& block, bool continues)
    {
        isFirst = true;
        if (block.module != nullptr) {
            place(block, nullptr, pictureLine, continues);
            isFirst = true;
        }
    }

    void place(const PictureBlock& block, const PictureRow* row, std::size_t height, bool continues)
    {
        columns.rows.push_back({columns.count - 1, top, &block, row, continues, isFirst});
        isFirst = false;
        top += height;
        columns.height = std::max(columns.height, top);
    }

    std::size_t most;
    std::size_t top = 0;
    bool isFirst = true;
    PictureColumns columns;
};

PictureColumns columnsOf(const std::vector<PictureBlock>& blocks, std::size_t mostHeight)
{
    ColumnFiller filler(mostHeight);
    for (const PictureBlock& block : blocks) {
        filler.add(block);
    }
    return filler.take();
}

} // namespace

PictureColumns inColumns(const std::vector<PictureBlock>& blocks)
{
    if (blocks.empty()) {
        return {};
    }
    std::size_t whole = 0;
    for (const PictureBlock& block : blocks) {
        whole += heightOfBlock(block) + pictureBlockGap;
    }
    // As many columns as that, of the least height that suffices.
    const std::size_t count = (whole - 1) / columnHeight(whole) + 1;
    std::size_t height = whole / count;
    PictureColumns columns = columnsOf(blocks, height);
    while (columns.count > count) {
        height += height / 20 + 1;
        columns = columnsOf(blocks, height);
    }
    return columns;
}

} // namespace mxstation
