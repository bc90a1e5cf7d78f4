#pragma once

#include <cstdint>
#include <vector>

/// The registers of the defaults of an MX0304: module, then four channels with signal range, upper
/// and lower limit, hysteresis, wire break check and filter depth. One byte is the high byte.
inline const std::vector<std::uint16_t> defaultsOf0304 = {
    0x3200, 0x0000, 0x251C, 0xDAE4, 0x003C, 0x0100, 0x0000, 0x0100, 0x251D,
    0xDAE3, 0x003D, 0x0100, 0x0100, 0x0200, 0x251E, 0xDAE2, 0x003E, 0x0100,
    0x0200, 0x0400, 0x251F, 0xDAE1, 0x003F, 0x0100, 0x0300};
