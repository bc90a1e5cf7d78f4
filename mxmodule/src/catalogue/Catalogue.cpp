#include "mxmodule/Catalogue.h"

#include "catalogue/CatalogueContent.h"
#include "catalogue/CatalogueOutput.h"
#include "catalogue/DatabaseHints.h"
#include "catalogue/DatabaseWork.h"

#include <devices/parser/mx/HexText.h>
#include <fmt/format.h>
#include <text/JsonText.h>
#include <text/Utf8.h>

#include <algorithm>
#include <deque>
#include <functional>
#include <stdexcept>
#include <utility>

namespace mxmodule {

namespace {

using devices::database::DeviceDatabase;
using devices::database::DeviceProperties;
using devices::database::ModuleContent;
using devices::database::ModuleSummary;
using devices::database::ModuleToStore;
using devices::database::OpenMode;

// A stored file has one byte more than the file on disk (0xFF).
std::vector<char> fileOf(const DeviceProperties& record)
{
    const std::vector<char>& stored = *record.mxFileData;
    return {stored.begin(), stored.empty() ? stored.end() : stored.end() - 1};
}

// Without knowing whether the catalogue has the content.
CatalogueRecord recordOf(const DeviceProperties& stored)
{
    CatalogueRecord record;
    record.parameterBlock = *stored.defaultParameterBlock;
    record.file = fileOf(stored);
    record.hostData = *stored.hostBytes;
    record.module = {stored.moduleIdText, stored.family,      text::toUtf8(stored.brandLabelName),
                     stored.inDataSize,   stored.outDataSize, record.parameterBlock.size(),
                     record.file.size()};
    return record;
}

std::vector<ModuleSummary> keysOf(const std::vector<CatalogueEntry>& modules)
{
    std::vector<ModuleSummary> keys(modules.size());
    for (std::size_t i = 0; i < modules.size(); ++i) {
        keys[i].family = modules[i].family;
        keys[i].moduleIdText = modules[i].moduleId;
    }
    return keys;
}

// Compares modules with that of `record`.
auto isOf(const DeviceProperties& record)
{
    return [&record](const CatalogueEntry& module) {
        return module.moduleId == record.moduleIdText && module.family == record.family;
    };
}

// Calls `work` with the keys of some of `modules` after the other: one by one each module would
// cost a round trip over the network, and all could fill the memory.
template <class Work>
void forSome(const std::vector<CatalogueEntry>& modules, const Work& work)
{
    constexpr std::size_t atOnce = 64;
    for (std::size_t first = 0; first < modules.size(); first += atOnce) {
        const auto begin = modules.begin() + static_cast<std::ptrdiff_t>(first);
        const auto count = std::min(atOnce, modules.size() - first);
        work(keysOf({begin, begin + static_cast<std::ptrdiff_t>(count)}));
    }
}

// Calls `visitor` for the records of those of `modules` that still exist, in their order. Failures
// of the visitor are its own.
void visitRecords(DeviceDatabase& database, const std::vector<CatalogueEntry>& modules,
                  const std::function<void(const DeviceProperties&)>& visitor)
{
    forSome(modules, [&](const std::vector<ModuleSummary>& keys) {
        std::vector<DeviceProperties> records;
        withDatabase("", [&] {
            database.visit(keys,
                           [&](const DeviceProperties& record) { records.push_back(record); });
        });
        std::for_each(records.begin(), records.end(), visitor);
    });
}

// Copies those of the modules of `keys` that exist; returns how many. One that the target rejects
// is a failure.
std::size_t copySome(DeviceDatabase& source, const std::vector<ModuleSummary>& keys,
                     DeviceDatabase& target)
{
    std::deque<DeviceProperties> records; // the copies point into both: a deque moves nothing
    std::deque<ModuleContent> contents;
    std::vector<ModuleToStore> copies;
    source.visitWithContent(keys,
                            [&](const DeviceProperties& record, const ModuleContent* content) {
                                records.push_back(record);
                                copies.push_back({&records.back(), nullptr});
                                if (content != nullptr) {
                                    contents.push_back(*content);
                                    copies.back().content = &contents.back();
                                }
                            });
    for (const auto& rejection : target.insertAll(copies)) {
        if (rejection) {
            throw std::runtime_error(*rejection);
        }
    }
    return copies.size();
}

// Tells an observer how many of some things are done.
class Counter
{
public:
    Counter(Observer* toTell, std::size_t count, const char* ofThings)
        : observer(toTell), total(count), things(ofThings)
    {
        tell();
    }

    void add(std::size_t count = 1)
    {
        done += count;
        tell();
    }

    std::size_t count() const { return done; }

private:
    void tell() const
    {
        if (observer != nullptr) {
            observer->progress(done, total, things);
        }
    }

