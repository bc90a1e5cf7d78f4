#include "coupler/ParameterWrites.h"

#include <fmt/format.h>

#include <algorithm>

namespace mxonline {

namespace {

std::string subjectOf(const ParameterWrite& write, const std::vector<ModuleRegisters>& modules)
{
    const auto nameOf = [&modules](const ParameterPlace& one) {
        const ModuleRegisters& module = modules[one.module];
        return module.names()[module.parameters()[one.place].parameter];
    };
    const ParameterPlace& first = write.parameters.front();
    const ParameterPlace& last = write.parameters.back();
    std::string beginning = fmt::format("{}, parameter \"{}\"",
                                        moduleText(modules[first.module].module()), nameOf(first));
    if (write.parameters.size() == 1) {
        return beginning;
    }
    return first.module == last.module
               ? fmt::format("{} to \"{}\"", beginning, nameOf(last))
               : fmt::format("{} to {}, parameter \"{}\"", beginning,
                             moduleText(modules[last.module].module()), nameOf(last));
}

std::vector<ParameterPlace> differing(const std::vector<ModuleRegisters>& modules,
                                      const CouplerDifference& difference)
{
    std::vector<ParameterPlace> found;
    for (std::size_t i = 0; i < difference.modules.size(); ++i) {
        const std::vector<ParameterDifference>& parameters = difference.modules[i].parameters;
        const std::vector<ParameterRegisters>& places = modules[i].parameters();
        for (std::size_t k = 0; k < places.size(); ++k) {
            const std::uint32_t address = modules[i].range(places[k]).address;
            const bool differs = std::any_of(
                parameters.begin(), parameters.end(),
                [address](const ParameterDifference& one) { return one.address == address; });
            if (differs) {
                found.push_back({i, k});
            }
        }
    }
    return found;
}

std::vector<ParameterPlace> allParameters(const std::vector<ModuleRegisters>& modules)
{
    std::vector<ParameterPlace> all;
    for (std::size_t i = 0; i < modules.size(); ++i) {
        for (std::size_t k = 0; k < modules[i].parameters().size(); ++k) {
            all.push_back({i, k});
        }
    }
    return all;
}

} // namespace

std::vector<ParameterWrite> writesFor(const std::vector<ModuleRegisters>& modules,
                                      const std::vector<ParameterPlace>& parameters,
                                      std::uint16_t most)
{
    std::vector<ParameterWrite> writes;
    std::vector<std::uint16_t> words; // of the module, in the order of the coupler
    const ModuleRegisters* last = nullptr;
    for (const ParameterPlace& one : parameters) {
        const ModuleRegisters& module = modules[one.module];
        if (&module != last) {
            words = module.reordered(module.module().registers);
            last = &module;
        }
        const ParameterRegisters& place = module.parameters()[one.place];
        const RegisterRange range = module.range(place);
        const bool follows = !writes.empty() &&
                             writes.back().address + writes.back().values.size() == range.address &&
                             writes.back().values.size() + range.count <= most;
        if (!follows) {
            writes.emplace_back().address = static_cast<std::uint16_t>(range.address);
        }
        const auto begin = words.begin() + static_cast<std::ptrdiff_t>(place.first);
        writes.back().values.insert(writes.back().values.end(), begin,
                                    begin + static_cast<std::ptrdiff_t>(place.count));
        writes.back().parameters.push_back(one);
    }
    for (ParameterWrite& write : writes) {
        write.subject = subjectOf(write, modules);
    }
    return writes;
}

std::vector<ParameterWrite> writesToReach(const std::vector<ModuleRegisters>& modules,
                                          const CouplerDifference& difference)
{
    // Values that cannot be read may be left from an interrupted run: all are written, so that the
    // commit makes none of them active.
    const auto& map = difference.map;
    const bool isAll = map.commit && !map.commit->readsAreStaged;
    return writesFor(modules, isAll ? allParameters(modules) : differing(modules, difference),
                     map.mostWritten);
}

} // namespace mxonline
