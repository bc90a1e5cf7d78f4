#include "ChannelNameIndex.h"

#include <mxformat/ChannelRecord.h>

namespace devices::parser::mx {

std::optional<std::uint32_t> ChannelNameIndex::find(const std::uint8_t* entries, std::uint32_t size,
                                                    std::uint8_t number)
{
    for (; places[number] == 0 && next < size; next += mxformat::channelNameSize) {
        std::uint16_t& place = places[entries[next]];
        if (place == 0) {
            // A payload has less than 65,535 bytes.
            place = static_cast<std::uint16_t>(next + 1);
        }
    }
    if (places[number] == 0) {
        return std::nullopt;
    }
    return places[number] - 1U;
}

} // namespace devices::parser::mx
