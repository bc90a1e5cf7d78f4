#pragma once

#include "ModuleBatches.h"
#include "RecordStore.h"
#include "SqlTransactions.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace devices::database {

/// A store in an SQL engine.
///
/// Many modules are stored in batches, each with one savepoint; one that is rejected is found by
/// halving its batch.
class SqlRecordStore final : public RecordStore
{
public:
    /// `name` is the name of the database in messages. Creates or migrates its schema according to
    /// `mode`; rejects a newer one, and a database with other content.
    SqlRecordStore(std::string name, std::unique_ptr<SqlConnection> openConnection, OpenMode mode);
    ~SqlRecordStore() override;

    const std::string& name() const override { return transactions.name(); }
    void begin() override { transactions.begin(); }
    void commit() override { transactions.commit(); }
    void rollback() override { transactions.rollback(); }
    bool isTransactionAlive() override { return transactions.isTransactionAlive(); }
    void insert(const ModuleToStore& module) override;
    std::vector<std::optional<std::string>>
    insertAll(const std::vector<ModuleToStore>& modules) override;
    std::optional<DeviceProperties> find(const std::string& moduleId) override;
    std::vector<StoredModule> findAll(const std::vector<ModuleSummary>& modules) override;
    std::vector<StoredModule>
    findAllWithContent(const std::vector<ModuleSummary>& modules) override;
    std::vector<DeviceProperties> list() override;
    void search(const PagedQuery& query, const SummaryTaker& take,
                const std::function<void()>& forget) override;
    SearchExplanation explain(const PagedQuery& query) override;
    ModuleCounts counts() override;
    std::optional<ModuleContent> content(const std::string& family,
                                         const std::string& moduleId) override;
    bool remove(const std::string& moduleId) override;
    std::size_t removeAll(const std::vector<ModuleSummary>& modules) override;

private:
    using Rejections = std::vector<std::optional<std::string>>;

    /// Runs `work`, which searches, on one state of the database.
    template <typename Work>
    auto searchedState(Work work) -> decltype(work());

    void storeBatch(const std::vector<ModuleToStore>& modules, const ModulePositions& batch,
                    Rejections& rejections);
    void store(const std::vector<ModuleToStore>& modules);
    std::size_t removeKeys(const std::vector<RowStatement::Row>& keys);

    SqlTransactions transactions;
};

} // namespace devices::database
