#include "bus/RegisterReading.h"

#include "bus/ModbusException.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace mxonline {

namespace {

std::vector<RegisterRange> rangesOf(const std::vector<RegisterItem>& items)
{
    std::vector<RegisterRange> ranges;
    std::transform(items.begin(), items.end(), std::back_inserter(ranges),
                   [](const RegisterItem& item) { return item.range; });
    return ranges;
}

// The part of `range` that is in `request`.
RegisterRange partIn(const RegisterRange& range, const RegisterRange& request)
{
    const std::uint32_t begin = std::max(range.address, request.address);
    return {begin, std::min(range.end(), request.end()) - begin};
}

std::string subjectOf(const std::vector<RegisterItem>& items)
{
    const RegisterItem& one = items.front();
    const RegisterItem& last = items.back();
    if (one.module != last.module) {
        return one.module + " to " + last.module;
    }
    const std::string beginning = one.module.empty() ? "" : one.module + ", ";
    return beginning + one.subject + (one.subject == last.subject ? "" : " to " + last.subject);
}

} // namespace

RegisterReading::RegisterReading(std::uint8_t readFunction, std::vector<RegisterItem> wanted,
                                 std::uint16_t mostRead)
    : function(readFunction), most(mostRead)
{
    wanted.erase(std::remove_if(wanted.begin(), wanted.end(),
                                [](const RegisterItem& item) { return item.range.count == 0; }),
                 wanted.end());
    requests = planned(wanted, Gaps::Included);
    if (!wanted.empty()) {
        first = wanted.front().range.address;
        std::uint32_t end = first;
        for (const RegisterItem& item : wanted) {
            end = std::max(end, item.range.end());
        }
        all.resize(end - first);
    }
}

void RegisterReading::read(ModbusClient& client)
{
    for (std::size_t i = 0; i < requests.size();) {
        try {
            readRequest(requests[i], client);
            ++i;
        } catch (const RefusedRequest& refused) {
            if (refused.code() != illegalDataAddress || !leaveOutGaps(i)) {
                throw;
            }
        }
    }
}

std::vector<std::uint16_t> RegisterReading::values(const RegisterRange& range) const
{
    const auto begin = all.begin() + static_cast<std::ptrdiff_t>(range.address - first);
    return {begin, begin + static_cast<std::ptrdiff_t>(range.count)};
}

// Each request has the items in it; of an item that takes several requests, each has its part.
std::vector<RegisterReading::Request>
RegisterReading::planned(const std::vector<RegisterItem>& wanted, Gaps gaps) const
{
    std::vector<Request> made;
    for (const RegisterRange& range : requestsFor(rangesOf(wanted), most, gaps)) {
        Request& request = made.emplace_back();
        request.range = range;
        for (const RegisterItem& item : wanted) {
            if (item.range.overlaps(range)) {
                request.items.push_back({partIn(item.range, range), item.module, item.subject});
            }
        }
        request.subject = subjectOf(request.items);
    }
    return made;
}

void RegisterReading::readRequest(const Request& request, ModbusClient& client)
{
    const std::vector<std::uint16_t> values = client.read(function, request.range, request.subject);
    std::copy(values.begin(), values.end(),
              all.begin() + static_cast<std::ptrdiff_t>(request.range.address - first));
}

// Divides the request at its gaps. Returns false if it has none.
bool RegisterReading::leaveOutGaps(std::size_t index)
{
    const std::vector<Request> parts = planned(requests[index].items, Gaps::LeftOut);
    if (parts.size() == 1) {
        return false;
    }
    const auto at = requests.begin() + static_cast<std::ptrdiff_t>(index);
    requests.insert(requests.erase(at), parts.begin(), parts.end());
    return true;
}

} // namespace mxonline
