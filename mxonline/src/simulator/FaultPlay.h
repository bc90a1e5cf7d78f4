#pragma once

#include "simulator/ServedAnswer.h"
#include "simulator/ServedRequest.h"
#include "simulator/SimulatedRegisters.h"

#include <mxonline/SimulatedFault.h>

#include <chrono>
#include <cstdint>
#include <optional>
#include <vector>

namespace mxonline {

/// Whether a simulated coupler is on a serial line.
enum class LineKind
{
    Tcp,
    Serial
};

/// The faults that a request has.
using DueFaults = std::vector<const SimulatedFault*>;

/// Carries out the faults of a simulated coupler.
class FaultPlay
{
public:
    /// `simulated` outlives the object; faults of identity are done at once. Throws a
    /// `mxmodule::Failure` of origin `Request` for a fault that this coupler cannot have.
    FaultPlay(std::vector<SimulatedFault> stated, SimulatedRegisters& simulated, LineKind line);

    /// Returns the faults that `request` has. To be called once for each request.
    DueFaults due(const ServedRequest& request);

    /// Returns the exception by which faults reject a request; 0: none does.
    static std::uint8_t rejection(const DueFaults& faults);

    /// Returns whether a request with `faults` is not carried out.
    static bool isIgnored(const DueFaults& faults);

    /// Changes what `request` writes where parameters do not take it.
    void changeValues(const DueFaults& faults, ServedRequest& request) const;

    /// Changes the answer to a request of `function`.
    static void changeAnswer(const DueFaults& faults, std::uint8_t function, ServedAnswer& answer);

private:
    struct Played
    {
        SimulatedFault fault;
        std::vector<RegisterRange> registers; // of the parameter
        std::size_t seen = 0;                 // requests that it may apply to
        std::optional<std::chrono::steady_clock::time_point> end = {}; // of a busy coupler
    };

    void prepare(Played& played, LineKind line);
    void findParameter(Played& played) const;
    bool concerns(const Played& played, const ServedRequest& request) const;
    bool isDue(Played& played) const;

    SimulatedRegisters& registers;
    std::vector<Played> all;
};

} // namespace mxonline
