#pragma once

#include "DatabaseSchema.h"
#include "ModuleBatches.h"
#include "ModuleTables.h"
#include "RecordStore.h"
#include "SqlConnection.h"
#include "SummaryRow.h"

#include <functional>

namespace devices::database {

/// A store in an SQL engine.
///
/// Every change runs inside a transaction, or inside a savepoint of the one that is open, so that a
/// rejected record affects no other. Many modules are stored in batches, each with one savepoint;
/// one that is rejected is found by halving its batch.
class SqlRecordStore final : public RecordStore
{
public:
    /// `name` is the name of the database in messages. Creates or migrates its schema according to
    /// `mode`; rejects a newer one, and a database with other content.
    SqlRecordStore(std::string name, std::unique_ptr<SqlConnection> openConnection, OpenMode mode);
    ~SqlRecordStore() override;

    const std::string& name() const override { return shownName; }
    void begin() override;
    void commit() override;
    void rollback() override;
    bool isTransactionAlive() override;
    void insert(const ModuleToStore& module) override;
    std::vector<std::optional<std::string>>
    insertAll(const std::vector<ModuleToStore>& modules) override;
    std::optional<DeviceProperties> find(const std::string& moduleId) override;
    std::vector<StoredModule> findAll(const std::vector<ModuleSummary>& modules) override;
    std::vector<StoredModule>
    findAllWithContent(const std::vector<ModuleSummary>& modules) override;
    std::vector<DeviceProperties> list() override;
    void search(const PagedQuery& query, const SummaryTaker& take) override;
    SearchExplanation explain(const PagedQuery& query) override;
    ModuleCounts counts() override;
    std::optional<ModuleContent> content(const std::string& family,
                                         const std::string& moduleId) override;
    bool remove(const std::string& moduleId) override;
    std::size_t removeAll(const std::vector<ModuleSummary>& modules) override;

private:
    using Rejections = std::vector<std::optional<std::string>>;

    /// Runs `work`; turns a `SqlFailure` into a sentence that says what was `attempted`.
    template <typename Work>
    auto attempt(const char* attempted, Work work) -> decltype(work());

    /// Runs `work`, which has no effect when it fails, once more if another connection can be made
    /// for `access` after its failure. Only the first of several changes may connect again.
    template <typename Work>
    auto repeatable(Access access, Work work) -> decltype(work());

    /// `repeatable` for `work` that reads, as an `attempt`.
    template <typename Work>
    auto read(Work work) -> decltype(work());

    /// Runs `work`, whose several statements read one state of the database.
    template <typename Work>
    auto readOneState(Work work) -> decltype(work());

    void openSchema();
    bool connectAgain(const SqlFailure& failure, Access access);
    void startTransaction();
    void commitTransaction();
    void requireTransaction();
    void change(const char* attempted, const std::function<void()>& work);
    void takeBack(bool wholeTransaction);
    void storeBatch(const std::vector<ModuleToStore>& modules, const ModulePositions& batch,
                    Rejections& rejections);
    void store(const std::vector<ModuleToStore>& modules);
    std::size_t removeKeys(const std::vector<RowStatement::Row>& keys);
    ModuleTables& tables();

    std::string shownName;
    std::unique_ptr<SqlConnection> connection;
    OpenMode openMode;
    DatabaseSchema schema;
    ModuleKeys notIndexed;                      ///< Stored in the transaction, unknown to searches.
    bool inTransaction = false;                 ///< Between `begin` and `commit` or `rollback`.
    std::unique_ptr<ModuleTables> moduleTables; ///< Made at the first change.
};

} // namespace devices::database
