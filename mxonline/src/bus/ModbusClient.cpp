#include "bus/ModbusClient.h"

#include "bus/CouplerPlace.h"
#include "bus/LineError.h"
#include "bus/ModbusException.h"
#include "bus/WordBytes.h"

#include <fmt/format.h>
#include <text/Hexadecimal.h>

#include <algorithm>
#include <chrono>
#include <thread>
#include <utility>

namespace mxonline {

namespace {

using Bytes = std::vector<std::uint8_t>;
using Clock = std::chrono::steady_clock;

constexpr auto pauseOfBusyCoupler = std::chrono::milliseconds(50);
constexpr std::size_t mostShownBytes = 64;

Bytes requestOf(std::uint8_t function, std::size_t first, std::size_t second)
{
    Bytes pdu{function};
    appendWord(pdu, first);
    appendWord(pdu, second);
    return pdu;
}

std::string bytesText(const Bytes& bytes)
{
    if (bytes.empty()) {
        return "nothing";
    }
    const bool isLong = bytes.size() > mostShownBytes;
    return text::hexOfBytes(bytes.data(), std::min(bytes.size(), mostShownBytes), " ") +
           (isLong ? fmt::format(" ... ({} bytes)", bytes.size()) : "");
}

bool isBusy(std::uint8_t code)
{
    return code == deviceIsBusy || code == deviceAcknowledges;
}

} // namespace

ModbusClient::ModbusClient(const Target& target, const mxstation::ModbusMap& described,
                           mxmodule::Observer* toldOf)
    : targetName(couplerPlace(targetText(target), described.unit)),
      map(described),
      observer(toldOf),
      line(lineTo(target, described))
{}

std::vector<std::uint16_t> ModbusClient::read(std::uint8_t function, const RegisterRange& range,
                                              const std::string& subject)
{
    const Task task{"read", range, subject};
    const Exchange done = request(requestOf(function, range.address, range.count), task);
    const std::size_t expected = 2 + std::size_t{2} * range.count;
    if (done.answer.size() != expected || done.answer[1] != expected - 2) {
        throw mxmodule::Failure(
            failed(task,
                   fmt::format("the answer has {} bytes of values, stated as {}, expected {}",
                               done.answer.size() - 2, done.answer[1], expected - 2),
                   "the coupler answers against the protocol: lower \"most_read\", or see its "
                   "manual",
                   done.sent, done.received));
    }
    counts.registersRead += range.count;
    std::vector<std::uint16_t> values;
    for (std::size_t i = 2; i < expected; i += 2) {
        values.push_back(wordAt(done.answer, i));
    }
    return values;
}

void ModbusClient::write(std::uint16_t address, const std::vector<std::uint16_t>& values,
                         const std::string& subject)
{
    const RegisterRange range{address, static_cast<std::uint32_t>(values.size())};
    Bytes pdu = requestOf(16, address, values.size());
    pdu.push_back(static_cast<std::uint8_t>(2 * values.size()));
    for (const std::uint16_t value : values) {
        appendWord(pdu, value);
    }
    requireEcho(pdu, 5, {"written", range, subject});
    counts.registersWritten += values.size();
}

void ModbusClient::writeOne(std::uint16_t address, std::uint16_t value, const std::string& subject)
{
    requireEcho(requestOf(6, address, value), 5, {"written", {address, 1}, subject});
    ++counts.registersWritten;
}

void ModbusClient::writeBits(std::uint16_t address, std::uint16_t mask, std::uint16_t value,
                             const std::string& subject)
{
    Bytes pdu = requestOf(22, address, static_cast<std::uint16_t>(~mask));
    appendWord(pdu, value & mask);
    requireEcho(pdu, pdu.size(), {"written", {address, 1}, subject});
    ++counts.registersWritten;
}

// The answer to a write repeats the first `size` bytes of the request.
void ModbusClient::requireEcho(const Bytes& pdu, std::size_t size, const Task& task)
{
    const Exchange done = request(pdu, task);
    const Bytes expected(pdu.begin(), pdu.begin() + static_cast<std::ptrdiff_t>(size));
    if (done.answer != expected) {
        throw mxmodule::Failure(failed(task,
                                       fmt::format("the answer confirms {}, expected {}",
                                                   bytesText(done.answer), bytesText(expected)),
                                       "what was written is not known: read it back", done.sent,
                                       done.received));
    }
}

// Sends `pdu` until the coupler is no longer busy with something else.
Exchange ModbusClient::request(const Bytes& pdu, const Task& task)
{
    const auto deadline = Clock::now() + std::chrono::milliseconds(map.busyTime);
    for (bool isFirst = true;; isFirst = false) {
        Exchange done = answerOf(pdu, task);
        if (done.answer[0] == pdu[0]) {
            ++counts.requests;
            return done;
        }
        const std::uint8_t code = done.answer[1];
        if (!isBusy(code) || Clock::now() + pauseOfBusyCoupler > deadline) {
            ++counts.requests;
            throw RefusedRequest(
                failed(task,
                       exceptionText(code) +
                           (isBusy(code) ? fmt::format(" for {} ms", map.busyTime) : std::string()),
                       exceptionHint(code), done.sent, done.received),
                code);
        }
        tellOfRepetition(task, exceptionText(code), isFirst);
        std::this_thread::sleep_for(pauseOfBusyCoupler);
    }
}

// Sends `pdu` until there is an answer to it.
Exchange ModbusClient::answerOf(const Bytes& pdu, const Task& task)
{
    for (std::uint32_t sendings = 1;; ++sendings) {
        try {
            return line->exchange(pdu);
        } catch (const LineError& error) {
            const bool isUnconnected = error.sent.empty() && error.received.empty();
            if (sendings > map.retries || isUnconnected) {
                const std::string times =
                    sendings == 1 ? "" : fmt::format(", after {} attempts", sendings);
                throw mxmodule::Failure(
                    failed(task, error.what() + times, error.hint, error.sent, error.received));
            }
            tellOfRepetition(task, error.what(), true);
        }
    }
}

mxmodule::Finding ModbusClient::failed(const Task& task, const std::string& reason,
                                       const std::string& hint, const Bytes& sent,
                                       const Bytes& received) const
{
    mxmodule::Finding finding;
    finding.origin = mxmodule::Origin::Output;
    finding.place = targetName;
    finding.text = fmt::format("{}: {} cannot be {}: {}", task.subject, registersText(task.range),
                               task.action, reason);
    if (!sent.empty() || !received.empty()) {
        finding.text += fmt::format("; sent {}; received {}", bytesText(sent), bytesText(received));
    }
    finding.hint = hint;
    return finding;
}

// A busy coupler is told of once for each request.
void ModbusClient::tellOfRepetition(const Task& task, const std::string& reason, bool isTold)
{
    ++counts.repetitions;
    if (observer != nullptr && isTold) {
        mxmodule::Finding finding;
        finding.severity = mxmodule::Severity::Note;
        finding.origin = mxmodule::Origin::Output;
        finding.place = targetName;
        finding.text = fmt::format("{}: {}: {}; the request is sent again", task.subject,
                                   registersText(task.range), reason);
        observer->notice(finding);
    }
}

} // namespace mxonline
