#pragma once

#include <chrono>
#include <cstdint>
#include <vector>

namespace mxonline {

/// An answer of a simulated coupler, and how its frame differs from a correct one.
struct ServedAnswer
{
    std::vector<std::uint8_t> pdu;       ///< Function code and data.
    unsigned copies = 1;                 ///< How often it is sent; 0: not at all.
    std::uint8_t unitChange = 0;         ///< Added to the unit.
    std::uint16_t transactionChange = 0; ///< Added to the transaction (TCP).
    std::uint16_t protocol = 0;          ///< Of the header (TCP).
    std::uint16_t lengthChange = 0;      ///< Added to the length in the header (TCP).
    std::uint16_t checksumChange = 0;    ///< Added to the checksum (RTU).
    std::size_t missing = 0;             ///< Bytes left out at the end of the frame.
    bool sendsHalf = false;              ///< Half of the frame is sent.
    std::vector<std::uint8_t> garbage;   ///< Sent in place of the frame; empty: the frame.
    std::chrono::milliseconds delay{0};  ///< Before it is sent.
    std::chrono::milliseconds pause{0};  ///< Before each of its bytes.
    bool closes = false;                 ///< The connection is closed after it (TCP).
};

/// Returns the bytes to send in place of `frame`.
std::vector<std::uint8_t> sentBytes(const std::vector<std::uint8_t>& frame,
                                    const ServedAnswer& answer);

} // namespace mxonline
