#include "DeviceText.h"

#include "ParameterText.h"
#include <text/Counted.h>
#include <text/TextTable.h>

#include <text/ShownText.h>

#include <fmt/format.h>

#include <set>

namespace mxmodule {

namespace {

// Shown with their units on lines of their own.
const std::set<std::string> dataProperties = {"inDataSize",    "outDataSize",   "inDataOffset",
                                              "outDataOffset", "paramDataSize", "diagDataSize"};

std::string bytes(const std::string& count)
{
    return count + (count == "1" ? " byte" : " bytes");
}

std::string dataSection(const DeviceReport& report)
{
    return fmt::format("\nData\n"
                       "  input      {}, from byte {}\n"
                       "  output     {}, from byte {}\n"
                       "  parameters {}\n"
                       "  diagnosis  {}\n",
                       bytes(report.property("inDataSize")), report.property("inDataOffset"),
                       bytes(report.property("outDataSize")), report.property("outDataOffset"),
                       bytes(report.property("paramDataSize")),
                       bytes(report.property("diagDataSize")));
}

std::string propertySection(const DeviceReport& report)
{
    text::TextTable table({"Property", "Value"});
    for (const auto& property : report.properties) {
        if (dataProperties.count(property.name) == 0) {
            table.add({property.name, property.value});
        }
    }
    for (const auto& binary : report.binaries) {
        table.add({binary.name, fmt::format("{}, {} characters of {}", binary.mimeType,
                                            binary.data.size(), binary.encoding)});
    }
    return "\n" + table.text();
}

std::string channelSize(const DeviceReport::Channel& channel)
{
    if (channel.sizeLetter.empty()) {
        return "-";
    }
    return text::counted(channel.bitLength, "bit");
}

std::string channelSection(const DeviceReport& report)
{
    text::TextTable table({"Channel", "Name", "Direction", "Symbol", "Size", "Byte", "Bit"});
    for (const auto& channel : report.channels) {
        const bool placed = !channel.symbol.empty();
        table.add({std::to_string(channel.number), channel.name, channel.direction,
                   placed ? channel.symbol : "-", channelSize(channel),
                   placed ? std::to_string(channel.byteAddress) : "-",
                   placed ? std::to_string(channel.bitOffset) : "-"});
    }
    return table.empty() ? "" : "\n" + table.text();
}

std::string parameterSection(const DeviceReport& report)
{
    text::TextTable table({"Parameter of", "Name", "Value", "Unit", "Range or options"});
    for (const auto& parameter : report.parameters) {
        table.add({ownerOf(parameter), parameter.name, valueText(parameter), parameter.unit,
                   acceptedValues(parameter)});
    }
    return table.empty() ? "" : "\n" + table.text();
}

std::string setSection(const DeviceReport& report)
{
    text::TextTable table({"Set or role", "Id", "Members"});
    for (const auto& set : report.sets) {
        table.add({set.isRole ? set.name + " (role)" : set.name, set.id,
                   fmt::format("{}", fmt::join(set.members, " "))});
    }
    return table.empty() ? "" : "\n" + table.text();
}

} // namespace

std::string deviceText(const DeviceReport& report)
{
    return text::forTerminal(report.label) + " (" + report.deviceTypeId + ")\n" +
           propertySection(report) + dataSection(report) + channelSection(report) +
           parameterSection(report) + setSection(report);
}

} // namespace mxmodule
