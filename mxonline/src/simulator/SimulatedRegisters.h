#pragma once

#include "coupler/ModuleRegisters.h"
#include "simulator/ServedRequest.h"

#include <mxstation/Plan.h>

#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

namespace mxonline {

/// The registers of a simulated coupler and what is in them. For one thread at a time.
///
/// It begins with the defaults of the modules and images of zero. Each register exists only for the
/// functions by which the station reads and writes it.
class SimulatedRegisters
{
public:
    /// `planned`, which has a Modbus map, outlives the object. `isStrict`: registers between the
    /// parameters of two modules do not exist, otherwise they are 0. Throws a `mxmodule::Failure`
    /// when parameters have no Modbus form.
    SimulatedRegisters(const mxstation::Plan& planned, bool isStrict);

    /// Returns the exception with which the coupler rejects `request`; 0: it carries it out.
    std::uint8_t rejection(const ServedRequest& request) const;

    /// Carries out the writes of `request`, which is not rejected.
    void write(const ServedRequest& request);

    /// Returns the registers that `request` reads, which is not rejected.
    std::vector<std::uint16_t> read(const ServedRequest& request) const;

    /// Returns what was last written to register `address`, which can be written.
    std::uint16_t written(std::uint32_t address) const
    {
        return valueAt(holding.at(address), true);
    }

    std::vector<std::uint8_t>& inputs() { return inputImage; }
    std::vector<std::uint8_t>& outputs() { return outputImage; }
    const std::vector<std::uint8_t>& inputs() const { return inputImage; }
    const std::vector<std::uint8_t>& outputs() const { return outputImage; }

    const std::vector<ModuleRegisters>& modules() const { return row; }

    /// Returns the parameters of the module at `index` that are active, or last written, as
    /// `mxmodule::Module::registers` has them.
    std::vector<std::uint16_t> active(std::size_t index) const;
    std::vector<std::uint16_t> staged(std::size_t index) const;

    bool hasIdentity() const { return map.identity.has_value(); }

    /// Makes the coupler say that it has another module at `index`.
    void setModuleId(std::size_t index, std::uint32_t moduleId);

    /// Returns how often parameters were committed.
    std::size_t commits() const { return committed; }

private:
    enum class Use : std::uint8_t
    {
        Gap,
        Input,
        Output,
        Parameter,
        Identity,
        Commit
    };

    struct Place
    {
        Use use;
        std::uint32_t module; // index
        std::uint32_t index;  // in the image or in the registers of the module
    };

    using Space = std::unordered_map<std::uint32_t, Place>; // by address

    void placeImages();
    void placeModules();
    void placeGaps();
    const Space& spaceOf(std::uint8_t function) const { return function == 4 ? input : holding; }
    std::uint16_t valueAt(const Place& place, bool isForWriting) const;
    void put(const Place& place, std::uint16_t value);
    void putOutput(std::size_t index, const std::vector<std::uint8_t>& bytes);

    const mxstation::ModbusMap& map;
    std::vector<ModuleRegisters> row;
    Space holding;
    Space input;
    std::vector<std::uint8_t> inputImage;
    std::vector<std::uint8_t> outputImage;
    // In the order of the coupler.
    std::vector<std::vector<std::uint16_t>> stagedWords;
    std::vector<std::vector<std::uint16_t>> activeWords;
    std::vector<std::vector<std::uint16_t>> identities;
    std::size_t committed = 0;
};

} // namespace mxonline
