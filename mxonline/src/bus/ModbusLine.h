#pragma once

#include "mxonline/Target.h"

#include <mxstation/Modbus.h>

#include <cstdint>
#include <memory>
#include <vector>

namespace mxonline {

/// An answer with the frames for messages.
struct Exchange
{
    std::vector<std::uint8_t> answer;   ///< Function code and data.
    std::vector<std::uint8_t> sent;     ///< The whole frame.
    std::vector<std::uint8_t> received; ///< The whole frame.
};

/// A connection to a coupler that carries one request at a time. After a `LineError` it is closed,
/// so that a late answer is never taken for that of a later request.
class ModbusLine
{
public:
    ModbusLine() = default;
    virtual ~ModbusLine() = default;
    ModbusLine(const ModbusLine&) = delete;
    ModbusLine& operator=(const ModbusLine&) = delete;

    /// Sends `request`, a function code and its data, and returns the answer to it: of this unit,
    /// of the same function or its exception, and of at least two bytes. Opens the connection if it
    /// is not. Throws a `LineError`.
    virtual Exchange exchange(const std::vector<std::uint8_t>& request) = 0;
};

/// Returns whether an answer of the function code `answered` is one to a request of `requested`, or
/// its exception.
bool isOfFunction(std::uint8_t answered, std::uint8_t requested);

/// Throws a `LineError` unless `exchange` has an answer of the function of `request`, or its
/// exception.
void requireFunction(const std::vector<std::uint8_t>& request, const Exchange& exchange);

/// Returns the line to `target`, not yet open, for the unit and the time to wait of `map`.
std::unique_ptr<ModbusLine> lineTo(const Target& target, const mxstation::ModbusMap& map);

} // namespace mxonline
