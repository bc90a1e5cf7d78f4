#include "plan/EntryNames.h"

#include <fmt/format.h>
#include <text/Beginning.h>

#include <map>
#include <set>

namespace mxstation {

namespace {

std::string nameOfReference(const Entry& entry)
{
    const std::string& path = entry.reference.empty() ? entry.module->name() : entry.reference;
    const std::string file = path.substr(path.rfind('/') + 1);
    const auto dot = file.rfind('.');
    const bool hasExtension = dot != std::string::npos && dot != 0 && file != "..";
    const std::string stem = hasExtension ? file.substr(0, dot) : file;
    return stem.empty() ? "Module" : stem;
}

// A module that cannot be read has a reference.
bool isReservedPlace(const Entry& entry)
{
    return !entry.module && entry.reference.empty();
}

// The names that the station states, each once.
std::set<std::string> ownNames(const Station& station, PlanFindings& findings)
{
    std::map<std::string, SourcePlace> places;
    std::set<std::string> names;
    for (const Entry& entry : station.entries) {
        if (entry.name.empty()) {
            continue;
        }
        const auto [first, isNew] = places.emplace(entry.name, entry.namePlace);
        if (!isNew) {
            findings.add(entry.namePlace, mxmodule::Severity::Error,
                         fmt::format("the name \"{}\" is used {} as well",
                                     text::abbreviated(entry.name), lineText(first->second)));
        }
        names.insert(entry.name);
    }
    return names;
}

} // namespace

std::vector<std::string> entryNames(const Station& station, PlanFindings& findings)
{
    std::set<std::string> used = ownNames(station, findings);
    std::map<std::string, unsigned> next; // the number to try next
    std::vector<std::string> names;
    names.reserve(station.entries.size());
    for (const Entry& entry : station.entries) {
        if (!entry.name.empty() || isReservedPlace(entry)) {
            names.push_back(entry.name);
            continue;
        }
        const std::string base = nameOfReference(entry);
        unsigned& number = next.try_emplace(base, 1).first->second;
        std::string name;
        do {
            name = number == 1 ? base : fmt::format("{}_{}", base, number);
            ++number;
        } while (!used.insert(name).second);
        names.push_back(name);
    }
    return names;
}

std::vector<std::string> entryNames(const Station& station)
{
    PlanFindings ignored(station);
    return entryNames(station, ignored);
}

} // namespace mxstation
