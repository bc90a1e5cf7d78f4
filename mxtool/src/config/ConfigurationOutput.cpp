#include "config/ConfigurationOutput.h"

#include "Counted.h"
#include "Csv.h"
#include "DeviceJson.h"
#include "HexBytes.h"
#include "ParameterText.h"
#include "TextTable.h"
#include "config/ParameterPlace.h"

#include <devices/parser/mx/HexText.h>
#include <text/ShownText.h>
#include <text/Utf8.h>

#include <fmt/format.h>

namespace mxtool {

namespace {

using devices::parser::FieldbusType;
using devices::parser::mx::bufferAsHex;

// One parameter in the buffer, for the three output formats.
struct PlaceRow
{
    const DeviceReport::Parameter& parameter;
    const DeviceReport::Parameter& standard; // with its default
    const ParameterPlace& place;
    bool changed;
};

std::vector<PlaceRow> rowsOf(const Configuration& configuration)
{
    std::vector<PlaceRow> rows;
    for (const ParameterPlace& place : configuration.places) {
        if (configuration.isShown(place.parameter)) {
            rows.push_back({configuration.device.parameters[place.parameter],
                            configuration.defaults.parameters[place.parameter], place,
                            configuration.isChanged(place.parameter)});
        }
    }
    return rows;
}

std::string heading(const Configuration& configuration)
{
    const std::size_t size = configuration.bytes.size();
    const std::string bytes = counted(size, "byte");
    return configuration.fieldbus == FieldbusType::Modbus
               ? fmt::format("Modbus registers: {}, {} registers", bytes, size / registerSize)
               : fmt::format("Raw parameter image: {}", bytes);
}

std::string hexDump(const std::vector<char>& bytes)
{
    constexpr std::size_t perLine = 16;
    std::string lines;
    for (std::size_t at = 0; at < bytes.size(); at += perLine) {
        lines += fmt::format("  {:04x}  {}\n", at, hexOfBytes(bytes, at, perLine));
    }
    return lines;
}

std::string summary(const Configuration& configuration)
{
    const std::size_t all = configuration.device.parameters.size();
    std::size_t changed = 0;
    for (std::size_t i = 0; i < all; ++i) {
        changed += configuration.isChanged(i) ? 1 : 0;
    }
    return fmt::format("{} of {} parameters differ from the default\n", changed, all);
}

std::string tableOf(const Configuration& configuration)
{
    if (configuration.places.empty()) {
        return "";
    }
    const bool modbus = configuration.fieldbus == FieldbusType::Modbus;
    TextTable table({modbus ? "Register" : "Byte", modbus ? "Byte" : "Bits", "Bytes",
                     "Parameter of", "Name", "Value", "Default"});
    for (const PlaceRow& row : rowsOf(configuration)) {
        const std::string bytes = rangeText(row.place.begin, row.place.size);
        table.add({modbus ? registersText(row.place) : bytes,
                   modbus ? bytes : bitsText(row.parameter),
                   hexOfBytes(configuration.bytes, row.place.begin, row.place.size),
                   ownerOf(row.parameter), row.parameter.name, valueWithUnit(row.parameter),
                   row.changed ? valueWithUnit(row.standard) : ""});
    }
    return "\n" + table.text();
}

Json rowJson(const PlaceRow& row, const Configuration& configuration)
{
    const DeviceReport::Parameter& parameter = row.parameter;
    return {{"id", parameter.id},
            {"channel", parameter.ofModule() ? Json() : Json(parameter.channelNumber)},
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
            {"hex", hexOfBytes(configuration.bytes, row.place.begin, row.place.size)}};
}

// The values in a form that --values reads back, whatever the texts of the options are.
Json valuesJson(const DeviceReport& device)
{
    Json values = Json::object();
    for (const auto& parameter : device.parameters) {
        if (parameter.raw) { // parameters outside the image cannot be set
            values["#" + parameter.id] =
                parameter.hasOptionList ? "#" + parameter.value : valueDigits(parameter);
        }
    }
    return values;
}

CsvRow parameterCells(const PlaceRow& row, const Configuration& configuration)
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
            hexOfBytes(configuration.bytes, row.place.begin, row.place.size)};
}

} // namespace

std::string configurationText(const Configuration& configuration)
{
    return text::forTerminal(configuration.device.label) + " (" +
           configuration.device.deviceTypeId + ")\n\n" + heading(configuration) + "\n" +
           hexDump(configuration.bytes) + tableOf(configuration) + "\n" + summary(configuration);
}

std::string configurationCsv(const Configuration& configuration, const CsvStyle& style)
{
    const bool registers = configuration.fieldbus == FieldbusType::Modbus;
    std::vector<CsvRow> rows = {{"id", "channel", "name", "value", "shown", "unit", "default",
                                 "changed", "byte", "size", "bit_offset", "bit_length", "hex"}};
    if (registers) {
        append(registerColumns(), rows.front());
    }
    rows.front().push_back("device_type_id");
    for (const PlaceRow& row : rowsOf(configuration)) {
        rows.push_back(parameterCells(row, configuration));
        if (registers) {
            append(registerCells(row.place), rows.back());
        }
        rows.back().push_back(configuration.device.deviceTypeId);
    }
    return csvText(rows, style);
}

std::string configurationJson(const Configuration& configuration, const std::string& file)
{
    const Json parameters = listJson(
        rowsOf(configuration), [&](const PlaceRow& row) { return rowJson(row, configuration); });
    return jsonText(
        {{"schema", jsonSchema("mxtool.config", 1)},
         {"file", text::toUtf8(file)},
         {"label", text::toUtf8(configuration.device.label)},
         {"device_type_id", configuration.device.deviceTypeId},
         {"fieldbus", configuration.fieldbus == FieldbusType::Modbus ? "modbus" : "raw"},
         {"size", configuration.bytes.size()},
         {"bytes", bufferAsHex(configuration.bytes)},
         {"image", bufferAsHex(configuration.image)},
         {"parameters", parameters},
         {"values", valuesJson(configuration.device)}});
}

} // namespace mxtool
