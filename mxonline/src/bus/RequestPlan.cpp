#include "bus/RequestPlan.h"

#include <algorithm>

namespace mxonline {

namespace {

void addDivided(std::vector<RegisterRange>& requests, RegisterRange item, std::uint32_t most)
{
    while (item.count > 0) {
        const std::uint32_t count = std::min(item.count, most);
        requests.push_back({item.address, count});
        item = {item.address + count, item.count - count};
    }
}

} // namespace

// A request that begins at the first item not yet contained, and has as many further ones as
// possible, is never worse than one that ends earlier.
std::vector<RegisterRange> requestsFor(const std::vector<RegisterRange>& items, std::uint32_t most,
                                       Gaps gaps)
{
    std::vector<RegisterRange> requests;
    for (const RegisterRange& item : items) {
        if (item.count == 0) {
            continue;
        }
        RegisterRange* const last = requests.empty() ? nullptr : &requests.back();
        const bool isNear =
            last != nullptr && (gaps == Gaps::Included || item.address <= last->end());
        if (isNear && item.end() <= last->address + most) {
            last->count = std::max(last->end(), item.end()) - last->address;
        } else {
            addDivided(requests, item, most);
        }
    }
    return requests;
}

} // namespace mxonline
