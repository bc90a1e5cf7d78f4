#include "datasheet/StationSheet.h"

#include <fmt/format.h>
#include <text/Counted.h>
#include <text/Html.h>

namespace mxstation {

namespace {

constexpr std::uint64_t bytesOfRegister = 2;

// "registers 16384 to 16408 (0x4000 to 0x4018)".
std::string rangeOf(std::uint64_t first, std::uint64_t count)
{
    if (count == 0) {
        return "none";
    }
    const std::uint64_t last = first + count - 1;
    return count == 1 ? fmt::format("{0} ({0:#06x})", first)
                      : fmt::format("{0} to {1} ({0:#06x} to {1:#06x})", first, last);
}

std::uint64_t registersOf(const ImageBytes& image)
{
    return (image.size + bytesOfRegister - 1) / bytesOfRegister;
}

std::string functionsOf(const ModbusImage& image)
{
    return image.writeFunction == 0 ? fmt::format("read with {}", image.readFunction)
                                    : fmt::format("read with {}, written with {}",
                                                  image.readFunction, image.writeFunction);
}

std::string wholeTable(const Plan& plan)
{
    const ModbusMap& map = *plan.modbus;
    text::HtmlTable table({"Content", "Registers", "Functions"}, "Registers of the station");
    table.addNamed({{"Input image"},
                    {rangeOf(map.inputs.address, registersOf(plan.input))},
                    {functionsOf(map.inputs)}});
    table.addNamed({{"Output image"},
                    {rangeOf(map.outputs.address, registersOf(plan.output))},
                    {functionsOf(map.outputs)}});
    if (map.commit) {
        table.addNamed({{"Makes written parameters active"},
                        {rangeOf(map.commit->address, 1)},
                        {fmt::format("the value {}, written with 16", map.commit->value)}});
    }
    return table.html(" class=\"cards\"");
}

std::string modulesTable(const Plan& plan)
{
    const ModbusMap& map = *plan.modbus;
    text::HtmlTable table({"Module", "Parameters", "Identity"}, "Registers of each module");
    for (const PlannedModule& module : plan.modules) {
        const std::string parameters =
            rangeOf(firstRegisterOf(map.parameters, module.position), module.registers.size());
        const std::string identity =
            map.identity ? rangeOf(firstRegisterOf(*map.identity, module.position), 2) : "none";
        table.addNamed({{StationSheet::moduleLink(module)}, {parameters}, {identity}});
    }
    return table.empty() ? "" : table.html(" class=\"cards\"");
}

const char* orderText(PartOrder order)
{
    return order == PartOrder::Big ? "most significant" : "least significant";
}

} // namespace

std::string modbusHtml(const StationSheet& sheet)
{
    if (!sheet.plan.modbus) {
        return "";
    }
    const ModbusMap& map = *sheet.plan.modbus;
    return fmt::format("<p>Unit {}. Addresses are those of the protocol, from 0. Of a value in "
                       "several registers the {} one is first, of a register the {} byte.</p>\n",
                       map.unit, orderText(map.words), orderText(map.bytes)) +
           wholeTable(sheet.plan) + modulesTable(sheet.plan);
}

} // namespace mxstation
