#pragma once

#include "ContentTables.h"
#include "RecordStore.h"
#include "SqlConnection.h"

#include <functional>

namespace devices::database {

/// A store in an SQL engine.
///
/// Every change runs inside a transaction, or inside a savepoint of the one that is open, so that a
/// rejected record affects no other. Statements that are needed for every record are prepared once.
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
    void insert(const DeviceProperties& record, const ModuleContent* content) override;
    std::optional<DeviceProperties> find(const std::string& moduleId) override;
    std::optional<DeviceProperties> findExactly(const std::string& family,
                                                const std::string& moduleId) override;
    std::vector<DeviceProperties> list() override;
    std::vector<ModuleSummary> search(const ModuleQuery& query) override;
    std::optional<ModuleContent> content(const std::string& family,
                                         const std::string& moduleId) override;
    bool remove(const std::string& moduleId) override;
    bool removeExactly(const std::string& family, const std::string& moduleId) override;

private:
    struct Prepared;

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

    void openSchema();
    bool connectAgain(const SqlFailure& failure, Access access);
    void prepareSchema();
    int readSchemaVersion();
    void migrateFrom(int version);
    void migrate();
    void migrateUnlessReadable(int version);
    void startTransaction();
    void commitTransaction();
    void requireTransaction();
    void change(const char* attempted, const std::function<void()>& work);
    void takeBack(bool wholeTransaction);
    Prepared& prepared();

    std::string shownName;
    std::unique_ptr<SqlConnection> connection;
    OpenMode openMode;
    bool inTransaction = false; ///< Between `begin` and `commit` or `rollback`.
    std::unique_ptr<Prepared> preparedStatements;
};

} // namespace devices::database
