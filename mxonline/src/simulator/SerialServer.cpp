#include "simulator/SerialServer.h"

#include "bus/LineError.h"
#include "bus/RtuFrame.h"
#include "bus/SerialPort.h"
#include "simulator/ServedRequest.h"

#include <mxmodule/Finding.h>

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <optional>
#include <utility>

namespace mxonline {

namespace {

using Received = std::vector<std::uint8_t>;

constexpr int silence = 50;            // after a request of an unknown function, in milliseconds
constexpr std::size_t mostBytes = 256; // of a frame
constexpr std::size_t leastBytes = 4;
constexpr auto pauseOfFailedLine = std::chrono::milliseconds(500);

ModbusContext openFirst(const SerialTarget& target, std::uint8_t unit)
{
    try {
        return openSerial(target, unit);
    } catch (const LineError& error) {
        throw mxmodule::Failure(mxmodule::Origin::Output, targetText(target), error.what(),
                                error.hint);
    }
}

// The frame of `unit` that begins at `begin`, if all of it is there and its checksum is correct.
std::optional<Received> frameAt(const Received& received, std::size_t begin, std::uint8_t unit)
{
    const std::size_t known = received.size() - begin;
    if (known < leastBytes || received[begin] != unit) {
        return std::nullopt;
    }
    const int pdu = servedRequestSize(&received[begin + 1], known - 1);
    const std::size_t size = 3 + static_cast<std::size_t>(std::max(pdu, 0));
    if (pdu <= 0 || known < size) {
        return std::nullopt;
    }
    const auto first = received.begin() + static_cast<std::ptrdiff_t>(begin);
    Received frame(first, first + static_cast<std::ptrdiff_t>(size));
    return hasRtuChecksum(frame) ? std::optional(frame) : std::nullopt;
}

Received frameOf(std::uint8_t unit, const ServedAnswer& answer)
{
    Received frame = rtuFrame(static_cast<std::uint8_t>(unit + answer.unitChange), answer.pdu);
    frame.back() = static_cast<std::uint8_t>(frame.back() + answer.checksumChange);
    return frame;
}

} // namespace

SerialServer::SerialServer(SerialTarget wanted, ServedUnit& servedUnit)
    : target(std::move(wanted)), served(servedUnit), context(openFirst(target, servedUnit.unit()))
{}

void SerialServer::serve(const StopSignal& stop)
{
    while (true) {
        if (context == nullptr) {
            openAgain(stop);
        }
        const int line = context == nullptr ? -1 : modbus_get_socket(context.get());
        pollfd waiting[] = {{stop.descriptor(), POLLIN, 0}, {line, POLLIN, 0}};
        const int ready = poll(waiting, 2, received.empty() ? -1 : silence);
        if (waiting[0].revents != 0) {
            return;
        }
        if (ready == 0) {
            answerUnknown(stop);
            received.clear();
        } else if (waiting[1].revents != 0 && readBytes()) {
            answerFrames(stop);
        }
    }
}

// A device that was unplugged may come back.
void SerialServer::openAgain(const StopSignal& stop)
{
    while (context == nullptr && !stop.waitFor(pauseOfFailedLine)) {
        try {
            context = openSerial(target, served.unit());
        } catch (const LineError&) { // tried again
        }
    }
}

bool SerialServer::readBytes()
{
    Received bytes(mostBytes);
    const ssize_t count = read(modbus_get_socket(context.get()), bytes.data(), bytes.size());
    if (count > 0) {
        received.insert(received.end(), bytes.begin(), bytes.begin() + count);
        return true;
    }
    if (count < 0 && (errno == EAGAIN || errno == EINTR)) {
        return false;
    }
    const std::string reason = count == 0 ? "its other end was closed" : modbus_strerror(errno);
    context.reset();
    received.clear();
    served.lineFailed(reason);
    return false;
}

// Requests and answers of other units, and noise, are passed over.
void SerialServer::answerFrames(const StopSignal& stop)
{
    for (std::size_t begin = 0; begin + leastBytes <= received.size();) {
        if (const auto frame = frameAt(received, begin, served.unit())) {
            received.erase(received.begin(),
                           received.begin() + static_cast<std::ptrdiff_t>(begin + frame->size()));
            begin = 0;
            answer({frame->begin() + 1, frame->end() - 2}, stop);
        } else {
            ++begin;
        }
    }
    if (received.size() > mostBytes) {
        received.erase(received.begin(), received.end() - static_cast<std::ptrdiff_t>(mostBytes));
    }
}

// The size of a request of an unknown function is known only by the silence after it.
void SerialServer::answerUnknown(const StopSignal& stop)
{
    if (received.size() >= leastBytes && received.front() == served.unit() &&
        hasRtuChecksum(received)) {
        answer({received.begin() + 1, received.end() - 2}, stop);
    }
}

void SerialServer::answer(const Received& pdu, const StopSignal& stop)
{
    const ServedAnswer made = served.answerTo(pdu);
    static_cast<void>(sendAnswer(ByteStream(modbus_get_socket(context.get())),
                                 frameOf(served.unit(), made), made, stop));
}

} // namespace mxonline
