#include "bus/SerialLine.h"

#include "bus/LineError.h"
#include "bus/RtuFrame.h"

#include <fmt/format.h>

#include <termios.h>

#include <algorithm>
#include <cerrno>
#include <thread>
#include <utility>

namespace mxonline {

namespace {

using std::chrono::microseconds;
using std::chrono::milliseconds;

constexpr const char* lineHint = "compare baud rate, parity, stop bits and \"unit\" with the "
                                 "coupler; look at the wires, their polarity and termination";

// The pause between two frames: 3.5 characters of 11 bits, above 19,200 baud always 1.75 ms.
microseconds silenceAt(unsigned baud)
{
    return microseconds(baud > 19200 ? 1750 : 38'500'000 / baud);
}

std::string openHint(int error)
{
    switch (error) {
    case ENOENT:
    case ENODEV:
    case ENXIO:
        return "the serial line does not exist: compare its name, look at the adapter's plug "
               "(ls /dev/ttyUSB* /dev/ttyS*)";
    case EACCES:
        return "add the user to the group that owns the device, usually dialout";
    case EBUSY:
        return "another program has opened it";
    default:
        return "a serial line is a device such as /dev/ttyUSB0";
    }
}

} // namespace

SerialLine::SerialLine(SerialTarget coupler, std::uint8_t unitIdentifier,
                       std::uint32_t milliseconds)
    : target(std::move(coupler)), unit(unitIdentifier), timeout(milliseconds)
{}

void SerialLine::open()
{
    context.reset(modbus_new_rtu(target.device.c_str(), static_cast<int>(target.baud),
                                 target.parity, 8, static_cast<int>(target.stopBits)));
    errno = 0;
    if (context == nullptr || modbus_set_slave(context.get(), unit) != 0 ||
        modbus_connect(context.get()) != 0) {
        const int error = errno;
        context.reset();
        throw LineError(fmt::format("the serial line {} cannot be opened: {}", target.device,
                                    modbus_strerror(error)),
                        openHint(error));
    }
    lastByte = ByteStream::Clock::now();
}

Exchange SerialLine::exchange(const std::vector<std::uint8_t>& request)
{
    if (context == nullptr) {
        open();
    }
    waitForSilence();
    // What came without a request is noise, or an answer that was waited for no longer.
    static_cast<void>(tcflush(modbus_get_socket(context.get()), TCIFLUSH));
    const std::vector<std::uint8_t> sent = rtuFrame(unit, request);
    try {
        const std::vector<std::uint8_t> received = receive(sent);
        lastByte = ByteStream::Clock::now();
        return {{received.begin() + 1, received.end() - 2}, sent, received};
    } catch (const LineError&) {
        context.reset();
        throw;
    }
}

void SerialLine::waitForSilence() const
{
    std::this_thread::sleep_until(lastByte + silenceAt(target.baud));
}

std::vector<std::uint8_t> SerialLine::receive(const std::vector<std::uint8_t>& sent) const
{
    const std::vector<std::uint8_t> received = readFrame(sent);
    if (!hasRtuChecksum(received)) {
        throw LineError("the answer has a wrong checksum", lineHint, sent, received);
    }
    if (received[0] != unit) {
        throw LineError(fmt::format("the answer is of unit {}, expected {}", received[0], unit),
                        "two devices may have the same unit, or another master is on the line",
                        sent, received);
    }
    return received;
}

// The answer until its own size, as its first bytes state it.
std::vector<std::uint8_t> SerialLine::readFrame(const std::vector<std::uint8_t>& sent) const
{
    const ByteStream stream(modbus_get_socket(context.get()));
    const auto deadline = ByteStream::Clock::now() + milliseconds(timeout);
    std::vector<std::uint8_t> received;
    StreamEnd end = stream.write(sent, deadline);
    if (end == StreamEnd::Complete) {
        end = stream.read(received, 3, deadline);
    }
    if (end == StreamEnd::Complete) {
        const auto size = rtuAnswerSize(received);
        if (!size) {
            throw LineError(
                fmt::format("the answer is of function {}, expected {}", received[1], sent[1]),
                lineHint, sent, received);
        }
        end = stream.read(received, *size, deadline);
    }
    if (end == StreamEnd::Closed) {
        throw LineError(fmt::format("the serial line {} failed", target.device),
                        "look at the adapter's plug", sent, received);
    }
    if (end == StreamEnd::TimedOut) {
        throw LineError(received.empty()
                            ? fmt::format("no answer within {} ms", timeout)
                            : fmt::format("the answer ends after {} bytes", received.size()),
                        lineHint, sent, received);
    }
    return received;
}

} // namespace mxonline
