#pragma once

#include "bus/RegisterRange.h"

#include <cstdint>
#include <vector>

namespace mxonline {

/// A request as a coupler reads it.
struct ServedRequest
{
    std::uint8_t function = 0;
    RegisterRange read;                ///< No registers: it reads none.
    RegisterRange written;             ///< No registers: it writes none.
    std::vector<std::uint16_t> values; ///< Those to write.
    std::uint16_t keptBits = 0;        ///< Of the register of function 22, those not written.
    std::uint8_t exception = 0;        ///< Why it is rejected whatever registers there are; 0: not.

    /// Returns whether it is about register `address`.
    bool contains(std::uint32_t address) const
    {
        return (read.address <= address && address < read.end()) ||
               (written.address <= address && address < written.end());
    }
};

/// Returns the request `pdu`, a function code and its data, to a coupler that reads at most
/// `mostRead` and writes at most `mostWritten` registers at once. Functions 3, 4, 6, 16, 22 and 23;
/// any other is rejected with exception 1, a size or number against the protocol with 3.
ServedRequest servedRequest(const std::vector<std::uint8_t>& pdu, std::uint32_t mostRead,
                            std::uint32_t mostWritten);

/// Returns the bytes of the request whose first bytes are `pdu`, its function code included, as the
/// function states them; 0: more bytes must be known; -1: the function is unknown.
int servedRequestSize(const std::uint8_t* pdu, std::size_t known);

} // namespace mxonline
