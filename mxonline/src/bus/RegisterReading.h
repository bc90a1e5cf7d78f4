#pragma once

#include "bus/ModbusClient.h"
#include "bus/RequestPlan.h"

#include <cstdint>
#include <string>
#include <vector>

namespace mxonline {

/// Registers that belong together, such as those of a parameter.
struct RegisterItem
{
    RegisterRange range;
    std::string module;  ///< `module 2 "Levels"`.
    std::string subject; ///< What of it: `parameter "Limit"`.
};

/// Registers read by one function in the fewest requests, planned once, read as often as needed.
///
/// Requests go over gaps where that saves one. If the coupler has no registers there (exception 2),
/// the same items are read without gaps, from then on.
class RegisterReading
{
public:
    /// `wanted` are ordered by address. A request reads at most `mostRead` registers.
    RegisterReading(std::uint8_t readFunction, std::vector<RegisterItem> wanted,
                    std::uint16_t mostRead);

    /// Reads all items. Throws a `mxmodule::Failure`; the values are then not complete.
    void read(ModbusClient& client);

    /// Returns the registers of `range`, part of an item, as last read; before that 0.
    std::vector<std::uint16_t> values(const RegisterRange& range) const;

    /// Returns the number of requests that `read` sends.
    std::size_t requestCount() const { return requests.size(); }

private:
    struct Request
    {
        RegisterRange range;
        std::vector<RegisterItem> items;
        std::string subject;
    };

    std::vector<Request> planned(const std::vector<RegisterItem>& wanted, Gaps gaps) const;
    void readRequest(const Request& request, ModbusClient& client);
    bool leaveOutGaps(std::size_t index);

    std::uint8_t function;
    std::uint16_t most;
    std::vector<Request> requests;
    std::uint32_t first = 0;        // address of the first of `all`
    std::vector<std::uint16_t> all; // from the first register to the last
};

} // namespace mxonline
