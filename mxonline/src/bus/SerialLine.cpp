#include "bus/SerialLine.h"

#include "bus/LineError.h"
#include "bus/RtuFrame.h"
#include "bus/SerialPort.h"

#include <fmt/format.h>
#include <text/Counted.h>

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

constexpr std::size_t beginningSize = 3; // which states the size of an answer
constexpr std::size_t longestFrame = 256;
constexpr unsigned mostLateAnswers =
    4; // a device that is off sends none: the wait does not grow further

microseconds timeOf(std::size_t characters, unsigned baud)
{
    return microseconds(characters * 11'000'000 / baud);
}

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
    if (late != 0 && request != unanswered) {
        dropLateAnswers();
    }
    const std::vector<std::uint8_t> sent = rtuFrame(unit, request);
    unanswered = request;
    try {
        const std::vector<std::uint8_t> received = receive(sent);
        lastByte = ByteStream::Clock::now();
        Exchange done{{received.begin() + 1, received.end() - 2}, sent, received};
        requireFunction(request, done);
        unanswered.clear();
        return done;
    } catch (const LineError&) {
        context.reset();
        throw;
    }
}

// What comes without a request is noise, or an answer sent twice. A line that is never silent is
// not waited for longer than for an answer.
void SerialLine::waitForSilence()
{
    const int descriptor = modbus_get_socket(context.get());
    const auto deadline = ByteStream::Clock::now() + milliseconds(timeout);
    do {
        std::this_thread::sleep_until(lastByte + silenceAt(target.baud));
        lastByte = ByteStream::Clock::now();
        if (!ByteStream(descriptor).hasInput()) {
            return;
        }
        static_cast<void>(tcflush(descriptor, TCIFLUSH));
    } while (lastByte < deadline);
}

// An answer does not say which registers it has: one that comes after its time must not be taken
// for that of another request of the same size.
void SerialLine::dropLateAnswers()
{
    const ByteStream stream(modbus_get_socket(context.get()));
    const auto wait = milliseconds(timeout) * (late + 1);
    for (; late != 0; --late) {
        std::vector<std::uint8_t> dropped;
        if (stream.read(dropped, 1, ByteStream::Clock::now() + wait) != StreamEnd::Complete) {
            late = 0;
            return;
        }
        static_cast<void>(stream.read(
            dropped, longestFrame, ByteStream::Clock::now() + timeOf(longestFrame, target.baud)));
    }
}

std::vector<std::uint8_t> SerialLine::receive(const std::vector<std::uint8_t>& sent)
{
    late = std::min(late + 1, mostLateAnswers);
    std::vector<std::uint8_t> received = readFrame(sent);
    if (received[0] == unit && isOfFunction(received[1], sent[1])) {
        --late;
    }
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

// Reads the answer up to the size that its first bytes state. The time to wait does not include
// that of the frames on the line.
std::vector<std::uint8_t> SerialLine::readFrame(const std::vector<std::uint8_t>& sent) const
{
    const ByteStream stream(modbus_get_socket(context.get()));
    auto deadline = ByteStream::Clock::now() + milliseconds(timeout) +
                    timeOf(sent.size() + beginningSize, target.baud);
    std::vector<std::uint8_t> received;
    StreamEnd end = stream.write(sent, deadline);
    if (end == StreamEnd::Complete) {
        end = stream.read(received, beginningSize, deadline);
    }
    if (end == StreamEnd::Complete) {
        const auto size = rtuAnswerSize(received);
        if (!size) {
            throw LineError(
                fmt::format("the answer is of function {}, expected {}", received[1], sent[1]),
                lineHint, sent, received);
        }
        deadline += timeOf(*size - beginningSize, target.baud);
        end = stream.read(received, *size, deadline);
    }
    if (end == StreamEnd::Closed) {
        throw LineError(fmt::format("the serial line {} failed", target.device),
                        "look at the adapter's plug", sent, received);
    }
    if (end == StreamEnd::TimedOut) {
        throw LineError(received.empty()
                            ? fmt::format("no answer within {} ms", timeout)
                            : "the answer ends after " + text::counted(received.size(), "byte"),
                        lineHint, sent, received);
    }
    return received;
}

} // namespace mxonline
