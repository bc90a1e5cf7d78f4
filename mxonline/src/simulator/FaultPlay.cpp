#include "simulator/FaultPlay.h"

#include "bus/ModbusException.h"

#include <fmt/format.h>
#include <mxmodule/Finding.h>
#include <text/NearestWords.h>

#include <algorithm>
#include <string_view>

namespace mxonline {

namespace {

using mxmodule::Failure;
using mxmodule::Origin;
using FaultClock = std::chrono::steady_clock;

constexpr std::string_view otherProtocol = "HTTP/1.1 400 Bad Request\r\n\r\n";

bool isOneOf(FaultKind kind, std::initializer_list<FaultKind> kinds)
{
    return std::find(kinds.begin(), kinds.end(), kind) != kinds.end();
}

bool has(const DueFaults& faults, std::initializer_list<FaultKind> kinds)
{
    return std::any_of(faults.begin(), faults.end(), [&kinds](const SimulatedFault* fault) {
        return isOneOf(fault->kind, kinds);
    });
}

// Faults in the content of an answer to a request that is carried out.
void changeContent(FaultKind kind, std::uint8_t function, std::vector<std::uint8_t>& pdu)
{
    const bool isRead = function == 3 || function == 4 || function == 23;
    if (kind == FaultKind::Function) {
        ++pdu[0];
    } else if (kind == FaultKind::Count && isRead) {
        pdu[1] = static_cast<std::uint8_t>(pdu[1] + 2);
    } else if (kind == FaultKind::Echo && !isRead) {
        ++pdu[2];
    } else if (kind == FaultKind::Long) {
        pdu.insert(pdu.end(), 2, 0);
    }
}

void changeFrame(const SimulatedFault& fault, ServedAnswer& answer)
{
    switch (fault.kind) {
    case FaultKind::Late:
        answer.delay += fault.time;
        break;
    case FaultKind::Slow:
        answer.pause += fault.time;
        break;
    case FaultKind::Short:
        answer.missing = 1;
        break;
    case FaultKind::Twice:
        answer.copies *= 2;
        break;
    case FaultKind::Garbage:
        answer.garbage.assign(otherProtocol.begin(), otherProtocol.end());
        break;
    case FaultKind::Unit:
        answer.unitChange = 1;
        break;
    case FaultKind::Transaction:
        answer.transactionChange = 1;
        break;
    case FaultKind::Protocol:
        answer.protocol = 1;
        break;
    case FaultKind::Length:
        answer.lengthChange = 10;
        break;
    case FaultKind::Checksum:
        answer.checksumChange = 1;
        break;
    case FaultKind::Half:
        answer.sendsHalf = true;
        answer.closes = true;
        break;
    default:
        break;
    }
}

} // namespace

FaultPlay::FaultPlay(std::vector<SimulatedFault> stated, SimulatedRegisters& simulated,
                     LineKind line)
    : registers(simulated)
{
    for (SimulatedFault& fault : stated) {
        prepare(all.emplace_back(Played{std::move(fault), {}}), line);
    }
}

void FaultPlay::prepare(Played& played, LineKind line)
{
    const SimulatedFault& fault = played.fault;
    const bool isOfTcp =
        isOneOf(fault.kind, {FaultKind::Transaction, FaultKind::Protocol, FaultKind::Length,
                             FaultKind::Close, FaultKind::Half});
    const bool isOfLine = fault.kind == FaultKind::Checksum;
    if (line == LineKind::Tcp ? isOfLine : isOfTcp) {
        throw Failure(Origin::Request, fault.text,
                      isOfLine ? "TCP has no checksum" : "a serial line has no connection",
                      "leave out the fault, or simulate the other kind of line");
    }
    if (isOneOf(fault.kind, {FaultKind::Refuse, FaultKind::Stuck, FaultKind::Clamp})) {
        findParameter(played);
    } else if (fault.kind == FaultKind::Identity) {
        const std::size_t modules = registers.modules().size();
        if (fault.position == 0 || fault.position > modules) {
            throw Failure(Origin::Request, fault.text,
                          fmt::format("no module is at position {}", fault.position),
                          fmt::format("the station has the positions 1 to {}", modules));
        }
        if (!registers.hasIdentity()) {
            throw Failure(Origin::Request, fault.text,
                          "the coupler has no registers that identify modules",
                          "state \"identity\" in \"modbus\" of the station");
        }
        registers.setModuleId(fault.position - 1, fault.moduleId);
    }
}

void FaultPlay::findParameter(Played& played) const
{
    const SimulatedFault& fault = played.fault;
    std::vector<std::string> known;
    for (const ModuleRegisters& module : registers.modules()) {
        for (const ParameterRegisters& one : module.parameters()) {
            const std::string& name = module.names()[one.parameter];
            known.push_back(module.module().name + "/" + name);
            if (fault.parameter == known.back() ||
                fault.parameter == fmt::format("{}/{}", module.module().position, name)) {
                played.registers.push_back(module.range(one));
            }
        }
    }
    if (played.registers.empty()) {
        throw Failure(Origin::Request, fault.text,
                      fmt::format("there is no parameter \"{}\"{}", fault.parameter,
                                  text::didYouMean(fault.parameter, known)),
                      "state it as MODULE/PARAMETER, such as Levels/Mains suppression");
    }
}

DueFaults FaultPlay::due(const ServedRequest& request)
{
    DueFaults faults;
    for (Played& played : all) {
        if (concerns(played, request) && isDue(played)) {
            faults.push_back(&played.fault);
        }
    }
    return faults;
}

bool FaultPlay::concerns(const Played& played, const ServedRequest& request) const
{
    const SimulatedFault& fault = played.fault;
    if ((fault.function && *fault.function != request.function) ||
        (fault.address && !request.contains(*fault.address))) {
        return false;
    }
    return played.registers.empty() || std::any_of(played.registers.begin(), played.registers.end(),
                                                   [&request](const RegisterRange& range) {
                                                       return range.overlaps(request.written);
                                                   });
}

// Counts the request.
bool FaultPlay::isDue(Played& played) const
{
    const SimulatedFault& fault = played.fault;
    const std::size_t number = played.seen++;
    if (number < fault.after || (fault.times && number - fault.after >= *fault.times)) {
        return false;
    }
    if (!isOneOf(fault.kind, {FaultKind::Busy, FaultKind::Acknowledge})) {
        return true;
    }
    const auto now = FaultClock::now();
    played.end = played.end.value_or(now + fault.time);
    return now < *played.end;
}

std::uint8_t FaultPlay::rejection(const DueFaults& faults)
{
    for (const SimulatedFault* fault : faults) {
        switch (fault->kind) {
        case FaultKind::Exception:
            return fault->code;
        case FaultKind::Busy:
            return deviceIsBusy;
        case FaultKind::Acknowledge:
            return deviceAcknowledges;
        case FaultKind::Refuse:
            return illegalDataValue;
        default:
            break;
        }
    }
    return 0;
}

bool FaultPlay::isIgnored(const DueFaults& faults)
{
    return has(faults, {FaultKind::Silence, FaultKind::Close});
}

void FaultPlay::changeValues(const DueFaults& faults, ServedRequest& request) const
{
    for (const Played& played : all) {
        const bool isDueNow =
            std::find(faults.begin(), faults.end(), &played.fault) != faults.end();
        if (!isDueNow || !isOneOf(played.fault.kind, {FaultKind::Stuck, FaultKind::Clamp})) {
            continue;
        }
        for (std::uint32_t i = 0; i < request.written.count; ++i) {
            const RegisterRange one{request.written.address + i, 1};
            const bool isOfParameter =
                std::any_of(played.registers.begin(), played.registers.end(),
                            [&one](const RegisterRange& range) { return range.overlaps(one); });
            if (isOfParameter) {
                std::uint16_t& value = request.values[i];
                value = played.fault.kind == FaultKind::Stuck ? registers.written(one.address)
                                                              : std::min(value, played.fault.most);
            }
        }
    }
}

void FaultPlay::changeAnswer(const DueFaults& faults, std::uint8_t function, ServedAnswer& answer)
{
    const bool isCarriedOut = !isIgnored(faults) && (answer.pdu[0] & exceptionBit) == 0;
    for (const SimulatedFault* fault : faults) {
        if (isCarriedOut) {
            changeContent(fault->kind, function, answer.pdu);
        }
        changeFrame(*fault, answer);
    }
    if (has(faults, {FaultKind::Silence, FaultKind::Close, FaultKind::Lost})) {
        answer.copies = 0;
        answer.delay = {};
    }
    answer.closes = answer.closes || has(faults, {FaultKind::Close});
}

} // namespace mxonline
