#include "database/Population.h"

#include "Diagnostic.h"
#include "LogToDiagnostics.h"
#include "Progress.h"
#include "database/CatalogueContent.h"
#include "database/MxDirectory.h"

#include <devices/parser/mx/Parser_kv38.h>

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

void insertOne(const DeviceProperties& record, const OpenParser& parser, DeviceDatabase& database,
               const DeviceDatabase::Transaction& transaction)
{
    const auto content = catalogueContent(makeReport(*parser.dev));
    try {
        database.insert(record, content);
    } catch (const std::runtime_error& failure) {
        if (!transaction.isAlive()) {
            throw TransactionLost{failure.what()};
        }
        throw;
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
    const Insertion insertion([&](DeviceProperties& record) {
        insertOne(record, parser, database, transaction);
        progress.show(++done + log.errorLines());
    });
    try {
        const unsigned inserted = parser.populateDatabase(directory);
        return {inserted, log.errorLines()};
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
