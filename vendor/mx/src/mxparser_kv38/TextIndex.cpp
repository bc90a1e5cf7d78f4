#include "TextIndex.h"

#include <mxformat/TextTable.h>

namespace devices::parser::mx {

void TextIndex::attachTo(std::uint64_t indexing, const std::uint8_t* inPayload,
                         std::uint32_t inSize)
{
    clear();
    attached = indexing;
    payload = inPayload;
    size = inSize;
}

void TextIndex::clear()
{
    for (const std::uint16_t id : ids) {
        starts[id] = 0;
    }
    ids.clear();
    channelNames = {};
    next = mxformat::textTableHeaderSize;
    skippedText = 0;
}

void TextIndex::add(std::uint16_t id, std::uint32_t textStart)
{
    if (starts[id] == 0) {
        ids.push_back(id);
        // A payload has less than 65,536 bytes, and so has every place in it.
        starts[id] = static_cast<std::uint16_t>(textStart);
    }
}

} // namespace devices::parser::mx
