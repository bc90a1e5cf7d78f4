#include "export/ModuleParameters.h"

#include <mxstation/ParameterExport.h>

#include <fmt/format.h>
#include <text/Counted.h>
#include <text/Hexadecimal.h>
#include <text/ShownText.h>
#include <text/TextTable.h>

#include <algorithm>

namespace mxstation {

namespace {

using mxmodule::Fieldbus;

constexpr std::size_t imageBytesPerLine = 16;

// Bytes in groups of two for registers: "2500 0001".
std::string shownBytes(const std::vector<char>& bytes, std::size_t begin, Fieldbus fieldbus)
{
    if (fieldbus == Fieldbus::Raw) {
        return text::hexOfBytes(bytes, begin, imageBytesPerLine);
    }
    std::string words;
    const std::size_t end = std::min(begin + imageBytesPerLine, bytes.size());
    for (std::size_t at = begin; at + 1 < end; at += 2) {
        words += (words.empty() ? "" : " ") + text::hexOfBytes(&bytes[at], 2, "");
    }
    return words;
}

void addImage(const PlannedModule& module, Fieldbus fieldbus, text::TextTable& table)
{
    const std::vector<char> bytes = bytesOnBus(module, fieldbus);
    const std::size_t unit = fieldbus == Fieldbus::Raw ? 1 : 2;
    std::size_t begin = 0;
    do {
        const bool isFirst = begin == 0;
        table.add({isFirst ? std::to_string(module.position) : "", isFirst ? module.name : "",
                   isFirst ? module.module.moduleId() : "",
                   isFirst ? std::to_string(bytes.size() / unit) : "",
                   bytes.empty() ? "" : std::to_string(begin / unit),
                   shownBytes(bytes, begin, fieldbus)});
        begin += imageBytesPerLine;
    } while (begin < bytes.size());
}

std::string changesText(const Plan& plan)
{
    text::TextTable table({"Position", "Name", "Parameter", "Value", "Default"});
    for (const PlannedModule& module : plan.modules) {
        for (const ChangedParameter& changed : changedParameters(module)) {
            table.add({std::to_string(module.position), module.name, changed.name, changed.shown,
                       changed.defaultShown});
        }
    }
    return table.empty() ? "Every parameter has its default.\n" : table.text();
}

} // namespace

std::string parametersText(const Plan& plan, Fieldbus fieldbus)
{
    requireImages(plan, fieldbus);
    const bool isRaw = fieldbus == Fieldbus::Raw;
    text::TextTable table({"Position", "Name", "Module", isRaw ? "Bytes" : "Registers",
                           isRaw ? "From byte" : "From register",
                           isRaw ? "Parameter image" : "Modbus registers"});
    for (const PlannedModule& module : plan.modules) {
        addImage(module, fieldbus, table);
    }
    return text::forTerminal(plan.station) + "\n\n" + table.text() + "\n" + changesText(plan);
}

} // namespace mxstation
