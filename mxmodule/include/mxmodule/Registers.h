#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace mxmodule {

/// Returns the Modbus registers in `bytes`, each with its high byte first. A single byte at the end
/// is left out.
inline std::vector<std::uint16_t> registersOfBytes(const std::vector<char>& bytes)
{
    std::vector<std::uint16_t> registers;
    registers.reserve(bytes.size() / 2);
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        registers.push_back(static_cast<std::uint16_t>(static_cast<unsigned char>(bytes[i]) << 8U |
                                                       static_cast<unsigned char>(bytes[i + 1])));
    }
    return registers;
}

/// Returns the bytes of Modbus registers, of each the high byte first: what `Module::decode` reads.
inline std::vector<char> bytesOfRegisters(const std::vector<std::uint16_t>& registers)
{
    std::vector<char> bytes;
    bytes.reserve(registers.size() * 2);
    for (const std::uint16_t word : registers) {
        bytes.push_back(static_cast<char>(word >> 8));
        bytes.push_back(static_cast<char>(word & 0xFF));
    }
    return bytes;
}

} // namespace mxmodule
