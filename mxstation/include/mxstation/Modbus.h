#pragma once

#include "mxstation/MxstationApi.h"

#include <cstddef>
#include <cstdint>
#include <optional>

// What the Modbus registers of a coupler contain: data of a station, no map of a certain coupler.
// Addresses are those of the protocol, from 0.

namespace mxstation {

/// Which part of a value comes first.
enum class PartOrder
{
    Big,   ///< The most significant one.
    Little ///< The least significant one.
};

/// A process image in registers, two bytes in each, the first byte of the image in the first one.
struct ModbusImage
{
    std::uint16_t address = 0;      ///< Register with the first byte of the image.
    std::uint8_t readFunction = 0;  ///< Function that reads it: 3 or 4.
    std::uint8_t writeFunction = 0; ///< Function that writes outputs: 6, 16 or 22; 0: an input.
};

/// Registers that each module has: those of position p begin at address + (p - 1) * stride.
struct ModbusModuleRegisters
{
    std::uint16_t address = 0; ///< First register of the module at position 1.
    std::uint16_t stride = 0;  ///< From the first register of a module to that of the next one.
};

/// Returns the first of `registers` of the module at `position`, from 1.
constexpr std::uint64_t firstRegisterOf(const ModbusModuleRegisters& registers,
                                        std::size_t position)
{
    return registers.address + std::uint64_t{registers.stride} * (position - 1);
}

/// Registers that identify the modules in the row: two of each module, its identifier.
struct ModbusIdentity : ModbusModuleRegisters
{
    std::uint8_t readFunction = 3; ///< Function that reads them: 3 or 4.
};

/// The register that makes written parameters active.
struct ModbusCommit
{
    std::uint16_t address = 0;  ///< The register, written with 16.
    std::uint16_t value = 1;    ///< What is written to it.
    bool readsAreStaged = true; ///< Parameters are read as last written, otherwise as active.
};

/// How the parameters, the identity and the process images of a coupler are reached over Modbus.
struct ModbusMap
{
    std::uint8_t unit = 1;                  ///< Unit identifier, 0 to 255; on a line 1 to 247.
    ModbusImage inputs{0, 4, 0};            ///< The input image.
    ModbusImage outputs{0, 3, 16};          ///< The output image.
    ModbusModuleRegisters parameters;       ///< Read with function 3, written with 16.
    std::optional<ModbusIdentity> identity; ///< Empty: modules cannot be identified.
    std::optional<ModbusCommit> commit;     ///< Empty: parameters are active when written.

    std::uint16_t mostRead = 125;     ///< Most registers that a request reads, 4 to 125.
    std::uint16_t mostWritten = 123;  ///< Most registers that a request writes, 4 to 123.
    PartOrder words = PartOrder::Big; ///< Registers of a value that takes more than one.
    PartOrder bytes = PartOrder::Big; ///< Bytes in a register; of an image, its first byte.

    /// For connecting and for each answer, in milliseconds; on a serial line without the time that
    /// the frames themselves take.
    std::uint32_t timeout = 1000;
    std::uint32_t busyTime = 5000; ///< How long a busy coupler is asked again, in milliseconds.
    std::uint32_t retries = 2;     ///< How often a request without an answer is sent again.
};

} // namespace mxstation
