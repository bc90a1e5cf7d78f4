#include "GroupListing.h"

#include <mxformat/Groups.h>

#include <stdexcept>

namespace mxtool {

GroupListing listGroups(const std::vector<char>& bytes)
{
    GroupListing listing;
    devices::parser::mx::Parser container;
    try {
        container.parse(bytes.data(), static_cast<std::uint32_t>(bytes.size()));
    } catch (const std::runtime_error& failure) {
        listing.failure = failure.what();
    }
    listing.groups = container.groups();
    if (!listing.groups.empty()) {
        const auto& last = listing.groups.back();
        listing.framedSize = last.payloadOffset + last.payloadSize + mxformat::groupChecksumSize;
    }
    return listing;
}

} // namespace mxtool
