#include "Records.h"

using devices::database::DeviceDatabase;
using devices::database::DeviceProperties;
using devices::database::ModuleContent;
using devices::database::ModuleSummary;

DeviceProperties device(const std::string& moduleId, const std::string& label)
{
    DeviceProperties record;
    record.family = "kv38";
    record.moduleIdText = moduleId;
    record.brandLabelName = label;
    record.text4 = std::string(1, '\0');
    record.text5 = std::string(1, '\0');
    record.inDataSize = 2;
    record.outDataSize = 3;
    return record;
}

std::vector<std::string> moduleIds(const std::vector<DeviceProperties>& records)
{
    std::vector<std::string> ids;
    for (const DeviceProperties& record : records) {
        ids.push_back(record.moduleIdText);
    }
    return ids;
}

std::vector<std::string> storedIds(const std::string& url)
{
    return moduleIds(DeviceDatabase(url).list());
}

std::vector<std::string> moduleIds(const std::vector<ModuleSummary>& modules)
{
    std::vector<std::string> ids;
    for (const ModuleSummary& module : modules) {
        ids.push_back(module.moduleIdText);
    }
    return ids;
}

ModuleContent contentNamed(const std::string& name)
{
    ModuleContent content;
    content.label = "Label " + name;
    content.orderCode = "Order-" + name;
    content.channels = {{1, "AI 1 " + name, "in", "W", "IW0"}, {1, "AO 1 " + name, "out", "", ""}};
    ModuleContent::Parameter limit;
    limit.name = "Limit " + name;
    limit.channel = 1;
    limit.widthBits = 16;
    limit.defaultValue = "20.5";
    limit.minimum = "-10";
    limit.maximum = "850";
    limit.unit = "\xC2\xB0"
                 "C";
    ModuleContent::Parameter filter;
    filter.name = "Filter " + name;
    filter.widthBits = 3;
    filter.defaultValue = "off";
    filter.options = {{"off", "0"}, {"50 Hz", "1"}};
    content.parameters = {limit, filter};
    return content;
}

std::vector<std::string> linesOf(const ModuleContent& content)
{
    std::vector<std::string> lines = {content.label, content.orderCode};
    for (const auto& channel : content.channels) {
        lines.push_back(std::to_string(channel.number) + "|" + channel.name + "|" +
                        channel.direction + "|" + channel.sizeLetter + "|" + channel.symbol);
    }
    for (const auto& parameter : content.parameters) {
        lines.push_back(parameter.name + "|" +
                        (parameter.channel ? std::to_string(*parameter.channel) : "module") + "|" +
                        std::to_string(parameter.widthBits) + "|" + parameter.defaultValue + "|" +
                        parameter.minimum + "|" + parameter.maximum + "|" + parameter.unit);
        for (const auto& option : parameter.options) {
            lines.push_back("  " + option.text + "|" + option.value);
        }
    }
    return lines;
}
