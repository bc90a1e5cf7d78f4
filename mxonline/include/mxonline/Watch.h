#pragma once

#include "mxonline/ChannelValue.h"
#include "mxonline/Coupler.h"
#include "mxonline/NamedChannel.h"

#include <chrono>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace mxonline {

/// The values of watched channels.
struct Sample
{
    std::chrono::system_clock::time_point time; ///< Before the first request for it.
    std::vector<ChannelValue> values;           ///< In the order of `Watch::channels`.
    std::vector<bool> isChanged; ///< Whether a value differs from that of the sample before; of
                                 ///< the first sample none.

    MXONLINE_API bool hasChanges() const; ///< Whether any value differs.
};

/// Reads the values of channels from the process images of a coupler, again and again.
///
/// The requests are planned once, the fewest that contain the channels. A value is never divided
/// between two requests, unless it alone has more registers than a request may read; values of
/// different requests are from different times. Outputs are those that the coupler has at present.
class MXONLINE_API Watch
{
public:
    /// Watches the channels that `names` select: an alias; MODULE/CHANNEL, with name or position of
    /// the module; the name of a channel, if no other has it; the name or position of a module for
    /// all of its channels. No names select all channels of the station. Those of a module or a
    /// station that have no value, because they have no bits or are outside their image, are left
    /// out.
    ///
    /// `coupler` outlives the object. Sends nothing. Throws one `mxmodule::Failure` of origin
    /// `Request` with an error for each unknown or ambiguous name.
    explicit Watch(Coupler& coupler, const std::vector<std::string>& names = {});
    ~Watch();
    Watch(Watch&&) noexcept;            ///< Leaves the other one unusable.
    Watch& operator=(Watch&&) noexcept; ///< The same.

    /// Returns the watched channels, in the order of the plan.
    const std::vector<NamedChannel>& channels() const;

    /// Returns the number of requests for a sample.
    std::size_t requestCount() const;

    /// Reads the values; the first time and after a fault also the identity of the modules, if the
    /// coupler has it. Throws a `mxmodule::Failure` of origin `Output`: after a fault, also if a
    /// module is not that of the station; then the next call tries again.
    Sample sample();

private:
    class Content;
    std::unique_ptr<Content> content;
};

} // namespace mxonline
