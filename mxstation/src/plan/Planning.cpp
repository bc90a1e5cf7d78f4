#include "mxstation/Plan.h"

#include "plan/ChannelFit.h"
#include "plan/ChannelNotes.h"
#include "plan/EntryNames.h"
#include "plan/ModbusFit.h"
#include "plan/ModuleValues.h"
#include "plan/PlacedModules.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace mxstation {

namespace {

using mxmodule::Severity;

// Makes the plan of a station, entry by entry.
class Planning
{
public:
    explicit Planning(const Station& planned)
        : station(planned), findings(planned), notes(findings), values(planned, findings)
    {
        plan.station = station.name;
        plan.file = station.file;
        plan.source = station.source;
        plan.layout = station.layout;
        plan.modbus = station.modbus;
    }

    Plan make()
    {
        if (requireMultiples(station.layout.input) && requireMultiples(station.layout.output) &&
            requireFewModules()) {
            addModules();
        }
        plan.findings = station.findings;
        const auto found = findings.sorted();
        plan.findings.insert(plan.findings.end(), found.begin(), found.end());
        if (!plan.ok()) {
            removeIncomplete();
        }
        return std::move(plan);
    }

private:
    // The reader of stations takes no 0, a host may state it.
    bool requireMultiples(const ImageLayout& image)
    {
        const bool isPossible =
            image.alignment != 0 && image.modulePadding != 0 && image.imagePadding != 0;
        if (!isPossible) {
            findings.add(station.layoutPlace, Severity::Error,
                         "the layout has an alignment or a padding of 0 bytes, expected at least "
                         "1");
        }
        return isPossible;
    }

    // With too many modules none is translated: there is no plan.
    bool requireFewModules()
    {
        std::size_t count = 0;
        for (const Entry& entry : station.entries) {
            count += entry.module ? 1 : 0;
            if (count > station.layout.mostModules) {
                findings.add(entry.place, Severity::Error,
                             fmt::format("this is module {}, the layout allows {}", count,
                                         station.layout.mostModules));
                return false;
            }
        }
        return true;
    }

    void addModules()
    {
        const std::vector<std::string> names = entryNames(station, findings);
        const PlacedModules placed(station, findings);
        const bool haveFinalPlaces = placed.isComplete();
        plan.input = placed.input().image();
        plan.output = placed.output().image();
        addGaps(placed.input());
        addGaps(placed.output());
        plan.modules.reserve(station.entries.size());
        plan.channels.reserve(placed.countOfChannels());
        for (std::size_t i = 0; i < station.entries.size(); ++i) {
            if (const PlacedModule* const module = placed.at(i)) {
                addModule(i, names[i], *module, haveFinalPlaces);
            }
        }
        addImageWarning();
        // After errors of the text the images may have other sizes than those that are meant.
        if (haveFinalPlaces && plan.modbus && station.findings.empty()) {
            addModbusFindings(station, plan, findings);
        }
        const auto key = [](const Gap& gap) { return std::pair(!gap.isInput, gap.firstBit); };
        std::sort(plan.gaps.begin(), plan.gaps.end(),
                  [&key](const Gap& a, const Gap& b) { return key(a) < key(b); });
    }

    void addGaps(const ImageCursor& cursor)
    {
        for (const Gap& gap : cursor.gaps()) {
            Gap& added = plan.gaps.emplace_back(gap);
            if (gap.entry && station.entries[*gap.entry].reserve) {
                added.name = station.entries[*gap.entry].reserve->name;
            }
        }
    }

    void addModule(std::size_t index, const std::string& name, const PlacedModule& placed,
                   bool hasFinalPlace)
    {
        const Entry& entry = station.entries[index];
        const mxmodule::ImageArea& input = placed.map.input();
        const mxmodule::ImageArea& output = placed.map.output();
        PlannedModule& module =
            plan.modules.emplace_back(PlannedModule{plan.modules.size() + 1,
                                                    index,
                                                    name,
                                                    !entry.name.empty(),
                                                    entry.reference,
                                                    {input.firstByte, input.size},
                                                    {output.firstByte, output.size},
                                                    placed.module,
                                                    *entry.module,
                                                    {},
                                                    {},
                                                    {},
                                                    entry.place});
        addChannels(entry, placed.map, module);
        addFreeBits(input, true, module.position);
        addFreeBits(output, false, module.position);
        if (hasFinalPlace) {
            for (const mxmodule::Finding& finding : fitFindings(placed.map, station.layout)) {
                findings.add(entry.place, finding);
            }
        }
        values.set(entry, module);
    }

    void addChannels(const Entry& entry, const mxmodule::ChannelMap& map,
                     const PlannedModule& module)
    {
        const std::vector<const ChannelNote*> noted = notes.of(entry, map);
        for (std::size_t i = 0; i < noted.size(); ++i) {
            Channel& channel = plan.channels.emplace_back();
            static_cast<mxmodule::MappedChannel&>(channel) = map.channels()[i];
            channel.module = module.position;
            channel.moduleName = module.name;
            if (noted[i] != nullptr) {
                channel.alias = noted[i]->alias;
                channel.comment = noted[i]->comment;
            }
        }
        for (const mxmodule::Channel& channel : map.withoutSymbol()) {
            plan.withoutSymbol.push_back({module.position, module.name, channel});
        }
    }

    void addFreeBits(const mxmodule::ImageArea& area, bool isInput, std::size_t position)
    {
        for (const mxmodule::BitRun& run : area.free) {
            Gap& gap = plan.gaps.emplace_back();
            gap.isInput = isInput;
            gap.reason = GapReason::NoChannel;
            gap.firstBit = run.firstBit;
            gap.bits = run.bits;
            gap.module = position;
        }
    }

    // A warning for the first module after the largest image of a fieldbus.
    void addImageWarning()
    {
        for (const PlannedModule& module : plan.modules) {
            const auto warnings = module.module.offsetFindings("input byte", "output byte");
            if (!warnings.empty()) {
                findings.add(station.entries[module.entry].place, warnings.front());
                return;
            }
        }
    }

    void removeIncomplete()
    {
        plan.input = {};
        plan.output = {};
        plan.modules.clear();
        plan.channels.clear();
        plan.withoutSymbol.clear();
        plan.gaps.clear();
    }

    const Station& station;
    PlanFindings findings;
    ChannelNotes notes;
    ModuleValues values;
    Plan plan;
};

} // namespace

const char* gapReasonName(GapReason reason)
{
    switch (reason) {
    case GapReason::Padding:
        return "padding";
    case GapReason::Reserved:
        return "reserved";
    case GapReason::Status:
        return "status";
    default:
        return "no channel";
    }
}

Plan plan(const Station& station)
{
    return Planning(station).make();
}

} // namespace mxstation
