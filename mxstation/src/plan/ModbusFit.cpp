#include "plan/ModbusFit.h"

#include "plan/ModbusNumbers.h"

#include <fmt/format.h>
#include <text/Beginning.h>
#include <text/Counted.h>

#include <algorithm>
#include <array>
#include <set>
#include <tuple>

namespace mxstation {

namespace {

constexpr std::uint64_t registersOfACoupler = 65536;

// What registers are for, in the order of messages.
enum class Purpose
{
    Inputs,
    Outputs,
    Parameters,
    Identity,
    Commit
};

constexpr std::array<const char*, 5> keyOfPurpose = {"inputs", "outputs", "parameters", "identity",
                                                     "commit"};

// Consecutive registers of one purpose.
struct RegisterArea
{
    Purpose purpose;
    std::uint64_t first;
    std::uint64_t count;
    const PlannedModule* module; // null: of the whole station

    std::uint64_t end() const { return first + count; }
};

// Holding registers and input registers have the same addresses.
struct RegisterAreas
{
    std::vector<RegisterArea> holding;
    std::vector<RegisterArea> input;

    std::vector<RegisterArea>& readWith(std::uint8_t function)
    {
        return function == 4 ? input : holding;
    }
};

std::string nameOf(const PlannedModule& module)
{
    return fmt::format("module {} \"{}\"", module.position, text::abbreviated(module.name));
}

std::string nameOf(const RegisterArea& area)
{
    switch (area.purpose) {
    case Purpose::Inputs:
        return "the input image";
    case Purpose::Outputs:
        return "the output image";
    case Purpose::Parameters:
        return "the parameter image of " + nameOf(*area.module);
    case Purpose::Identity:
        return "the identifier of " + nameOf(*area.module);
    default:
        return "the commit register";
    }
}

// "16384 to 16391 (0x4000 to 0x4007)".
std::string shownNumbers(std::uint64_t first, std::uint64_t last)
{
    return first == last ? fmt::format("{} ({:#06x})", first, first)
                         : fmt::format("{} to {} ({:#06x} to {:#06x})", first, last, first, last);
}

std::string shownRegisters(std::uint64_t first, std::uint64_t last)
{
    return (first == last ? "register " : "registers ") + shownNumbers(first, last);
}

std::string shownKey(Purpose purpose)
{
    return fmt::format("\"{}\"", keyOfPurpose[static_cast<std::size_t>(purpose)]);
}

// Compares a plan with the registers that it has.
class RegisterFit
{
public:
    RegisterFit(const Station& planned, const Plan& made, PlanFindings& collected)
        : place(planned.modbusPlace), plan(made), map(*made.modbus), findings(collected)
    {
        addImage({Purpose::Inputs, map.inputs.address, (plan.input.size + 1) / 2, nullptr},
                 areas.readWith(map.inputs.readFunction));
        const RegisterArea outputs{Purpose::Outputs, map.outputs.address,
                                   (plan.output.size + 1) / 2, nullptr};
        addImage(outputs, areas.holding); // where they are written
        if (map.outputs.readFunction == 4) {
            addImage(outputs, areas.input);
        }
        for (const PlannedModule& module : plan.modules) {
            addModule(module);
        }
        if (map.commit) {
            areas.holding.push_back({Purpose::Commit, map.commit->address, 1, nullptr});
        }
    }

    void requireAll()
    {
        requireRoomInStride();
        requireEnd(Purpose::Inputs, map.inputs.address);
        requireEnd(Purpose::Outputs, map.outputs.address);
        requireEnd(Purpose::Parameters, map.parameters.address);
        requireEnd(Purpose::Identity, map.identity ? map.identity->address : std::uint16_t{0});
        requireApart(areas.holding);
        requireApart(areas.input);
    }

private:
    static void addImage(const RegisterArea& image, std::vector<RegisterArea>& list)
    {
        if (image.count != 0) {
            list.push_back(image);
        }
    }

    // A module whose parameters have no Modbus form takes no registers for them.
    void addModule(const PlannedModule& module)
    {
        if (!module.registers.empty()) {
            areas.holding.push_back({Purpose::Parameters,
                                     firstRegisterOf(map.parameters, module.position),
                                     module.registers.size(), &module});
        }
        if (map.identity) {
            areas.readWith(map.identity->readFunction)
                .push_back({Purpose::Identity, firstRegisterOf(*map.identity, module.position), 2,
                            &module});
        }
    }

