#pragma once

#include "mxonline/ChannelValue.h"
#include "mxonline/SimulatedFault.h"
#include "mxonline/SimulatorEvent.h"
#include "mxonline/Target.h"

#include <mxmodule/Finding.h>
#include <mxstation/Plan.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace mxonline {

/// How a coupler is simulated.
struct SimulatorOptions
{
    /// Registers between the parameters of two modules do not exist; otherwise they are 0.
    bool isStrict = false;
    std::vector<SimulatedFault> faults = {}; ///< What it does wrong.
    SimulatorObserver* observer = nullptr;   ///< Outlives the simulator; may be null.
};

/// What clients did with a simulator.
struct SimulatorCounts
{
    std::size_t connections = 0;      ///< Over TCP.
    std::size_t requests = 0;         ///< For its unit.
    std::size_t exceptions = 0;       ///< Of these, answered with an exception.
    std::size_t faults = 0;           ///< Of the requests, those that had a fault.
    std::size_t registersRead = 0;    ///< In answers.
    std::size_t registersWritten = 0; ///< By requests that were carried out.
};

/// Returns `counts` as JSON, schema "mxonline.simulator-counts" version 1.
MXONLINE_API std::string countsJson(const SimulatorCounts& counts);

/// The coupler of a station, simulated: it answers Modbus requests over TCP or RTU in a thread of
/// its own. It begins with the defaults of the modules, inputs and outputs of zero, and connects
/// neither to modules nor to each other: an output changes no input.
///
/// Every operation may be called by any thread, except for `stop` and the destructor, which the
/// observer must not call.
class MXONLINE_API Simulator
{
public:
    /// Listens at `listenTarget`, of which the port may be 0, and begins to serve.
    ///
    /// Keeps a copy of `plan`. Throws a `mxmodule::Failure` when the plan has errors or no
    /// `modbus:` map, or when parameters have no Modbus form; of origin `Request` for a fault that
    /// this coupler cannot have; of origin `Output` when it cannot
    /// listen: the port is in use, there is no such device.
    Simulator(const mxstation::Plan& plan, const Target& listenTarget,
              const SimulatorOptions& options = {});
    ~Simulator(); ///< Stops it.
    Simulator(const Simulator&) = delete;
    Simulator& operator=(const Simulator&) = delete;

    /// Closes all connections and ends the thread. Afterwards what it has can still be read.
    void stop();

    /// Returns where clients find it, with the port that the system chose.
    Target address() const;

    const mxstation::Plan& plan() const; ///< The copy, as long as the simulator.

    std::vector<std::uint8_t> inputs() const;  ///< The bytes of the input image.
    std::vector<std::uint8_t> outputs() const; ///< The bytes of the output image.

    /// Returns the value of the channel called `channel`. Throws a `mxmodule::Failure` of origin
    /// `Request` when there is none.
    ChannelValue value(const std::string& channel) const;

    /// Sets the input called `channel` to `value`, as `mxtool station set` takes both. Throws a
    /// `mxmodule::Failure` of origin `Request`.
    void setInput(const std::string& channel, const std::string& value);

    /// The same for an output. The observer is not told of it.
    void setOutput(const std::string& channel, const std::string& value);

    /// Returns the active parameters of the module at `position`, from 1, as
    /// `mxmodule::Module::registers` has them. Throws `std::out_of_range`.
    std::vector<std::uint16_t> parameters(std::size_t position) const;

    /// Returns what clients did until now.
    SimulatorCounts counts() const;

private:
    class Content;
    std::unique_ptr<Content> content;
};

/// Returns a note when other computers reach a simulator that listens at `target`.
MXONLINE_API std::vector<mxmodule::Finding> listeningNotes(const Target& target);

} // namespace mxonline
