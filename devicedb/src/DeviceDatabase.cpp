#include "devices/database/DeviceDatabase.h"

#include "RecordStore.h"

#include <algorithm>
#include <map>
#include <utility>

namespace devices::database {

namespace {

constexpr std::size_t modulesReadAtOnce = 64; // 4 MiB of mx files at most

// Calls `visitor` for those of `modules` that `find` gives, in their order and some at a time.
template <class Find, class Visitor>
void visitInOrder(const std::vector<ModuleSummary>& modules, const Find& find,
                  const Visitor& visitor)
{
    for (std::size_t first = 0; first < modules.size(); first += modulesReadAtOnce) {
        const auto begin = modules.begin() + static_cast<std::ptrdiff_t>(first);
        const std::size_t count = std::min(modules.size() - first, modulesReadAtOnce);
        const std::vector<ModuleSummary> some(begin, begin + static_cast<std::ptrdiff_t>(count));
        std::map<std::pair<std::string, std::string>, StoredModule> found;
        for (StoredModule& module : find(some)) {
            found.emplace(std::pair(module.record.family, module.record.moduleIdText),
                          std::move(module));
        }
        for (const ModuleSummary& module : some) {
            const auto stored = found.find({module.family, module.moduleIdText});
            if (stored != found.end()) {
                visitor(stored->second);
            }
        }
    }
}

} // namespace

DeviceDatabase::DeviceDatabase(const std::string& url)
    : DeviceDatabase(url, OpenMode::CreateMissing)
{}

DeviceDatabase::DeviceDatabase(const std::string& url, OpenMode mode)
    : store(openRecordStore(url, mode))
{}

DeviceDatabase::~DeviceDatabase() = default;

const std::string& DeviceDatabase::name() const
{
    return store->name();
}

void DeviceDatabase::insert(const DeviceProperties& record)
{
    store->insert({&record, nullptr});
}

void DeviceDatabase::insert(const DeviceProperties& record, const ModuleContent& content)
{
    store->insert({&record, &content});
}

std::vector<std::optional<std::string>>
DeviceDatabase::insertAll(const std::vector<ModuleToStore>& modules)
{
    return store->insertAll(modules);
}

std::optional<DeviceProperties> DeviceDatabase::find(const std::string& moduleId)
{
    return store->find(moduleId);
}

std::vector<DeviceProperties> DeviceDatabase::list()
{
    return store->list();
}

std::vector<ModuleSummary> DeviceDatabase::search(const ModuleQuery& query)
{
    return searchPage({query});
}

std::vector<ModuleSummary> DeviceDatabase::searchPage(const PagedQuery& query)
{
    std::vector<ModuleSummary> found;
    const auto take = [&](const ModuleSummary& module) {
        found.push_back(module);
        return true;
    };
    store->search(query, take, [&] { found.clear(); });
    return found;
}

void DeviceDatabase::searchPage(const PagedQuery& query,
                                const std::function<bool(const ModuleSummary&)>& take)
{
    store->search(query, take, nullptr);
}

SearchExplanation DeviceDatabase::explain(const PagedQuery& query)
{
    return store->explain(query);
}

ModuleCounts DeviceDatabase::counts()
{
    return store->counts();
}

void DeviceDatabase::visit(const std::vector<ModuleSummary>& modules,
                           const std::function<void(const DeviceProperties&)>& visitor)
{
    visitInOrder(
        modules, [this](const auto& some) { return store->findAll(some); },
        [&](const StoredModule& module) { visitor(module.record); });
}

void DeviceDatabase::visitWithContent(
    const std::vector<ModuleSummary>& modules,
    const std::function<void(const DeviceProperties&, const ModuleContent*)>& visitor)
{
    visitInOrder(
        modules, [this](const auto& some) { return store->findAllWithContent(some); },
        [&](const StoredModule& module) {
            visitor(module.record, module.content ? &*module.content : nullptr);
        });
}

std::optional<ModuleContent> DeviceDatabase::content(const std::string& family,
                                                     const std::string& moduleId)
{
    return store->content(family, moduleId);
}

bool DeviceDatabase::remove(const std::string& moduleId)
{
    return store->remove(moduleId);
}

bool DeviceDatabase::remove(const std::string& family, const std::string& moduleId)
{
    ModuleSummary module;
    module.family = family;
    module.moduleIdText = moduleId;
    return store->removeAll({module}) != 0;
}

std::size_t DeviceDatabase::removeAll(const std::vector<ModuleSummary>& modules)
{
    return store->removeAll(modules);
}

DeviceDatabase::Transaction DeviceDatabase::beginTransaction()
{
    return Transaction(*store);
}

DeviceDatabase::Transaction::Transaction(RecordStore& recordStore) : store(&recordStore)
{
    store->begin();
}

DeviceDatabase::Transaction::Transaction(Transaction&& other) noexcept
    : store(std::exchange(other.store, nullptr))
{}

DeviceDatabase::Transaction::~Transaction()
{
    if (store == nullptr) {
        return;
    }
    try {
        store->rollback();
    } catch (const std::exception&) {
        // The connection is lost, and with it the changes; a destructor cannot report that.
    }
}

void DeviceDatabase::Transaction::commit()
{
    store->commit();
    store = nullptr;
}

bool DeviceDatabase::Transaction::isAlive() const
{
    return store != nullptr && store->isTransactionAlive();
}

} // namespace devices::database
