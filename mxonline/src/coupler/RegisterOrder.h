#pragma once

#include <mxstation/Modbus.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace mxonline {

/// Turns the `count` registers from `first` on, one value with the most significant word first and
/// its high byte first, into the order of `map`, or back: doing it twice changes nothing.
void reorderValue(std::vector<std::uint16_t>& registers, std::size_t first, std::size_t count,
                  const mxstation::ModbusMap& map);

/// Returns the bytes of a process image in `registers`, in the order of `map`: the first byte of a
/// register is its high byte, or its low byte if the map's bytes are little.
std::vector<std::uint8_t> imageBytesOf(const std::vector<std::uint16_t>& registers,
                                       const mxstation::ModbusMap& map);

/// Returns the register with these two bytes of a process image.
std::uint16_t registerOf(std::uint8_t first, std::uint8_t second, const mxstation::ModbusMap& map);

} // namespace mxonline
