#include "mxstation/Pin.h"

#include "export/Provenance.h"
#include "text/EditErrors.h"
#include "text/EntryContent.h"
#include "text/PinEditor.h"
#include "text/SameModbus.h"
#include "text/StationReader.h"

#include <algorithm>

namespace mxstation {

namespace {

using mxmodule::Failure;
using mxmodule::Severity;

constexpr const char* byHand =
    "write the entry as \"module: NAME\" of its own, with \"at: {in: BYTE, out: BYTE}\" below it";

// The addresses of each entry in both images, where it has bytes.
std::vector<AddedAddresses> addressesOf(const Station& station, const Plan& plan)
{
    std::vector<AddedAddresses> addresses(station.entries.size());
    for (const Gap& gap : plan.gaps) {
        if (gap.entry) {
            auto& image = gap.isInput ? addresses[*gap.entry].input : addresses[*gap.entry].output;
            image = gap.firstBit / 8;
        }
    }
    for (const PlannedModule& module : plan.modules) {
        AddedAddresses& one = addresses[module.entry];
        one.input = module.input.size != 0 ? module.input.offset : one.input;
        one.output = module.output.size != 0 ? module.output.offset : one.output;
    }
    return addresses;
}

// Those that the station does not state.
AddedAddresses missing(const AddedAddresses& addresses, const StatedBytes& stated)
{
    return {stated.input ? std::nullopt : addresses.input,
            stated.output ? std::nullopt : addresses.output};
}

bool isStated(const std::optional<StatedByte>& stated, const std::optional<std::uint64_t>& address,
              const std::optional<StatedByte>& before)
{
    const auto expected = before ? std::optional<std::uint64_t>(before->value) : address;
    return stated.has_value() == expected.has_value() && (!stated || stated->value == *expected);
}

// Adds the addresses of a plan to the text of its station.
class Pinning
{
public:
    Pinning(const Station& planned, const Plan& made)
        : station(planned),
          plan(made),
          addresses(addressesOf(planned, made)),
          modules(planned),
          errors(planned, byHand)
    {}

    std::string text()
    {
        const YamlTree tree = readYamlTree(station.source);
        const YamlNode& list = *memberCalled(*tree.root, "modules");
        PinEditor editor(station.source, *tree.root);
        for (std::size_t i = 0; i < station.entries.size(); ++i) {
            const AddedAddresses added = missing(addresses[i], station.entries[i].at);
            if (!added.empty()) {
                errors.add(editor.add(*list.items[i], list, added));
                entries.push_back(i);
            }
        }
        errors.requireNone();
        if (!entries.empty()) {
            requireRead(editor);
        }
        return editor.text(entries.size());
    }

private:
    // The text with the first `count` entries pinned says the same of everything else.
    bool isRead(const PinEditor& editor, std::size_t count)
    {
        const Station read = stationIn(editor.text(count), station.file, modules);
        if (!read.findings.empty() || read.entries.size() != station.entries.size() ||
            !isSameModbus(read.modbus, station.modbus)) {
            return false;
        }
        const std::size_t end = count == entries.size() ? station.entries.size() : entries[count];
        for (std::size_t i = 0; i < read.entries.size(); ++i) {
            const Entry& before = station.entries[i];
            const AddedAddresses& expected = i < end ? addresses[i] : AddedAddresses{};
            if (!isSameBesidesParameters(read.entries[i], before) ||
                !isSameParameters(read.entries[i], before) ||
                !isStated(read.entries[i].at.input, expected.input, before.at.input) ||
                !isStated(read.entries[i].at.output, expected.output, before.at.output)) {
                return false;
            }
        }
        return count != entries.size() || isPlanned(read);
    }

    bool isPlanned(const Station& read) const
    {
        const Plan again = mxstation::plan(read);
        return again.ok() &&
               std::equal(plan.modules.begin(), plan.modules.end(), again.modules.begin(),
                          again.modules.end(), [](const PlannedModule& a, const PlannedModule& b) {
                              return a.name == b.name && a.input.offset == b.input.offset &&
                                     a.output.offset == b.output.offset && a.image == b.image;
                          });
    }

    // Names the first entry whose text became another one.
    void requireRead(const PinEditor& editor)
    {
        if (isRead(editor, entries.size())) {
            return;
        }
        const std::size_t bad =
            firstBad(entries.size(), [&](std::size_t count) { return isRead(editor, count); });
        throw Failure(findingAt(station.file, station.source,
                                station.entries[entries[bad - 1]].place, Severity::Error,
                                cannotBeAdded, byHand));
    }

    const Station& station;
    const Plan& plan;
    std::vector<AddedAddresses> addresses;
    ModuleSource modules;
    std::vector<std::size_t> entries; // that are changed
    EditErrors errors;
};

} // namespace

std::string pinned(const Station& station, const Plan& plan)
{
    requireOk(plan);
    if (station.source.empty()) {
        throw Failure(mxmodule::Origin::Request, station.name,
                      "the station was made without a text, to which addresses could be added",
                      "a host sets \"at\" of its entries instead");
    }
    return Pinning(station, plan).text();
}

} // namespace mxstation
