#pragma once

#include "mxonline/MxonlineApi.h"

#include <string>

namespace mxonline {

/// What an event of a simulator is about.
enum class SimulatorEventKind
{
    OutputChanged,    ///< A client gave an output another value.
    ParameterWritten, ///< A client wrote a register of a parameter; a commit may have to follow.
    Committed,        ///< A client made the written parameters active.
    LineFailed        ///< The serial line failed; it is opened again.
};

/// Something that happened in a simulator.
struct SimulatorEvent
{
    SimulatorEventKind kind = SimulatorEventKind::Committed; ///< What it is about.
    std::string name;  ///< Of the channel, or MODULE/PARAMETER; otherwise empty.
    std::string value; ///< Now, for people; of a failed line the reason.

    /// Returns it for people: "Pumps/DO 1 = 1".
    MXONLINE_API std::string text() const;
};

/// Is told what happens in a simulator.
class MXONLINE_API SimulatorObserver
{
public:
    SimulatorObserver() = default;
    virtual ~SimulatorObserver();
    SimulatorObserver(const SimulatorObserver&) = delete;
    SimulatorObserver& operator=(const SimulatorObserver&) = delete;

    /// Called by the simulator's thread, before the request is answered. It must not throw, and not
    /// stop the simulator.
    virtual void happened(const SimulatorEvent& event) = 0;
};

} // namespace mxonline
