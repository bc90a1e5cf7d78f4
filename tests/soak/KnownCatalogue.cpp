#include "KnownCatalogue.h"

#include <stdexcept>

using devices::database::DeviceDatabase;
using devices::database::DeviceProperties;
using devices::database::ModuleContent;
using devices::database::ModuleSummary;

namespace {

// Texts of a content hold no NUL, so it separates the cells.
void addCells(std::string& text, const std::vector<std::string>& cells)
{
    for (const std::string& cell : cells) {
        text += cell + '\0';
    }
}

std::string cellsOf(const ModuleContent& content)
{
    std::string text;
    addCells(text, {content.label, content.orderCode});
    for (const auto& channel : content.channels) {
        addCells(text, {std::to_string(channel.number), channel.name, channel.direction,
                        channel.sizeLetter, channel.symbol});
    }
    for (const auto& parameter : content.parameters) {
        addCells(text, {parameter.name, std::to_string(parameter.channel.value_or(0)),
                        std::to_string(parameter.widthBits), parameter.defaultValue,
                        parameter.minimum, parameter.maximum, parameter.unit});
        for (const auto& option : parameter.options) {
            addCells(text, {option.text, option.value});
        }
    }
    return text;
}

std::string bytesOf(const DeviceProperties& record)
{
    return {record.mxFileData->begin(), record.mxFileData->end()};
}

} // namespace

KnownCatalogue::KnownCatalogue(const std::string& url)
{
    DeviceDatabase database(url, devices::database::OpenMode::ExistingOnly);
    for (const DeviceProperties& record : database.list()) {
        const auto content = database.content(record.family, record.moduleIdText);
        if (!content) {
            throw std::runtime_error("module " + record.moduleIdText + " has no content");
        }
        byId[record.moduleIdText] = {bytesOf(record), cellsOf(*content), content->orderCode,
                                     record.brandLabelName};
        labelsByOrderCode[content->orderCode][record.moduleIdText] = record.brandLabelName;
        ids.push_back(record.moduleIdText);
    }
}

const std::string& KnownCatalogue::orderCode(const std::string& moduleId) const
{
    return byId.at(moduleId).orderCode;
}

bool KnownCatalogue::holds(const std::string& moduleId,
                           const std::optional<DeviceProperties>& record) const
{
    const Module& module = byId.at(moduleId);
    return record && bytesOf(*record) == module.file && record->brandLabelName == module.label;
}

bool KnownCatalogue::holds(const std::string& moduleId,
                           const std::optional<ModuleContent>& content) const
{
    return content && cellsOf(*content) == byId.at(moduleId).content;
}

bool KnownCatalogue::holds(const std::string& orderCode,
                           const std::vector<ModuleSummary>& found) const
{
    std::map<std::string, std::string> labels;
    for (const ModuleSummary& module : found) {
        labels[module.moduleIdText] = module.brandLabelName;
    }
    return found.size() == labels.size() && labels == labelsByOrderCode.at(orderCode);
}
