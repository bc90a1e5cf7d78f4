#include "mxmodule/Population.h"

#include "catalogue/CatalogueContent.h"
#include "catalogue/DatabaseWork.h"
#include "catalogue/StatedModules.h"
#include "catalogue/TranslatedFile.h"

#include <fmt/format.h>

#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace mxmodule {

namespace {

using devices::database::DeviceDatabase;
using devices::database::DeviceProperties;

constexpr const char* unchanged = "the database is unchanged";

using ModuleKey = std::pair<std::string, std::string>; // family and identifier

// At most so many bytes of mx files wait to be stored.
constexpr std::size_t mostPendingBytes = 4U << 20U;

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
        storePending();
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
        Modules missing;
        for (const auto& module : searched()) {
            if (module.family == "kv38" && stated->count(module.moduleIdText) == 0) {
                missing.push_back(module);
                result.removed.push_back(entryOf(module));
            }
        }
        withDatabase(unchanged, [&] { database.removeAll(missing); });
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

    // Files that wait to be stored are told before one that cannot be read.
    TranslatedFile translated(const std::string& file)
    {
        try {
            return translatedFile(file, observer);
        } catch (const Failure& failure) {
            storePending();
            Finding reason = failure.reason();
            reason.hint = unchanged;
            throw Failure(std::move(reason));
        }
    }

    void store(const std::string& file)
    {
        pending.push_back(translated(file));
        if (const auto& module = pending.back().module) {
            pendingBytes += module->record.mxFileData->size();
        }
        if (pending.size() == devices::database::modulesOfBatch ||
            pendingBytes >= mostPendingBytes) {
            storePending();
        }
    }

    // Stores the modules of the files that wait, and tells what became of each in their order.
    void storePending()
    {
        const std::vector<TranslatedFile> files = std::exchange(pending, {});
        pendingBytes = 0;
        const auto rejections = rejectionsOf(files);
        auto rejection = rejections.begin();
        for (const TranslatedFile& file : files) {
            if (!file.module) {
                addFailed(file.name, file.failure);
                continue;
            }
            if (*rejection) {
                addFailed(file.name, **rejection);
            } else {
                count(file.module->record);
            }
            ++rejection;
        }
    }

    // Stores the modules of `files`; returns for each of these why the database rejected it, if it
    // did. A lost transaction is a failure of the whole run.
    std::vector<std::optional<std::string>> rejectionsOf(const std::vector<TranslatedFile>& files)
    {
        std::vector<devices::database::ModuleToStore> modules;
        for (const TranslatedFile& file : files) {
            if (file.module) {
                modules.push_back({&file.module->record, &file.module->content});
            }
        }
        return withDatabase(unchanged, [&] { return database.insertAll(modules); });
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
        for (const auto& [module, files] : filesStating(repeated, directory)) {
            add({Severity::Warning, directory.path,
                 fmt::format("Module {} has several files, of which one is stored: {}", module,
                             fmt::join(files, ", ")),
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
    std::vector<TranslatedFile> pending;
    std::size_t pendingBytes = 0;
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