    Observer* observer;
    std::size_t total;
    const char* things;
    std::size_t done = 0;
};

} // namespace

CatalogueEntry entryOf(const ModuleSummary& module)
{
    return {module.moduleIdText, module.family,      text::toUtf8(module.brandLabelName),
            module.inDataSize,   module.outDataSize, module.parameterBlockSize,
            module.mxFileSize,   module.hasContent};
}

Catalogue::Catalogue(std::unique_ptr<Content> made) : content(std::move(made)) {}
Catalogue::Catalogue(Catalogue&&) noexcept = default;
Catalogue& Catalogue::operator=(Catalogue&&) noexcept = default;
Catalogue::~Catalogue() = default;

Catalogue Catalogue::open(const std::string& url)
{
    const std::string chosen = url.empty() ? defaultUrl() : url;
    try {
        return Catalogue(std::make_unique<Content>(chosen, OpenMode::ExistingOnly));
    } catch (const std::runtime_error& failure) {
        throw Failure(Origin::Output, "", failure.what(), hintForOpening(chosen));
    }
}

Catalogue Catalogue::openOrCreate(const std::string& url)
{
    const std::string chosen = url.empty() ? defaultUrl() : url;
    return withDatabase(hintForScheme(chosen), [&] {
        return Catalogue(std::make_unique<Content>(chosen, OpenMode::CreateMissing));
    });
}

std::string Catalogue::defaultUrl()
{
    return devices::database::defaultDatabaseUrl();
}

const std::string& Catalogue::name() const
{
    return content->database.name();
}

std::optional<CatalogueRecord> Catalogue::find(const std::string& moduleId)
{
    return withDatabase("", [&]() -> std::optional<CatalogueRecord> {
        const auto stored = content->database.find(moduleId);
        if (!stored) {
            return std::nullopt;
        }
        CatalogueRecord record = recordOf(*stored);
        record.module.hasContent =
            content->database.content(stored->family, stored->moduleIdText).has_value();
        return record;
    });
}

bool Catalogue::remove(const std::string& moduleId)
{
    return withDatabase("", [&] { return content->database.remove(moduleId); });
}

Module Catalogue::module(const std::string& moduleId, const ModuleOptions& options)
{
    const auto record = find(moduleId);
    if (!record) {
        Finding unknown = unknownModule(moduleId);
        unknown.place = name();
        throw Failure(std::move(unknown));
    }
    if (record->file.empty()) {
        Finding missing = withoutFile({record->module}).front();
        missing.severity = Severity::Error;
        missing.place = name();
        throw Failure(std::move(missing));
    }
    return Module::fromBytes(record->file, fmt::format("<module {} of {}>", moduleId, name()),
                             options);
}

std::string Catalogue::json(const std::vector<CatalogueEntry>& modules)
{
    text::Json list = text::Json::array();
    visitRecords(content->database, modules, [&](const DeviceProperties& record) {
        list.push_back(recordJson(recordOf(record)));
    });
    return text::jsonText({{"schema", text::jsonSchema("mxtool.devices", 1)}, {"devices", list}});
}

std::size_t Catalogue::visitFiles(
    const std::vector<CatalogueEntry>& modules,
    const std::function<void(const CatalogueEntry&, const std::vector<char>&)>& visitor,
    Observer* observer)
{
    Counter written(observer, modules.size(), "files");
    auto module = modules.begin();
    visitRecords(content->database, modules, [&](const DeviceProperties& record) {
        module = std::find_if(module, modules.end(), isOf(record));
        if (!record.mxFileData->empty()) {
            visitor(*module, fileOf(record));
            written.add();
        }
        ++module;
    });
    return written.count();
}

std::size_t Catalogue::copyTo(Catalogue& target, const std::vector<CatalogueEntry>& modules,
                              Observer* observer)
{
    Counter copied(observer, modules.size(), "modules");
    DeviceDatabase& store = target.content->database;
    auto transaction = withDatabase("", [&] { return store.beginTransaction(); });
    forSome(modules, [&](const std::vector<ModuleSummary>& keys) {
        copied.add(withDatabase("", [&] { return copySome(content->database, keys, store); }));
    });
    withDatabase("", [&] { transaction.commit(); });
    return copied.count();
}

Module Module::fromCatalogue(const std::string& url, std::uint32_t moduleId,
                             const ModuleOptions& options)
{
    return fromCatalogue(url, devices::parser::mx::u32AsHex(moduleId), options);
}

Module Module::fromCatalogue(const std::string& url, const std::string& moduleId,
                             const ModuleOptions& options)
{
    return Catalogue::open(url).module(moduleId, options);
}

} // namespace mxmodule
