#include "mxmodule/Population.h"

#include "DeviceReport.h"
#include "ProcessParser.h"
#include "catalogue/CatalogueContent.h"
#include "catalogue/DatabaseWork.h"
#include "catalogue/LoadedFile.h"
#include "catalogue/ModuleContent.h"
#include "catalogue/StatedModules.h"

#include <fmt/format.h>

#include <filesystem>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <variant>

namespace mxmodule {

namespace {

using devices::database::DeviceDatabase;
using devices::database::DeviceProperties;
using devices::database::ModuleContent;
using devices::parser::mx::Parser_kv38;

constexpr const char* unchanged = "the database is unchanged";

using ModuleKey = std::pair<std::string, std::string>; // family and identifier

struct StoredModule
{
    DeviceProperties record;
    ModuleContent content;
};

std::vector<char> contentOf(const std::string& file)
{
    try {
        return loadedFile(file);
    } catch (const Failure& failure) {
        Finding reason = failure.reason();
        reason.hint = unchanged;
        throw Failure(std::move(reason));
    }
}

// The module of an mx file, or why there is none. What is not the file's fault is thrown: an
// exception of the observer, a use of the parser by another thread of the host.
std::variant<StoredModule, std::string> translated(std::vector<char> mxData, Observer* observer)
{
    std::shared_ptr<Parser_kv38::DeviceP> device;
    std::string failed;
    withParser(observer, [&](Parser_kv38& parser) {
        try {
            device = parser.parse(mxData, nullptr, 0, 0);
        } catch (const std::runtime_error& failure) {
            failed = failure.what();
        }
    });
    if (device == nullptr) {
        return failed;
    }
    StoredModule module{device->privateProps,
                        catalogueContent(makeReport(*device, conversionsOf(mxData)))};
    device.reset(); // points into the bytes
    module.record.mxFileData = new std::vector<char>(std::move(mxData));
    return module;
}

} // namespace

/// One run of `populate`, within one transaction.
class PopulationRun
{
public:
    PopulationRun(const MxDirectory& from, Catalogue& catalogue, Observer* toTell)
        : directory(from),
          database(catalogue.content->database),
          observer(toTell),
          transaction(withDatabase(unchanged, [this] { return database.beginTransaction(); })),
          present(keysOf(searched()))
    {}

    /// Stores the module of each file.
    void storeAll()
    {
        result.failed = directory.leftOut.size();
        for (std::size_t done = 0; done < directory.files.size(); ++done) {
            tell(done);
            store(directory.files[done]);
        }
        tell(directory.files.size());
        findRepeated();
    }

    /// Removes the modules that no file states.
    void removeMissing()
    {
        const auto stated = statedModules(directory);
        if (!stated) {
            const std::string reason = directory.leftOut.empty()
                                           ? "A file does not state its module"
                                           : "An entry was left out";
            add({Severity::Warning, directory.path,
                 reason + ", which may be any in the database: nothing is removed"});
            return;
        }
        for (const auto& module : searched()) {
            if (module.family == "kv38" && stated->count(module.moduleIdText) == 0) {
                withDatabase(unchanged,
                             [&] { database.remove(module.family, module.moduleIdText); });
                result.removed.push_back(entryOf(module));
            }
        }
    }

    Population committed()
    {
        withDatabase(unchanged, [this] { transaction.commit(); });
        return std::move(result);
    }

private:
    using Modules = std::vector<devices::database::ModuleSummary>;

    static std::set<ModuleKey> keysOf(const Modules& modules)
    {
        std::set<ModuleKey> keys;
        for (const auto& module : modules) {
            keys.insert({module.family, module.moduleIdText});
        }
        return keys;
    }

    Modules searched()
    {
        return withDatabase(unchanged, [this] { return database.search({}); });
    }

    void tell(std::size_t done) const
    {
        if (observer != nullptr) {
            observer->progress(done, directory.files.size(), "files");
        }
    }

    void add(Finding finding)
    {
        if (observer != nullptr) {
            observer->notice(finding);
        }
        result.findings.push_back(std::move(finding));
    }

    void addFailed(const std::string& name, const std::string& reason)
    {
        ++result.failed;
        add({Severity::Error, "", "File " + name + ": " + reason});
    }

    void store(const std::string& file)
    {
        const std::string name = std::filesystem::path(file).filename().string();
        logDebug(observer, "Loading mx file " + name);
        const auto module = translated(contentOf(file), observer);
        if (const auto* const reason = std::get_if<std::string>(&module)) {
            addFailed(name, *reason);
            return;
        }
        const auto& made = std::get<StoredModule>(module);
        if (const auto rejected = rejection(made)) {
            addFailed(name, *rejected);
            return;
        }
        count(made.record);
    }

    // Stores `module`; returns why the database rejected it, if it did. A lost transaction is a
    // failure of the whole run.
    std::optional<std::string> rejection(const StoredModule& module)
    {
        try {
            database.insert(module.record, module.content);
            return std::nullopt;
        } catch (const std::runtime_error& failure) {
            if (!transaction.isAlive()) {
                throw Failure(Origin::Output, "", failure.what(), unchanged);
            }
            return failure.what();
        }
    }

    void count(const DeviceProperties& record)
    {
        const ModuleKey key{record.family, record.moduleIdText};
        ++(present.insert(key).second ? result.inserted : result.replaced);
        if (!stored.insert(key).second) {
            repeated.insert(record.moduleIdText);
        }
    }

    void findRepeated()
    {
        for (const std::string& module : repeated) {
            add({Severity::Warning, directory.path,
                 fmt::format("Module {} has several files, of which one is stored: {}", module,
                             fmt::join(filesStating(module, directory), ", ")),
                 "leave one of them in the directory"});
        }
    }

    const MxDirectory& directory;
    DeviceDatabase& database;
    Observer* observer;
    DeviceDatabase::Transaction transaction;
    std::set<ModuleKey> present;    // in the database
    std::set<ModuleKey> stored;     // by this run
    std::set<std::string> repeated; // identifiers with several files
    Population result;
};

Population populate(const MxDirectory& directory, Catalogue& catalogue,
                    const PopulateOptions& options, Observer* observer)
{
    PopulationRun run(directory, catalogue, observer);
    run.storeAll();
    if (options.replace) {
        run.removeMissing();
    }
    return run.committed();
}

} // namespace mxmodule
