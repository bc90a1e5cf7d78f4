#include "database/Population.h"

#include "Diagnostic.h"
#include "InputFile.h"
#include "LogToDiagnostics.h"
#include "ParameterText.h"
#include "Progress.h"

#include <devices/parser/mx/Parser_kv38.h>

#include <fmt/format.h>
#include <text/ShownText.h>

#include <filesystem>
#include <set>
#include <utility>

namespace mxtool {

namespace {

using devices::database::DeviceDatabase;
using devices::database::DeviceProperties;
using devices::parser::mx::Parser_kv38;

constexpr const char* unchanged = "the database is unchanged";

using ModuleKey = std::pair<std::string, std::string>; // family and identifier

// Stores each record; distinguishes modules already in the database from those with a second file.
class Records
{
public:
    Records(DeviceDatabase& store, const DeviceDatabase::Transaction& within)
        : database(store), transaction(within)
    {
        for (const auto& module : database.search({})) {
            present.insert({module.family, module.moduleIdText});
        }
    }

    void insert(const Parser_kv38::DeviceP& device)
    {
        const DeviceProperties& record = device.privateProps;
        store(record, catalogueContent(makeReport(device, conversionsOf(*record.mxFileData))));
        const ModuleKey key{record.family, record.moduleIdText};
        replacedCount += present.insert(key).second ? 0 : 1;
        if (!inserted.insert(key).second) {
            repeated.insert(record.moduleIdText);
        }
    }

    unsigned replaced() const { return replacedCount; }
    const std::set<std::string>& ofSeveralFiles() const { return repeated; }

private:
    void store(const DeviceProperties& record, const devices::database::ModuleContent& content)
    {
        try {
            database.insert(record, content);
        } catch (const std::runtime_error& failure) {
            if (!transaction.isAlive()) {
                throw Failure(ExitCode::Output, "", failure.what(), unchanged);
            }
            throw;
        }
    }

    DeviceDatabase& database;
    const DeviceDatabase::Transaction& transaction;
    std::set<ModuleKey> present;
    std::set<ModuleKey> inserted;
    std::set<std::string> repeated;
    unsigned replacedCount = 0;
};

void reportRepeated(const std::set<std::string>& modules, const MxDirectory& directory)
{
    for (const std::string& module : modules) {
        report({"warning", directory.path,
                fmt::format("Module {} has several files, of which one is stored: {}", module,
                            fmt::join(filesStating(module, directory), ", ")),
                "leave one of them in the directory"});
    }
}

std::vector<char> load(const std::string& file)
{
    try {
        return loadInput(file);
    } catch (Failure& failure) {
        failure.diagnostic.hint = unchanged;
        throw;
    }
}

// Translates `file` and stores its record. Reports a failure of either and returns false.
bool populateFrom(const std::string& file, Parser_kv38& parser, Records& records,
                  const LogToDiagnostics& log)
{
    const std::string name = std::filesystem::path(file).filename().string();
    log.debug("Loading mx file " + name);
    const std::vector<char> mxData = load(file);
    try {
        const auto device = parser.parse(mxData, nullptr, 0, 0);
        device->privateProps.mxFileData = new std::vector<char>(mxData);
        records.insert(*device);
        return true;
    } catch (const Failure&) {
        throw;
    } catch (const std::exception& failure) {
        report({"error", "", "File " + name + ": " + failure.what()});
        return false;
    }
}

using devices::database::ModuleContent;

ModuleContent::Channel channelOf(const DeviceReport::Channel& channel)
{
    return {channel.number, text::forTerminal(channel.name), channel.direction, channel.sizeLetter,
            channel.symbol};
}

ModuleContent::Parameter parameterOf(const DeviceReport::Parameter& parameter)
{
    ModuleContent::Parameter content;
    content.name = text::forTerminal(parameter.name);
    if (!parameter.ofModule()) {
        content.channel = parameter.channelNumber;
    }
    content.widthBits = parameter.field.bits();
    content.defaultValue = text::forTerminal(valueText(parameter));
    content.minimum = text::forTerminal(minimumDigits(parameter));
    content.maximum = text::forTerminal(maximumDigits(parameter));
    content.unit = text::forTerminal(parameter.unit);
    for (const DeviceReport::Option& option : parameter.options) {
        content.options.push_back(
            {text::forTerminal(option.text), text::forTerminal(option.value)});
    }
    return content;
}

} // namespace

PopulationCount populate(const MxDirectory& directory, DeviceDatabase& database,
                         const DeviceDatabase::Transaction& transaction,
                         const std::string& logLevel)
{
    Parser_kv38 parser;
    const LogToDiagnostics log(logLevel);
    Progress progress("files", directory.files.size());
    Records records(database, transaction);
    unsigned stored = 0;
    unsigned failed = 0;
    for (const std::string& file : directory.files) {
        ++(populateFrom(file, parser, records, log) ? stored : failed);
        progress.show(stored + failed);
    }
    reportRepeated(records.ofSeveralFiles(), directory);
    return {stored - records.replaced(), records.replaced(), failed + directory.leftOut};
}

std::optional<std::vector<devices::database::ModuleSummary>>
modulesNotIn(const MxDirectory& directory, DeviceDatabase& database)
{
    const auto stated = statedModules(directory);
    if (!stated) {
        return std::nullopt;
    }
    std::vector<devices::database::ModuleSummary> missing;
    for (const auto& module : database.search({})) {
        if (module.family == "kv38" && stated->count(module.moduleIdText) == 0) {
            missing.push_back(module);
        }
    }
    return missing;
}

ModuleContent catalogueContent(const DeviceReport& device)
{
    ModuleContent content;
    content.label = text::forTerminal(device.label);
    content.orderCode = text::forTerminal(device.property("brandOrderCode"));
    for (const DeviceReport::Channel& channel : device.channels) {
        content.channels.push_back(channelOf(channel));
    }
    for (const DeviceReport::Parameter& parameter : device.parameters) {
        content.parameters.push_back(parameterOf(parameter));
    }
    return content;
}

} // namespace mxtool
