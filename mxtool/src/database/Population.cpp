#include "database/Population.h"

#include "Diagnostic.h"
#include "LogToDiagnostics.h"
#include "Progress.h"
#include "database/CatalogueContent.h"
#include "database/MxDirectory.h"

#include <devices/parser/mx/Parser_kv38.h>

#include <fmt/format.h>

#include <set>
#include <utility>

namespace mxtool {

namespace {

using devices::database::DeviceDatabase;
using devices::database::DeviceProperties;

// Opens the device that is being inserted.
class OpenParser : public devices::parser::mx::Parser_kv38
{
public:
    using Parser_kv38::dev;
};

// No exception of the standard's: the parser goes on with the next file after one of those.
struct TransactionLost
{
    std::string reason;
};

// What `insertDeviceProperties` does while this lives.
class Insertion
{
public:
    explicit Insertion(std::function<void(DeviceProperties&)> work)
    {
        devices::database::insertThrough(std::move(work));
    }
    ~Insertion() { devices::database::insertThrough({}); }
    Insertion(const Insertion&) = delete;
    Insertion& operator=(const Insertion&) = delete;
};

using ModuleKey = std::pair<std::string, std::string>; // family and identifier

// Stores each record, and tells those that were there from those of which a second file comes.
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

    void insert(const DeviceProperties& record, const OpenParser& parser)
    {
        store(record, catalogueContent(makeReport(*parser.dev, conversionsOf(*record.mxFileData))));
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
                throw TransactionLost{failure.what()};
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

void reportRepeated(const std::set<std::string>& modules, const std::string& directory)
{
    for (const std::string& module : modules) {
        report({"warning", directory,
                fmt::format("Module {} has several files, of which one is stored: {}", module,
                            fmt::join(filesStating(module, directory), ", ")),
                "leave one of them in the directory"});
    }
}

} // namespace

PopulationCount populate(const std::string& directory, DeviceDatabase& database,
                         const DeviceDatabase::Transaction& transaction,
                         const std::string& logLevel)
{
    OpenParser parser;
    const LogToDiagnostics log(logLevel);
    Progress progress("files", mxFilesIn(directory).size());
    unsigned done = 0;
    Records records(database, transaction);
    const Insertion insertion([&](DeviceProperties& record) {
        records.insert(record, parser);
        progress.show(++done + log.errorLines());
    });
    try {
        const unsigned stored = parser.populateDatabase(directory);
        reportRepeated(records.ofSeveralFiles(), directory);
        return {stored - records.replaced(), records.replaced(), log.errorLines()};
    } catch (const TransactionLost& lost) {
        throw Failure(ExitCode::Output, {"error", "", lost.reason, "the database is unchanged"});
    } catch (const std::runtime_error& failure) {
        throw Failure(ExitCode::Input,
                      {"error", directory, failure.what(), "the database is unchanged"});
    }
}

std::optional<std::vector<devices::database::ModuleSummary>>
modulesNotIn(const std::string& directory, DeviceDatabase& database)
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

} // namespace mxtool
