// A coupler on loopback that answers one request with the bytes of the input and the others as the
// protocol says: its parameters are read, compared and written, and reported in every form. A
// report that says done is compared with the registers, if no answer was changed.
//
// Input: the request that gets the last bytes as its answer (from 31 on none), how (bit 0: as a
// whole frame, otherwise as function and data; the connection is closed after it), the
// number of bytes of registers that follow, these bytes, the answer.
#include "AnsweringPeer.h"
#include "FuzzInput.h"
#include "FuzzTarget.h"

#include <mxonline/Coupler.h>

#include <algorithm>
#include <mutex>
#include <string>
#include <vector>

namespace {

using fuzz::require;
using mxonline::Coupler;

constexpr std::uint16_t parametersAt = 100;
constexpr std::uint8_t noRequest = 31;
constexpr const char* station = R"(
modbus:
  {parameters: {address: 100, stride: 30}, identity: {address: 10}, commit: {address: 20},
   timeout: 20, busy: 0, retries: 0}
modules:
  - {module: EXAMPLE_MODULES/MX0304.yaml, parameters: {Mains suppression: 60}}
  - {module: EXAMPLE_MODULES/MX0602.yaml, parameters: {Mode: up}}
)";

mxstation::Plan plannedStation()
{
    std::string text = station;
    const std::string name = "EXAMPLE_MODULES";
    for (auto at = text.find(name); at != std::string::npos; at = text.find(name)) {
        text.replace(at, name.size(), EXAMPLE_MODULES);
    }
    const mxstation::Plan plan = mxstation::plan(mxstation::stationOf(text, "<fuzz>"));
    require(plan.ok());
    return plan;
}

std::uint16_t word(const Bytes& frame, std::size_t at)
{
    return static_cast<std::uint16_t>(frame[at] << 8 | frame[at + 1]);
}

// The registers of the coupler, and which request is answered otherwise.
class FuzzedCoupler
{
public:
    void begin(const mxstation::Plan& plan, const Bytes& input)
    {
        const std::lock_guard<std::mutex> lock(access);
        registers.assign(65536, 0);
        for (const auto& module : plan.modules) {
            const auto defaults = module.module.registers(module.module.defaultImage());
            std::copy(defaults.begin(), defaults.end(),
                      registers.begin() + parametersAt +
                          static_cast<std::ptrdiff_t>(30 * (module.position - 1)));
            const auto id = std::stoul(module.module.moduleId(), nullptr, 16);
            registers[8 + 2 * module.position] = static_cast<std::uint16_t>(id >> 16);
            registers[9 + 2 * module.position] = static_cast<std::uint16_t>(id);
        }
        count = 0;
        changed = input.empty() ? noRequest : input[0];
        mode = input.size() > 1 ? input[1] : 0;
        takeContent(
            {input.begin() + static_cast<std::ptrdiff_t>(std::min<std::size_t>(2, input.size())),
             input.end()});
    }

    Reaction answer(const Bytes& frame)
    {
        const std::lock_guard<std::mutex> lock(access);
        const bool isChanged = count++ == changed && changed < noRequest;
        if (isChanged && (mode & 1) != 0) {
            return {last, true};
        }
        const Bytes pdu = isChanged ? last : properAnswer(frame);
        Bytes made = {frame[0], frame[1], 0, 0, 0, static_cast<std::uint8_t>(pdu.size() + 1),
                      frame[6]};
        made.insert(made.end(), pdu.begin(), pdu.end());
        return {made, isChanged};
    }

    // Whether what was written is there, provided that no answer was changed.
    bool isAsPlanned(const mxstation::Plan& plan) const
    {
        const std::lock_guard<std::mutex> lock(access);
        for (const auto& module : plan.modules) {
            const auto begin = registers.begin() + parametersAt +
                               static_cast<std::ptrdiff_t>(30 * (module.position - 1));
            if (!std::equal(module.registers.begin(), module.registers.end(), begin)) {
                return false;
            }
        }
        return true;
    }

    bool isHonest() const { return changed >= noRequest; }

private:
    void takeContent(const Bytes& content)
    {
        const std::size_t size =
            content.empty() ? 0 : std::min<std::size_t>(content[0], content.size() - 1);
        for (std::size_t i = 0; i < size; ++i) {
            auto& one = registers[parametersAt + i / 2];
            one = static_cast<std::uint16_t>(i % 2 == 0 ? content[1 + i] << 8 | (one & 0xFF)
                                                        : (one & 0xFF00) | content[1 + i]);
        }
        last.assign(content.begin() +
                        static_cast<std::ptrdiff_t>(std::min(1 + size, content.size())),
                    content.end());
        last.resize(std::min<std::size_t>(last.size(), 250));
    }

    Bytes properAnswer(const Bytes& frame)
    {
        const std::uint16_t address = word(frame, 8);
        const std::uint16_t number = word(frame, 10);
        if (frame[7] == 16) {
            for (std::size_t i = 0; i < number; ++i) {
                registers[address + i] = word(frame, 13 + 2 * i);
            }
            return {frame.begin() + 7, frame.begin() + 12};
        }
        Bytes pdu = {frame[7], static_cast<std::uint8_t>(2 * number)};
        for (std::size_t i = 0; i < number; ++i) {
            pdu.push_back(static_cast<std::uint8_t>(registers[address + i] >> 8));
            pdu.push_back(static_cast<std::uint8_t>(registers[address + i]));
        }
        return pdu;
    }

    mutable std::mutex access;
    std::vector<std::uint16_t> registers;
    std::size_t count = 0;
    std::uint8_t changed = noRequest;
    std::uint8_t mode = 0;
    Bytes last;
};

void run(const mxstation::Plan& plan, const FuzzedCoupler& coupler, const AnsweringPeer& peer)
{
    Coupler connected(plan, peer.target());
    const mxonline::CouplerDifference difference = connected.difference();
    require(!difference.text().empty() && !difference.json().empty());
    const mxonline::ApplyReport report = connected.apply(difference);
    require(!report.text().empty() && !report.json().empty() && !report.html().empty());
    require(!report.isDone() || !coupler.isHonest() || coupler.isAsPlanned(plan));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const bool silent = (fuzz::silence(), true);
    static_cast<void>(silent);
    static const mxstation::Plan plan = plannedStation();
    static FuzzedCoupler coupler;
    static const AnsweringPeer peer([](const Bytes& frame) { return coupler.answer(frame); });
    coupler.begin(plan, {data, data + size});
    try {
        run(plan, coupler, peer);
    } catch (const mxmodule::Failure& failure) {
        require(!failure.findings().empty() && !failure.reason().text.empty());
    }
    return 0;
}
