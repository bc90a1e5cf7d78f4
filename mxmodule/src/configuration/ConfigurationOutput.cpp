#include "configuration/ConfigurationOutput.h"

#include "DeviceJson.h"
#include "ParameterText.h"
#include "configuration/ParameterPlace.h"
#include <text/Counted.h>
#include <text/Csv.h>
#include <text/Hexadecimal.h>
#include <text/JsonText.h>
#include <text/TextTable.h>

#include <devices/parser/mx/HexText.h>
#include <text/ShownText.h>
#include <text/Utf8.h>

#include <fmt/format.h>

namespace mxmodule {

namespace {

using devices::parser::mx::bufferAsHex;

// One parameter in the buffer, for the three output formats.
struct PlaceRow
{
    const DeviceReport::Parameter& parameter;
    const DeviceReport::Parameter& standard; // with its default
    const ParameterPlace& place;
    bool changed;
};

std::vector<PlaceRow> rowsOf(const ConfiguredImage& configuration, Listing listing)
{
    std::vector<PlaceRow> rows;
    for (const ParameterPlace& place : configuration.places) {
        if (configuration.isListed(place.parameter, listing)) {
            rows.push_back({configuration.device.parameters[place.parameter],
                            configuration.defaults->parameters[place.parameter], place,
                            configuration.isChanged(place.parameter)});
        }
    }
    return rows;
}

std::string heading(const ConfiguredImage& configuration)
{
    const std::size_t size = configuration.bytes.size();
    const std::string bytes = text::counted(size, "byte");
    return configuration.fieldbus == Fieldbus::Modbus
               ? fmt::format("Modbus registers: {}, {} registers", bytes, size / registerSize)
               : fmt::format("Raw parameter image: {}", bytes);
}

std::string hexDump(const std::vector<char>& bytes)
{
    constexpr std::size_t perLine = 16;
    std::string lines;
    for (std::size_t at = 0; at < bytes.size(); at += perLine) {
        lines += fmt::format("  {:04x}  {}\n", at, text::hexOfBytes(bytes, at, perLine));
    }
    return lines;
}

std::string summary(const ConfiguredImage& configuration)
{
    const std::size_t all = configuration.device.parameters.size();
    std::size_t changed = 0;
    for (std::size_t i = 0; i < all; ++i) {
        changed += configuration.isChanged(i) ? 1 : 0;
    }
    return fmt::format("{} of {} parameters differ from the default\n", changed, all);
}

std::string tableOf(const ConfiguredImage& configuration, Listing listing)
{
    if (configuration.places.empty()) {
        return "";
    }
    const bool modbus = configuration.fieldbus == Fieldbus::Modbus;
    text::TextTable table({modbus ? "Register" : "Byte", modbus ? "Byte" : "Bits", "Bytes",
                           "Parameter of", "Name", "Value", "Default"});
    for (const PlaceRow& row : rowsOf(configuration, listing)) {
        const std::string bytes = rangeText(row.place.begin, row.place.size);
        table.add({modbus ? registersText(row.place) : bytes,
                   modbus ? bytes : bitsText(row.parameter),
                   text::hexOfBytes(configuration.bytes, row.place.begin, row.place.size),
                   ownerOf(row.parameter), row.parameter.name, valueWithUnit(row.parameter),
                   row.changed ? valueWithUnit(row.standard) : ""});
    }
    return "\n" + table.text();
}

text::Json rowJson(const PlaceRow& row, const ConfiguredImage& configuration)
{
    const DeviceReport::Parameter& parameter = row.parameter;
    return {{"id", parameter.id},
            {"channel", parameter.ofModule() ? text::Json() : text::Json(parameter.channelNumber)},
            {"name", text::toUtf8(parameter.name)},
            {"value", parameter.value},
            {"digits", valueDigits(parameter)},
            {"shown", text::toUtf8(valueWithUnit(parameter))},
            {"unit", text::toUtf8(parameter.unit)},
            {"default", row.standard.value},
            {"default_digits", valueDigits(row.standard)},
            {"default_shown", text::toUtf8(valueWithUnit(row.standard))},
            {"changed", row.changed},
            {"byte", row.place.begin},
            {"size", row.place.size},
            {"bit_offset", parameter.bitOffset()},
            {"bit_length", parameter.bitLength()},
            {"hex", text::hexOfBytes(configuration.bytes, row.place.begin, row.place.size)}};
}

// The values in a form that --values reads back, whatever the texts of the options are.
text::Json valuesJson(const DeviceReport& device)
{
    text::Json values = text::Json::object();
    for (const auto& parameter : device.parameters) {
        if (parameter.raw) { // parameters outside the image cannot be set
            values["#" + parameter.id] =
                parameter.hasOptionList ? "#" + parameter.value : valueDigits(parameter);
        }
    }
    return values;
}

text::CsvRow parameterCells(const PlaceRow& row, const ConfiguredImage& configuration)
{
    const DeviceReport::Parameter& parameter = row.parameter;
    return {parameter.id,
            parameter.ofModule() ? "" : std::to_string(parameter.channelNumber),
            parameter.name,
            valueDigits(parameter),
            valueWithUnit(parameter),
            parameter.unit,
            valueDigits(row.standard),
            row.changed ? "true" : "false",
            std::to_string(row.place.begin),
            std::to_string(row.place.size),
            std::to_string(parameter.bitOffset()),
            std::to_string(parameter.bitLength()),
            text::hexOfBytes(configuration.bytes, row.place.begin, row.place.size)};
}

} // namespace

std::string configurationText(const ConfiguredImage& configuration, Listing listing)
{
    return text::forTerminal(configuration.device.label) + " (" +
           configuration.device.deviceTypeId + ")\n\n" + heading(configuration) + "\n" +
           hexDump(configuration.bytes) + tableOf(configuration, listing) + "\n" +
           summary(configuration);
}

std::string configurationCsv(const ConfiguredImage& configuration, const CsvStyle& style,
                             Listing listing)
{
    const bool registers = configuration.fieldbus == Fieldbus::Modbus;
    std::vector<text::CsvRow> rows = {{"id", "channel", "name", "value", "shown", "unit", "default",
                                       "changed", "byte", "size", "bit_offset", "bit_length",
                                       "hex"}};
    if (registers) {
        text::append(registerColumns(), rows.front());
    }
    rows.front().push_back("device_type_id");
    for (const PlaceRow& row : rowsOf(configuration, listing)) {
        rows.push_back(parameterCells(row, configuration));
        if (registers) {
            text::append(registerCells(row.place), rows.back());
        }
        rows.back().push_back(configuration.device.deviceTypeId);
    }
    return text::csvText(rows, style.separator, style.byteOrderMark);
}

std::string configurationJson(const ConfiguredImage& configuration, Listing listing)
{
    const text::Json parameters =
        text::listJson(rowsOf(configuration, listing),
                       [&](const PlaceRow& row) { return rowJson(row, configuration); });
    return text::jsonText(
        {{"schema", text::jsonSchema("mxtool.config", 1)},
         {"file", text::toUtf8(configuration.file)},
         {"label", text::toUtf8(configuration.device.label)},
         {"device_type_id", configuration.device.deviceTypeId},
         {"fieldbus", configuration.fieldbus == Fieldbus::Modbus ? "modbus" : "raw"},
         {"size", configuration.bytes.size()},
         {"bytes", bufferAsHex(configuration.bytes)},
         {"image", bufferAsHex(configuration.image)},
         {"parameters", parameters},
         {"values", valuesJson(configuration.device)}});
}

} // namespace mxmodule
