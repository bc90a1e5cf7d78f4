#pragma once

#include "mxonline/MxonlineApi.h"

#include <cstdint>
#include <string>
#include <variant>

/// A station on its coupler over Modbus: reading and writing parameters, live values of channels,
/// and a simulated coupler. Results are plain values, problems are findings of libmxmodule. Texts
/// are UTF-8.
namespace mxonline {

/// A coupler reached over TCP.
struct TcpTarget
{
    std::string host;         ///< Name or address; IPv6 without brackets.
    std::uint16_t port = 502; ///< 0 only to listen: the system chooses one.
};

/// A coupler on a serial line, in RTU framing with eight data bits.
struct SerialTarget
{
    std::string device;    ///< Such as "/dev/ttyUSB0".
    unsigned baud = 19200; ///< Bits per second.
    char parity = 'E';     ///< 'N', 'E' or 'O'.
    unsigned stopBits = 1; ///< 1 or 2.
};

/// Where a coupler is.
using Target = std::variant<TcpTarget, SerialTarget>;

/// Returns the target "tcp:HOST[:PORT]" or "rtu:DEVICE[,BAUD[,PARITY[,STOPBITS]]]"; an IPv6
/// address is in brackets. Throws a `mxmodule::Failure` of origin `Request` for any other text.
MXONLINE_API Target targetOf(const std::string& text);

/// The same for an address to listen on, whose port may be 0.
MXONLINE_API Target listenTargetOf(const std::string& text);

/// Returns `target` as `targetOf` reads it, with everything stated.
MXONLINE_API std::string targetText(const Target& target);

} // namespace mxonline
