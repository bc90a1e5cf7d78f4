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
        if (readRequest(requests[i], client)) {
            ++i;
        } else {
            leaveOutGaps(i);
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
            if (item.range.address < range.end() && range.address < item.range.end()) {
                request.items.push_back({partIn(item.range, range), item.module, item.subject});
            }
        }
        request.subject = subjectOf(request.items);
    }
    return made;
}

// False: it goes over registers that the coupler does not have.
bool RegisterReading::readRequest(const Request& request, ModbusClient& client)
{
    try {
        const std::vector<std::uint16_t> values =
            client.read(function, request.range, request.subject);
        std::copy(values.begin(), values.end(),
                  all.begin() + static_cast<std::ptrdiff_t>(request.range.address - first));
        return true;
    } catch (const RefusedRequest& refused) {
        const bool hasGaps = planned(request.items, Gaps::LeftOut).size() > 1;
        if (refused.code() != illegalDataAddress || !hasGaps) {
            throw;
        }
        return false;
    }
}

void RegisterReading::leaveOutGaps(std::size_t index)
{
    const std::vector<Request> parts = planned(requests[index].items, Gaps::LeftOut);
    const auto at = requests.begin() + static_cast<std::ptrdiff_t>(index);
    requests.insert(requests.erase(at), parts.begin(), parts.end());
}

} // namespace mxonline
