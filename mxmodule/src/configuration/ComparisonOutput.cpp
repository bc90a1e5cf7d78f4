#include "configuration/ConfigurationOutput.h"

#include "DeviceJson.h"
#include "ParameterText.h"
#include "configuration/ParameterPlace.h"
#include <text/Hexadecimal.h>
#include <text/JsonText.h>
#include <text/TextTable.h>

#include <devices/parser/mx/HexText.h>
#include <text/ShownText.h>
#include <text/Utf8.h>

#include <fmt/format.h>

#include <set>

namespace mxmodule {

namespace {

using devices::parser::mx::bufferAsHex;

bool isModbus(const ImageComparison& comparison)
{
    return comparison.wanted.fieldbus == Fieldbus::Modbus;
}

// One deviation, for the three output formats.
struct Deviation
{
    const ImageComparison& comparison;
    const ParameterPlace& place;

    const DeviceReport::Parameter& wanted() const
    {
        return comparison.wanted.device.parameters[place.parameter];
    }
    const DeviceReport::Parameter& read() const
    {
        return comparison.read.device.parameters[place.parameter];
    }
    std::string wantedHex() const
    {
        return text::hexOfBytes(comparison.wanted.bytes, place.begin, place.size);
    }
    std::string readHex() const
    {
        return text::hexOfBytes(comparison.read.bytes, place.begin, place.size);
    }
};

std::string tableOf(const ImageComparison& comparison)
{
    const bool modbus = isModbus(comparison);
    text::TextTable table({modbus ? "Register" : "Byte", modbus ? "Byte" : "Bits", "Parameter of",
                           "Name", "Wanted", "Read", "Bytes wanted", "Bytes read"});
    for (const ParameterPlace& place : comparison.deviations) {
        const Deviation one{comparison, place};
        const std::string bytes = rangeText(place.begin, place.size);
        table.add({modbus ? registersText(place) : bytes, modbus ? bytes : bitsText(one.wanted()),
                   ownerOf(one.wanted()), one.wanted().name, valueWithUnit(one.wanted()),
                   valueWithUnit(one.read()), one.wantedHex(), one.readHex()});
    }
    return table.text();
}

std::string summary(const ImageComparison& comparison)
{
    std::set<std::size_t> deviating;
    for (const ParameterPlace& place : comparison.deviations) {
        deviating.insert(place.parameter);
    }
    return fmt::format("{} of {} parameters deviate from the wanted values\n", deviating.size(),
                       comparison.wanted.device.parameters.size());
}

text::Json deviationJson(const Deviation& one)
{
    const DeviceReport::Parameter& wanted = one.wanted();
    const bool modbus = isModbus(one.comparison);
    return {{"id", wanted.id},
            {"channel", wanted.ofModule() ? text::Json() : text::Json(wanted.channelNumber)},
            {"name", text::toUtf8(wanted.name)},
            {"unit", text::toUtf8(wanted.unit)},
            {"wanted", wanted.value},
            {"wanted_digits", valueDigits(wanted)},
            {"wanted_shown", text::toUtf8(valueWithUnit(wanted))},
            {"read", one.read().value},
            {"read_digits", valueDigits(one.read())},
            {"read_shown", text::toUtf8(valueWithUnit(one.read()))},
            {"register", modbus ? text::Json(one.place.begin / registerSize) : text::Json()},
            {"byte", one.place.begin},
            {"size", one.place.size},
            {"bit_offset", wanted.bitOffset()},
            {"bit_length", wanted.bitLength()},
            {"wanted_hex", one.wantedHex()},
            {"read_hex", one.readHex()}};
}

text::Json strayJson(const ImageComparison& comparison)
{
    return text::listJson(comparison.strayBytes, [&comparison](std::size_t byte) -> text::Json {
        return {{"byte", byte},
                {"wanted", text::hexOfBytes(comparison.wanted.bytes, byte, 1)},
                {"read", text::hexOfBytes(comparison.read.bytes, byte, 1)}};
    });
}

text::CsvRow deviationCells(const Deviation& one)
{
    const DeviceReport::Parameter& wanted = one.wanted();
    return {wanted.id,
            wanted.ofModule() ? "" : std::to_string(wanted.channelNumber),
            wanted.name,
            valueWithUnit(wanted),
            valueWithUnit(one.read()),
            std::to_string(one.place.begin),
            std::to_string(one.place.size),
            std::to_string(wanted.bitOffset()),
            std::to_string(wanted.bitLength()),
            one.wantedHex(),
            one.readHex()};
}

} // namespace

std::string comparisonText(const ImageComparison& comparison)
{
    const DeviceReport& device = comparison.wanted.device;
    return text::forTerminal(device.label) + " (" + device.deviceTypeId + ")\n\n" +
           (comparison.deviations.empty() ? "" : tableOf(comparison) + "\n") + summary(comparison);
}

std::string comparisonCsv(const ImageComparison& comparison, const CsvStyle& style)
{
    std::vector<text::CsvRow> rows = {{"id", "channel", "name", "wanted", "read", "byte", "size",
                                       "bit_offset", "bit_length", "wanted_hex", "read_hex"}};
    if (isModbus(comparison)) {
        text::append(registerColumns(), rows.front());
    }
    rows.front().emplace_back("device_type_id");
    for (const ParameterPlace& place : comparison.deviations) {
        rows.push_back(deviationCells({comparison, place}));
        if (isModbus(comparison)) {
            text::append(registerCells(place), rows.back());
        }
        rows.back().push_back(comparison.wanted.device.deviceTypeId);
    }
    return text::csvText(rows, style.separator, style.byteOrderMark);
}

std::string comparisonJson(const ImageComparison& comparison)
{
    const text::Json deviations =
        text::listJson(comparison.deviations, [&](const ParameterPlace& place) {
            return deviationJson({comparison, place});
        });
    const DeviceReport& device = comparison.wanted.device;
    return text::jsonText({{"schema", text::jsonSchema("mxtool.config-comparison", 1)},
                           {"file", text::toUtf8(comparison.wanted.file)},
                           {"label", text::toUtf8(device.label)},
                           {"device_type_id", device.deviceTypeId},
                           {"fieldbus", isModbus(comparison) ? "modbus" : "raw"},
                           {"same", comparison.isSame()},
                           {"wanted", bufferAsHex(comparison.wanted.bytes)},
                           {"read", bufferAsHex(comparison.read.bytes)},
                           {"deviations", deviations},
                           {"stray_bytes", strayJson(comparison)}});
}

} // namespace mxmodule
