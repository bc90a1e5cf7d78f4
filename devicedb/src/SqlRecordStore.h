#pragma once

#include "ContentTables.h"
#include "RecordStore.h"
#include "SqlDialect.h"

#include <Poco/Data/Session.h>

#include <functional>

namespace devices::database {

/// A store behind Poco Data: all that the engines have in common.
///
/// Every change runs inside a transaction, or inside a savepoint of the one that is open, so that
/// one refused record costs itself alone. Statements that are needed for every record are prepared
/// once.
class SqlRecordStore : public RecordStore
{
public:
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

protected:
    /// `name` is how messages name the database; `sqlDialect` must live for ever.
    SqlRecordStore(std::string name, Poco::Data::Session openSession, const SqlDialect& sqlDialect);

    /// Makes or migrates the schema. Refuses a newer one, and a database that holds something else.
    void prepareSchema(OpenMode mode);

    /// Runs a statement without parameters or results.
    virtual void execute(const std::string& sql) = 0;
    virtual std::string reasonOf(const Poco::Exception& failure) = 0; ///< In one line.
    virtual bool holdsTransaction() = 0; ///< Whether the engine has an unbroken transaction open.
    virtual std::string whyTransactionIsLost() = 0;
    virtual std::unique_ptr<RowStatement> makeRowStatement(const RowSql& rowSql) = 0;

    std::string shownName;
    Poco::Data::Session session;

private:
    struct Prepared;

    /// Runs `work`; turns a driver's exception into a sentence that says what was `attempted`.
    template <typename Work>
    auto attempt(const char* attempted, Work work) -> decltype(work());

    int readSchemaVersion();
    void migrateFrom(int version);
    void migrate();
    void startTransaction();
    void requireTransaction();
    void change(const char* attempted, const std::function<void()>& work);
    void takeBack(bool wholeTransaction);
    Prepared& prepared();
    std::string ofModule() const; ///< Condition on $1, the module identifier.
    std::string ofRecord() const; ///< And on $2, the family.

    const SqlDialect& dialect;
    bool inTransaction = false; ///< Between `begin` and `commit` or `rollback`.
    std::unique_ptr<Prepared> preparedStatements;
};

} // namespace devices::database