    // One error for the first module: the same number cures all.
    void requireRoomInStride()
    {
        const PlannedModule* first = nullptr;
        std::size_t count = 0;
        std::size_t most = 0;
        for (const PlannedModule& module : plan.modules) {
            if (module.registers.size() > map.parameters.stride) {
                first = first == nullptr ? &module : first;
                ++count;
                most = std::max(most, module.registers.size());
            }
        }
        if (first != nullptr) {
            const std::uint64_t begin = firstRegisterOf(map.parameters, first->position);
            const std::uint64_t size = first->registers.size();
            add(fmt::format("the parameter image of {} takes {}, {}, the stride leaves {}{}",
                            nameOf(*first), text::counted(size, "register"),
                            shownNumbers(begin, begin + size - 1), map.parameters.stride,
                            count == 1 ? ""
                                       : fmt::format("; those of {} do not fit either",
                                                     text::counted(count - 1, "more module"))),
                fmt::format("state {} or more for \"stride\" of \"parameters\"", most));
        }
    }

    // One error for the first area beyond the end: the same number cures all.
    void requireEnd(Purpose purpose, std::uint64_t address)
    {
        const RegisterArea* first = nullptr;
        std::uint64_t end = 0;
        for (const auto* const list : {&areas.holding, &areas.input}) {
            for (const RegisterArea& area : *list) {
                if (area.purpose == purpose && area.end() > registersOfACoupler) {
                    first = first == nullptr ? &area : first;
                    end = std::max(end, area.end());
                }
            }
        }
        if (first != nullptr) {
            const std::uint64_t beyond = end - registersOfACoupler;
            add(fmt::format("{} takes {}, the last register is {}", nameOf(*first),
                            shownRegisters(first->first, first->end() - 1),
                            shownNumbers(registersOfACoupler - 1, registersOfACoupler - 1)),
                address >= beyond ? fmt::format("state {} or less for \"address\" of {}",
                                                shownNumbers(address - beyond, address - beyond),
                                                shownKey(purpose))
                                  : tooManyText(purpose));
        }
    }

    static std::string tooManyText(Purpose purpose)
    {
        return purpose == Purpose::Inputs || purpose == Purpose::Outputs
                   ? "an image in registers has at most 131072 bytes"
                   : fmt::format("state a smaller \"stride\" of {}", shownKey(purpose));
    }

    // By address: an area shares registers with an earlier one of another purpose only if it begins
    // before the end of that one which ends last.
    void requireApart(std::vector<RegisterArea>& list)
    {
        std::stable_sort(list.begin(), list.end(),
                         [](const auto& a, const auto& b) { return a.first < b.first; });
        std::array<const RegisterArea*, keyOfPurpose.size()> last{};
        for (const RegisterArea& area : list) {
            for (const RegisterArea* const before : last) {
                if (before != nullptr && before->purpose != area.purpose &&
                    before->end() > area.first) {
                    addShared(*before, area);
                }
            }
            const RegisterArea*& known = last[static_cast<std::size_t>(area.purpose)];
            known = known == nullptr || area.end() > known->end() ? &area : known;
        }
    }

    // The first place that two purposes share: the others follow from the same numbers.
    void addShared(const RegisterArea& before, const RegisterArea& after)
    {
        const bool isInOrder = before.purpose < after.purpose;
        const RegisterArea& a = isInOrder ? before : after;
        const RegisterArea& b = isInOrder ? after : before;
        if (shared.emplace(a.purpose, b.purpose).second) {
            add(fmt::format("{} and {} both take {}", nameOf(a), nameOf(b),
                            shownRegisters(after.first, std::min(a.end(), b.end()) - 1)),
                fmt::format("state another \"address\" of {} or of {}", shownKey(a.purpose),
                            shownKey(b.purpose)));
        }
    }

    void add(const std::string& text, const std::string& hint)
    {
        findings.add(place, mxmodule::Severity::Error, text, hint);
    }

    SourcePlace place;
    const Plan& plan;
    const ModbusMap& map;
    PlanFindings& findings;
    RegisterAreas areas;
    std::set<std::pair<Purpose, Purpose>> shared;
};

} // namespace

void addModbusFindings(const Station& station, const Plan& plan, PlanFindings& findings)
{
    if (requirePossibleNumbers(station, findings)) {
        RegisterFit(station, plan, findings).requireAll();
    }
}

} // namespace mxstation
