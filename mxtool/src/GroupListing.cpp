#include "GroupListing.h"

#include <devices/parser/mx/ByteReaders.h>
#include <devices/parser/mx/Parser.h>

#include <stdexcept>

namespace mxtool {

namespace {

constexpr std::uint32_t groupHeaderSize = 4;
constexpr std::uint32_t groupOverhead = 6;

// Opens the container reader's list of groups.
class Container : public devices::parser::mx::Parser
{
public:
    const std::vector<std::uint16_t>& order() const { return groupOrder; }
};

} // namespace

GroupListing listGroups(const std::vector<char>& bytes)
{
    GroupListing listing;
    Container container;
    try {
        container.parse(bytes.data(), static_cast<std::uint32_t>(bytes.size()));
    } catch (const std::runtime_error& failure) {
        listing.failure = failure.what();
    }
    // Groups stand back to back, so the order and the lengths give every place.
    const auto* data = reinterpret_cast<const std::uint8_t*>(bytes.data());
    for (const std::uint16_t id : container.order()) {
        const std::uint32_t length = devices::parser::mx::readU16BE(data + listing.framedSize + 2);
        listing.groups.push_back(
            {id, listing.framedSize + groupHeaderSize, length - groupOverhead});
        listing.framedSize += length;
    }
    return listing;
}

} // namespace mxtool
