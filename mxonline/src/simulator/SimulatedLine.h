#pragma once

#include "bus/ByteStream.h"
#include "simulator/ServedAnswer.h"
#include "simulator/StopSignal.h"

#include <mxonline/Target.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace mxonline {

/// The unit that a simulated coupler answers for on its line. Called by the thread that serves.
class ServedUnit
{
public:
    ServedUnit() = default;
    virtual ~ServedUnit() = default;
    ServedUnit(const ServedUnit&) = delete;
    ServedUnit& operator=(const ServedUnit&) = delete;

    /// Returns the unit that it answers for.
    virtual std::uint8_t unit() const = 0;

    /// Carries out the request `pdu`, a function code and its data, and returns the answer.
    virtual ServedAnswer answerTo(const std::vector<std::uint8_t>& pdu) = 0;

    virtual void connected() = 0; ///< A client connected.

    /// The line failed, and is opened again.
    virtual void lineFailed(const std::string& reason) = 0;
};

/// The line of a simulated coupler, open from the beginning.
class SimulatedLine
{
public:
    SimulatedLine() = default;
    virtual ~SimulatedLine() = default;
    SimulatedLine(const SimulatedLine&) = delete;
    SimulatedLine& operator=(const SimulatedLine&) = delete;

    /// Returns where clients find it, with the port that the system chose.
    virtual Target address() const = 0;

    /// Serves clients until `stop` is raised.
    virtual void serve(const StopSignal& stop) = 0;
};

/// Opens the line at `target` for `served`, which outlives it. Throws a `mxmodule::Failure` of
/// origin `Output`.
std::unique_ptr<SimulatedLine> listeningLine(const Target& target, ServedUnit& served);

/// Sends `frame` to `stream` as `answer` states. Returns false if the connection is to be closed,
/// or `stop` was raised.
bool sendAnswer(const ByteStream& stream, const std::vector<std::uint8_t>& frame,
                const ServedAnswer& answer, const StopSignal& stop);

} // namespace mxonline
