#pragma once

#include "DatabaseFailure.h"
#include "DatabaseSchema.h"
#include "IndexWriter.h"
#include "ModuleTables.h"
#include "SqlConnection.h"

#include <functional>
#include <memory>
#include <string>

namespace devices::database {

/// Runs the reads and changes of a store in transactions of one connection. Without a transaction
/// of the caller, what fails because the connection is lost is run once more on another one.
///
/// Every change runs inside a transaction, or inside a savepoint of the one that is open, so that a
/// rejected record affects no other. Failures are a `std::runtime_error` that names the database.
class SqlTransactions
{
public:
    /// Creates or migrates the schema according to `mode`.
    SqlTransactions(std::string name, std::unique_ptr<SqlConnection> openConnection, OpenMode mode);

    /// Returns the name of the database in messages.
    const std::string& name() const { return shownName; }

    SqlConnection& connection() { return *ownConnection; }

    /// Returns the version of the schema as it was found, or as it was migrated to.
    int schemaVersionFound() const { return schema.version(); }

    /// Returns the statements that change modules, for the work of one `change`.
    ModuleTables& tables();

    /// The modules stored in the transaction that searches do not know yet: the work of a change
    /// adds and removes them.
    ModuleKeys& notIndexed() { return changedKeys; }

    /// Starts a transaction, waiting for other writers.
    void begin();

    /// Makes the changes of the transaction visible, with those of the search index.
    void commit();

    /// Takes the changes of the transaction back.
    void rollback();

    /// Returns whether there is a transaction of `begin`.
    bool isInTransaction() const { return inTransaction; }

    /// Returns whether it is still held by the engine.
    bool isTransactionAlive();

    /// Runs `work`, which is taken back alone if it fails. `attempted` is what the message of a
    /// failure says, such as "write to".
    void change(const char* attempted, const std::function<void()>& work);

    /// Runs `work`, which reads and returns what it has read.
    template <typename Work>
    auto read(Work work) -> decltype(work())
    {
        return readUnlessBegun(false, work);
    }

    /// The same for `work` that must not be repeated once it has set `hasBegun`.
    template <typename Work>
    auto readUnlessBegun(const bool& hasBegun, Work work) -> decltype(work());

    /// Runs `work`, whose several statements read one state of the database, as part of a `read`.
    template <typename Work>
    auto readOneState(Work work) -> decltype(work());

private:
    /// Runs `work`; turns a `SqlFailure` into a sentence that says what was `attempted`.
    template <typename Work>
    auto attempt(const char* attempted, Work work) -> decltype(work());

    /// Runs `work`, which has no effect when it fails, once more if another connection can be made
    /// for `access` after its failure, unless it `hasBegun`. Only the first of several changes may
    /// connect again.
    template <typename Work>
    auto repeatable(Access access, const bool& hasBegun, Work work) -> decltype(work());

    void openSchema();
    bool connectAgain(const SqlFailure& failure, Access access);
    void startTransaction();
    void commitTransaction();
    void requireTransaction();
    void takeBack(bool wholeTransaction);

    std::string shownName;
    std::unique_ptr<SqlConnection> ownConnection;
    OpenMode openMode;
    DatabaseSchema schema;
    ModuleKeys changedKeys;
    bool inTransaction = false;                 ///< Between `begin` and `commit` or `rollback`.
    std::unique_ptr<ModuleTables> moduleTables; ///< Made at the first change.
};

template <typename Work>
auto SqlTransactions::attempt(const char* attempted, Work work) -> decltype(work())
{
    try {
        return work();
    } catch (const SqlFailure& failure) {
        fail(shownName, attempted, failure.what());
    }
}

template <typename Work>
auto SqlTransactions::repeatable(Access access, const bool& hasBegun, Work work) -> decltype(work())
{
    try {
        return work();
    } catch (const SqlFailure& failure) {
        if (hasBegun || inTransaction || !connectAgain(failure, access)) {
            throw;
        }
    }
    return work();
}

template <typename Work>
auto SqlTransactions::readUnlessBegun(const bool& hasBegun, Work work) -> decltype(work())
{
    return attempt("read", [&] { return repeatable(Access::Read, hasBegun, work); });
}

template <typename Work>
auto SqlTransactions::readOneState(Work work) -> decltype(work())
{
    requireTransaction();
    if (inTransaction) {
        return work();
    }
    ownConnection->execute(ownConnection->dialect().beginReading);
    try {
        auto result = work();
        ownConnection->execute("COMMIT");
        return result;
    } catch (...) {
        takeBack(true);
        throw;
    }
}

} // namespace devices::database
