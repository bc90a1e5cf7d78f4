#pragma once

#include <cstdint>
#include <string>

namespace mxonline {

constexpr std::uint8_t exceptionBit = 0x80; ///< Of the function code in an exception.

/// The exception codes of the protocol that need a treatment of their own.
constexpr std::uint8_t illegalFunction = 1;
constexpr std::uint8_t illegalDataAddress = 2;
constexpr std::uint8_t illegalDataValue = 3;
constexpr std::uint8_t deviceAcknowledges = 5;
constexpr std::uint8_t deviceIsBusy = 6;

/// Returns `exception 2 "illegal data address"`.
std::string exceptionText(std::uint8_t code);

/// Returns what to do about it.
std::string exceptionHint(std::uint8_t code);

} // namespace mxonline
