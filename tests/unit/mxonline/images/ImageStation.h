#pragma once

#include "coupler/CouplerFixture.h"
#include "coupler/RegisterPeer.h"

#include <string>

// A row with data at odd bytes. Inputs, from register 100: byte 0 Pumps (overload bits), bytes 1 to
// 8 Levels (four signed values, the first in the low byte of register 100 and the high byte of
// 101). Outputs, from register 200: byte 0 Pumps (eight bits), bytes 1 to 8 Valves (four values,
// the last in the low byte of register 203 and the high byte of 204).

/// Returns the station of that row; `map` adds keys of its map: "bytes: little, ".
inline std::string imageStation(const std::string& map = "", const std::string& outputs = "")
{
    return "modbus: {unit: 9, " + map + "inputs: {address: 100}, outputs: {address: 200" + outputs +
           "}, parameters: {address: 1000}, identity: {address: 500}}\n"
           "modules:\n"
           "  - {module: MX0208.bin, name: Pumps,\n"
           "     channels: {DO 1: {alias: P_101}, Overload 1: {alias: P_101_fault}}}\n"
           "  - {module: MX0304.bin, name: Levels, channels: {AI 1: {alias: LT_101}}}\n"
           "  - {module: MX0404.bin, name: Valves}\n";
}

/// Sets the registers that identify the modules of the row.
inline void putRow(RegisterPeer& peer)
{
    peer.put(500, {0x5A02, 0x0208, 0x5A03, 0x0304, 0x5A04, 0x0404});
}
