#include "mxonline/Target.h"

#include <fmt/format.h>
#include <mxmodule/Finding.h>
#include <text/WholeNumber.h>

#include <algorithm>
#include <vector>

namespace mxonline {

namespace {

using mxmodule::Failure;
using mxmodule::Origin;

constexpr const char* accepted =
    "tcp:HOST[:PORT] or rtu:DEVICE[,BAUD[,PARITY[,STOPBITS]]], such as "
    "tcp:192.168.1.10:502 or rtu:/dev/ttyUSB0,19200,E,1";

// What the serial interfaces of Linux offer from 1,200 baud on.
constexpr unsigned baudRates[] = {1200,   2400,   4800,   9600,   19200,  38400,  57600,
                                  115200, 230400, 460800, 500000, 921600, 1000000};

[[noreturn]] void reject(const std::string& text, const std::string& reason)
{
    throw Failure(Origin::Request, text, reason, fmt::format("a target is {}", accepted));
}

std::uint16_t portOf(const std::string& text, const std::string& digits, std::uint16_t least)
{
    const auto port = text::wholeNumber<std::uint16_t>(digits);
    if (!port || *port < least) {
        reject(text, fmt::format("found the port \"{}\", expected a number from {} to 65535",
                                 digits, least));
    }
    return *port;
}

TcpTarget tcpTargetOf(const std::string& text, const std::string& rest, std::uint16_t leastPort)
{
    const bool isBracketed = !rest.empty() && rest.front() == '[';
    const std::size_t hostEnd = isBracketed ? rest.find(']') : rest.find(':');
    if (isBracketed && hostEnd == std::string::npos) {
        reject(text, "\"]\" is missing after the IPv6 address");
    }
    TcpTarget target;
    target.host = isBracketed ? rest.substr(1, hostEnd - 1) : rest.substr(0, hostEnd);
    if (target.host.empty()) {
        reject(text, "the host is missing");
    }
    const std::string port = hostEnd == std::string::npos ? ""
                             : isBracketed                ? rest.substr(hostEnd + 1)
                                                          : rest.substr(hostEnd);
    if (port.empty()) {
        return target;
    }
    const bool isUnbracketed = std::count(port.begin(), port.end(), ':') > 1;
    if (port.front() != ':' || isUnbracketed) {
        reject(text, isUnbracketed ? "an IPv6 address is in brackets, such as tcp:[::1]:502"
                                   : fmt::format("found \"{}\" after the address", port));
    }
    target.port = portOf(text, port.substr(1), leastPort);
    return target;
}

std::vector<std::string> partsOf(const std::string& rest)
{
    std::vector<std::string> parts;
    std::size_t begin = 0;
    for (std::size_t comma = rest.find(','); comma != std::string::npos;
         comma = rest.find(',', begin)) {
        parts.push_back(rest.substr(begin, comma - begin));
        begin = comma + 1;
    }
    parts.push_back(rest.substr(begin));
    return parts;
}

unsigned baudOf(const std::string& text, const std::string& digits)
{
    const auto baud = text::wholeNumber<unsigned>(digits);
    if (!baud ||
        std::find(std::begin(baudRates), std::end(baudRates), *baud) == std::end(baudRates)) {
        reject(text, fmt::format("found {} baud, expected one of {}", digits,
                                 fmt::join(baudRates, ", ")));
    }
    return *baud;
}

SerialTarget serialTargetOf(const std::string& text, const std::string& rest)
{
    const std::vector<std::string> parts = partsOf(rest);
    SerialTarget target;
    target.device = parts[0];
    if (target.device.empty()) {
        reject(text, "the serial device is missing");
    }
    if (parts.size() > 4) {
        reject(text, fmt::format("found \"{}\" after the stop bits", parts[4]));
    }
    if (parts.size() > 1) {
        target.baud = baudOf(text, parts[1]);
    }
    if (parts.size() > 2) {
        if (parts[2] != "N" && parts[2] != "E" && parts[2] != "O") {
            reject(text, fmt::format("found the parity \"{}\", expected N, E or O", parts[2]));
        }
        target.parity = parts[2].front();
    }
    if (parts.size() > 3) {
        if (parts[3] != "1" && parts[3] != "2") {
            reject(text, fmt::format("found \"{}\" stop bits, expected 1 or 2", parts[3]));
        }
        target.stopBits = parts[3] == "1" ? 1 : 2;
    }
    return target;
}

Target readTarget(const std::string& text, std::uint16_t leastPort)
{
    if (text.find('\0') != std::string::npos) {
        reject(text, "found a zero byte");
    }
    if (text.compare(0, 4, "tcp:") == 0) {
        return tcpTargetOf(text, text.substr(4), leastPort);
    }
    if (text.compare(0, 4, "rtu:") == 0) {
        return serialTargetOf(text, text.substr(4));
    }
    reject(text, "the target begins with neither \"tcp:\" nor \"rtu:\"");
}

} // namespace

Target targetOf(const std::string& text)
{
    return readTarget(text, 1);
}

Target listenTargetOf(const std::string& text)
{
    return readTarget(text, 0);
}

std::string targetText(const Target& target)
{
    if (const auto* const tcp = std::get_if<TcpTarget>(&target)) {
        const bool isBracketed = tcp->host.find(':') != std::string::npos;
        return fmt::format(isBracketed ? "tcp:[{}]:{}" : "tcp:{}:{}", tcp->host, tcp->port);
    }
    const auto& serial = std::get<SerialTarget>(target);
    return fmt::format("rtu:{},{},{},{}", serial.device, serial.baud, serial.parity,
                       serial.stopBits);
}

} // namespace mxonline
