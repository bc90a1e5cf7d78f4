#include "RowOfModules.h"

#include "Assignments.h"
#include "ModuleGenerator.h"

#include <string>
#include <utility>

namespace bench {

mxstation::Station rowOfModules(std::size_t count)
{
    mxstation::Station station;
    station.layout.mostModules = static_cast<std::uint32_t>(count);
    for (std::size_t i = 0; i < count; ++i) {
        mxstation::Entry entry;
        entry.reference = "MX" + std::to_string(i) + ".bin";
        entry.module.emplace(entry.reference,
                             generateModule(smallModule, static_cast<std::uint32_t>(i)));
        station.entries.push_back(std::move(entry));
    }
    return station;
}

void giveValues(mxstation::Station& station)
{
    constexpr std::size_t valuesOfModule = 4;
    for (mxstation::Entry& entry : station.entries) {
        const mxmodule::Module module(*entry.module);
        for (const mxmodule::Assignment& one : assignments(module, valuesOfModule)) {
            entry.parameters.push_back({one.name, one.value, {}});
        }
    }
}

} // namespace bench
