#include "bus/SerialLine.h"

#include "bus/LineError.h"
#include "bus/RtuFrame.h"
#include "bus/SerialPort.h"

#include <fmt/format.h>

#include <termios.h>

#include <algorithm>
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

} // namespace

SerialLine::SerialLine(SerialTarget coupler, std::uint8_t unitIdentifier,
                       std::uint32_t milliseconds)
    : target(std::move(coupler)), unit(unitIdentifier), timeout(milliseconds)
{}

void SerialLine::open()
{
    context = openSerial(target, unit);
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
