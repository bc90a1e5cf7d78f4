#include "simulator/Simulation.h"

#include "bus/ModbusException.h"
#include "bus/WordBytes.h"
#include "channels/ValueText.h"

#include <fmt/format.h>
#include <mxmodule/Finding.h>

#include <stdexcept>

namespace mxonline {

namespace {

// The answer to a request that writes repeats its first bytes; otherwise it has the registers.
std::vector<std::uint8_t> answerOf(const ServedRequest& request,
                                   const std::vector<std::uint8_t>& pdu,
                                   const std::vector<std::uint16_t>& words)
{
    if (request.read.count == 0) {
        constexpr std::size_t rangeSize = 5; // function, address, number of registers
        return {pdu.begin(), request.function == 16 ? pdu.begin() + rangeSize : pdu.end()};
    }
    std::vector<std::uint8_t> answer = {request.function,
                                        static_cast<std::uint8_t>(2 * words.size())};
    for (const std::uint16_t word : words) {
        appendWord(answer, word);
    }
    return answer;
}

} // namespace

Simulation::Simulation(const mxstation::Plan& planned, const SimulatorOptions& options,
                       LineKind line)
    : plan(planned),
      observer(options.observer),
      names(planned),
      registers(planned, options.isStrict),
      faults(options.faults, registers, line),
      changes(planned, names, registers)
{}

ServedAnswer Simulation::answerTo(const std::vector<std::uint8_t>& pdu)
{
    std::vector<SimulatorEvent> events;
    std::unique_lock<std::mutex> lock(access);
    ServedRequest request = servedRequest(pdu, plan.modbus->mostRead, plan.modbus->mostWritten);
    const DueFaults due = faults.due(request);
    ++count.requests;
    count.faults += due.empty() ? 0 : 1;
    ServedAnswer answer;
    answer.pdu = pdu;
    if (!FaultPlay::isIgnored(due)) {
        const std::uint8_t code = FaultPlay::rejection(due);
        answer.pdu = code != 0 ? rejected(request, code) : carriedOut(request, pdu, due, events);
    }
    FaultPlay::changeAnswer(due, request.function, answer);
    lock.unlock();
    tell(events);
    return answer;
}

std::vector<std::uint8_t> Simulation::rejected(const ServedRequest& request, std::uint8_t code)
{
    ++count.exceptions;
    return {static_cast<std::uint8_t>(request.function | exceptionBit), code};
}

std::vector<std::uint8_t> Simulation::carriedOut(ServedRequest& request,
                                                 const std::vector<std::uint8_t>& pdu,
                                                 const DueFaults& due,
                                                 std::vector<SimulatorEvent>& events)
{
    if (const std::uint8_t code = registers.rejection(request)) {
        return rejected(request, code);
    }
    if (request.written.count > 0) {
        changes.begin();
        faults.changeValues(due, request);
        registers.write(request);
        if (observer != nullptr) {
            events = changes.end(request);
        }
    }
    count.registersRead += request.read.count;
    count.registersWritten += request.written.count;
    return answerOf(request, pdu, registers.read(request));
}

void Simulation::connected()
{
    const std::lock_guard<std::mutex> lock(access);
    ++count.connections;
}

void Simulation::lineFailed(const std::string& reason)
{
    tell({{SimulatorEventKind::LineFailed, "", reason}});
}

void Simulation::tell(const std::vector<SimulatorEvent>& events)
{
    for (const SimulatorEvent& event : events) {
        if (observer != nullptr) {
            observer->happened(event);
        }
    }
}

std::vector<std::uint8_t> Simulation::image(bool isInput) const
{
    const std::lock_guard<std::mutex> lock(access);
    return isInput ? registers.inputs() : registers.outputs();
}

ChannelValue Simulation::value(const std::string& channel) const
{
    const mxstation::Channel& found = plan.channels[names.find(channel)];
    return valueOf(found, bitsIn(plan, found, image(found.isInput)));
}

void Simulation::set(const std::string& channel, const std::string& value, bool isInput)
{
    const mxstation::Channel& found = plan.channels[names.find(channel)];
    if (found.isInput != isInput) {
        throw mxmodule::Failure(mxmodule::Origin::Request, "",
                                fmt::format("{} is an {}, expected an {}", channelText(found),
                                            isInput ? "output" : "input",
                                            isInput ? "input" : "output"));
    }
    const ValueBits bits = bitsOf(found, value);
    const std::lock_guard<std::mutex> lock(access);
    putBits(plan, found, bits, isInput ? registers.inputs() : registers.outputs());
}

std::vector<std::uint16_t> Simulation::parameters(std::size_t position) const
{
    const std::lock_guard<std::mutex> lock(access);
    if (position == 0 || position > registers.modules().size()) {
        throw std::out_of_range(fmt::format("no module at position {}", position));
    }
    return registers.active(position - 1);
}

SimulatorCounts Simulation::counts() const
{
    const std::lock_guard<std::mutex> lock(access);
    return count;
}

} // namespace mxonline
