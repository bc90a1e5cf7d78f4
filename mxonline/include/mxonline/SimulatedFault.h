#pragma once

#include "mxonline/MxonlineApi.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace mxonline {

/// What a simulated coupler does wrong.
enum class FaultKind
{
    Exception,   ///< It rejects requests with an exception code.
    Busy,        ///< It rejects requests for a time: device busy.
    Acknowledge, ///< The same: acknowledge.
    Refuse,      ///< It rejects what is written to a parameter: illegal data value.
    Silence,     ///< It neither carries out nor answers a request.
    Lost,        ///< It carries out a request; the answer is lost.
    Late,        ///< Its answer comes late.
    Slow,        ///< The bytes of its answer come slowly.
    Short,       ///< The last byte of the answer is missing.
    Long,        ///< The answer has two bytes too many.
    Twice,       ///< It answers twice.
    Garbage,     ///< It answers by bytes of another protocol.
    Unit,        ///< The answer is of another unit.
    Transaction, ///< The answer is of another transaction (TCP).
    Protocol,    ///< The answer is of another protocol (TCP).
    Length,      ///< The header states ten bytes more than there are (TCP).
    Checksum,    ///< The checksum is wrong (RTU).
    Function,    ///< The answer is of another function.
    Count,       ///< The answer to a read states two bytes more than it has.
    Echo,        ///< The answer to a write confirms another address.
    Close,       ///< It closes the connection in place of an answer (TCP).
    Half,        ///< It closes the connection in the middle of an answer (TCP).
    Identity,    ///< It has another module at a position.
    Stuck,       ///< A parameter keeps its value; the write is confirmed.
    Clamp        ///< Registers of a parameter take at most a value; the write is confirmed.
};

/// A fault of a simulated coupler, and which requests have it.
struct SimulatedFault
{
    FaultKind kind = FaultKind::Silence;       ///< What it does wrong.
    std::string text;                          ///< As stated, for messages; may be empty.
    std::uint8_t code = 0;                     ///< Of `Exception`: its code.
    std::chrono::milliseconds time{0};         ///< Of `Busy`, `Acknowledge`, `Late` and `Slow`.
    std::size_t position = 0;                  ///< Of `Identity`: in the row, from 1.
    std::uint32_t moduleId = 0;                ///< Of `Identity`: of the other module.
    std::string parameter;                     ///< Of `Refuse`, `Stuck`, `Clamp`: MODULE/PARAMETER.
    std::uint16_t most = 0;                    ///< Of `Clamp`: what a register takes at most.
    std::size_t after = 0;                     ///< So many requests are answered correctly before.
    std::optional<std::size_t> times = {};     ///< So many requests have it; empty: all.
    std::optional<std::uint8_t> function = {}; ///< Only requests of this function have it.
    std::optional<std::uint16_t> address = {}; ///< Only requests about this register have it.
};

/// How a fault is stated.
struct FaultDescription
{
    FaultKind kind;      ///< Which it is.
    std::string form;    ///< "exception=CODE".
    std::string meaning; ///< What happens, for lists.
};

/// Returns every fault, in the order of lists.
MXONLINE_API const std::vector<FaultDescription>& faultDescriptions();

/// Returns the fault "FORM[,after=N][,times=N][,function=F][,address=A]"; numbers may begin with
/// 0x, times are those of `timeOf` or milliseconds. Throws a `mxmodule::Failure` of origin
/// `Request` for any other text.
MXONLINE_API SimulatedFault simulatedFaultOf(const std::string& text);

} // namespace mxonline
