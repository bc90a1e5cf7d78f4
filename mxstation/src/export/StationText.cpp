#include "export/ByteText.h"
#include "export/LayoutText.h"
#include "export/PlanTotals.h"
#include "export/Provenance.h"
#include "export/ReservedPlaces.h"

#include <mxstation/StationReport.h>

#include <fmt/format.h>
#include <text/Counted.h>
#include <text/ShownText.h>
#include <text/TextTable.h>

namespace mxstation {

namespace {

std::vector<std::string> cellsOf(const PlannedModule& module)
{
    return {std::to_string(module.position),
            module.name,
            module.module.moduleId(),
            std::to_string(module.input.size),
            addressesText(module.input),
            std::to_string(module.output.size),
            addressesText(module.output),
            std::to_string(module.image.size()),
            module.noRegisters ? "none" : std::to_string(module.registers.size()),
            module.module.label()};
}

std::vector<std::string> cellsOf(const ReservedPlace& place)
{
    return {"",
            place.name,
            "reserved",
            std::to_string(place.input.size),
            addressesText(place.input),
            std::to_string(place.output.size),
            addressesText(place.output)};
}

std::string rowTable(const Plan& plan)
{
    text::TextTable table({"Position", "Name", "Module", "In bytes", "In at", "Out bytes", "Out at",
                           "Parameter bytes", "Registers", "Label"});
    const auto places = reservedPlaces(plan);
    auto place = places.begin();
    const auto addPlaces = [&](std::size_t end) {
        for (; place != places.end() && place->first < end; ++place) {
            table.add(cellsOf(place->second));
        }
    };
    for (const PlannedModule& module : plan.modules) {
        addPlaces(module.entry);
        table.add(cellsOf(module));
    }
    addPlaces(std::string::npos);
    return table.text();
}

std::string sizeOfGap(const Gap& gap)
{
    return gap.bits % 8 == 0 && gap.firstBit % 8 == 0
               ? text::counted(gap.bits / 8, "byte")
               : fmt::format("{} from bit {}", text::counted(gap.bits, "bit"), gap.firstBit % 8);
}

// The gaps that are no reserved places.
std::string gapTable(const Plan& plan)
{
    text::TextTable table({"Image", "At", "Size", "Without a channel", "Module"});
    for (const Gap& gap : plan.gaps) {
        if (!gap.entry) {
            table.add({gap.isInput ? "in" : "out", addressesText(touchedBytes(gap)), sizeOfGap(gap),
                       gapReasonName(gap.reason),
                       gap.module == 0 ? "" : plan.modules[gap.module - 1].name});
        }
    }
    return table.empty() ? "" : "\n" + table.text();
}

std::string imageTotal(const char* image, const ImageBytes& whole, std::uint64_t data)
{
    return fmt::format("{} image: {}{}{}, data of modules: {}\n", image,
                       text::counted(whole.size, "byte"), whole.size == 0 ? "" : " at ",
                       addressesText(whole), text::counted(data, "byte"));
}

std::string totalsText(const Plan& plan)
{
    const PlanTotals totals(plan);
    return fmt::format("{}, parameters: {}, {}\n", text::counted(plan.modules.size(), "module"),
                       text::counted(totals.parameters, "byte"),
                       text::counted(totals.registers, "register")) +
           imageTotal("Input", plan.input, totals.input) +
           imageTotal("Output", plan.output, totals.output);
}

} // namespace

std::string stationText(const Plan& plan)
{
    requireOk(plan);
    return text::forTerminal(plan.station) + "\n\n" + rowTable(plan) + gapTable(plan) + "\n" +
           totalsText(plan) + "Layout " + layoutText(plan.layout) + "\n";
}

} // namespace mxstation
