#include "DeviceJson.h"

#include "ParameterText.h"
#include "configuration/AcceptedValue.h"

#include <devices/parser/mx/HexText.h>
#include <text/JsonText.h>
#include <text/ShownText.h>
#include <text/Utf8.h>

namespace mxmodule {

namespace {

text::Json propertyJson(const DeviceReport::Property& property)
{
    return {{"id", property.id}, {"name", property.name}, {"value", text::toUtf8(property.value)}};
}

text::Json channelJson(const DeviceReport::Channel& channel)
{
    return {{"id", channel.id},
            {"number", channel.number},
            {"name", text::toUtf8(channel.name)},
            {"direction", channel.direction},
            {"symbol", channel.symbol},
            {"size_letter", channel.sizeLetter},
            {"byte", channel.byteAddress},
            {"bit_offset", channel.bitOffset},
            {"bit_length", channel.bitLength}};
}

text::Json optionJson(const DeviceReport::Option& option, const std::string& callText)
{
    return {{"text", text::toUtf8(option.text)},
            {"value", option.value},
            {"raw", option.raw},
            {"current", option.current},
            {"call_text", callText}};
}

text::Json optionsJson(const DeviceReport::Parameter& parameter)
{
    const std::vector<std::string> texts = callTexts(parameter);
    text::Json options = text::Json::array();
    for (std::size_t i = 0; i < texts.size(); ++i) {
        options.push_back(optionJson(parameter.options[i], texts[i]));
    }
    return options;
}

text::Json parameterJson(const DeviceReport::Parameter& parameter, const ParameterNames& names)
{
    const mxformat::Datatype* datatype = parameter.field.datatype();
    return {{"id", parameter.id},
            {"channel", parameter.ofModule() ? text::Json() : text::Json(parameter.channelNumber)},
            {"name", text::toUtf8(parameter.name)},
            {"call_name", nameInCalls(parameter, names)},
            {"type", datatype != nullptr ? datatype->name : ""},
            {"value", parameter.value},
            {"digits", valueDigits(parameter)},
            {"shown", text::toUtf8(valueWithUnit(parameter))},
            {"accepted", isInRange(parameter)},
            {"physical", parameter.converted},
            {"unit", text::toUtf8(parameter.unit)},
            {"min", parameter.min},
            {"max", parameter.max},
            {"min_digits", minimumDigits(parameter)},
            {"max_digits", maximumDigits(parameter)},
            {"has_option_list", parameter.hasOptionList},
            {"options", optionsJson(parameter)},
            {"flag_bit_0", parameter.flagBit0},
            {"flag_bit_1", parameter.flagBit1},
            {"place",
             {{"byte_offset", parameter.field.begin()},
              {"data_size", parameter.field.size()},
              {"bit_offset", parameter.bitOffset()},
              {"bit_length", parameter.bitLength()}}}};
}

text::Json setJson(const DeviceReport::Set& set)
{
    return {{"id", set.id},
            {"name", set.name},
            {"kind", set.isRole ? "role" : "set"},
            {"members", set.members}};
}

text::Json binaryJson(const DeviceReport::Binary& binary)
{
    return {{"id", binary.id},
            {"name", binary.name},
            {"mime_type", binary.mimeType},
            {"encoding", binary.encoding},
            {"data", binary.data}};
}

} // namespace

text::Json deviceJson(const DeviceReport& report, const ParameterNames& names)
{
    return {{"schema", text::jsonSchema("mxtool.device", 2)},
            {"label", text::toUtf8(report.label)},
            {"device_type_id", report.deviceTypeId},
            {"properties", text::listJson(report.properties, propertyJson)},
            {"channels", text::listJson(report.channels, channelJson)},
            {"parameters", text::listJson(report.parameters,
                                          [&](const DeviceReport::Parameter& parameter) {
                                              return parameterJson(parameter, names);
                                          })},
            {"parameter_block", devices::parser::mx::bufferAsHex(report.parameterBlock)},
            {"binary_objects", text::listJson(report.binaries, binaryJson)},
            {"sets", text::listJson(report.sets, setJson)}};
}

} // namespace mxmodule
