#include "SqlTransactions.h"

#include "IndexWriter.h"

#include <utility>

namespace devices::database {

SqlTransactions::SqlTransactions(std::string name, std::unique_ptr<SqlConnection> openConnection,
                                 OpenMode mode)
    : shownName(std::move(name)),
      ownConnection(std::move(openConnection)),
      openMode(mode),
      schema(shownName, *ownConnection)
{
    attempt("open", [this] { openSchema(); });
}

ModuleTables& SqlTransactions::tables()
{
    if (moduleTables == nullptr) {
        moduleTables = std::make_unique<ModuleTables>(*ownConnection);
    }
    return *moduleTables;
}

// An empty database may be that of a server that only reads.
void SqlTransactions::openSchema()
{
    try {
        schema.prepare(openMode);
    } catch (const SqlFailure& failure) {
        if (openMode == OpenMode::ExistingOnly ||
            !ownConnection->connectAgain(failure, Access::Change)) {
            throw;
        }
        schema.prepare(openMode);
    }
}

// Another server may have another version of the schema.
bool SqlTransactions::connectAgain(const SqlFailure& failure, Access access)
{
    moduleTables.reset();
    if (!ownConnection->connectAgain(failure, access)) {
        return false;
    }
    schema.prepare(openMode);
    return true;
}

void SqlTransactions::startTransaction()
{
    repeatable(Access::Change, false, [this] {
        schema.requireNewest(); // of a server that only reads: another one may be migrated
        try {
            ownConnection->execute(ownConnection->dialect().beginWriting + "; " +
                                   ownConnection->dialect().claimWriting); // one round trip
        } catch (...) {
            takeBack(true);
            throw;
        }
    });
}

// A server that is lost while the answer is awaited may have stored the changes or not.
void SqlTransactions::commitTransaction()
{
    try {
        ownConnection->execute("COMMIT");
    } catch (const SqlFailure& failure) {
        if (failure.concern != SqlFailure::Concern::Connection) {
            throw;
        }
        throw OutcomeUnknown(failureText(shownName, "change",
                                         std::string(failure.what()) +
                                             " during the commit: it is not known whether the "
                                             "changes are stored"));
    }
}

void SqlTransactions::begin()
{
    if (inTransaction) {
        fail(shownName, "change", "cannot start a transaction within a transaction");
    }
    attempt("change", [this] { startTransaction(); });
    inTransaction = true;
}

void SqlTransactions::commit()
{
    requireTransaction();
    attempt("change", [this] {
        try {
            updateSearchIndex(*ownConnection, std::exchange(changedKeys, {}));
        } catch (...) {
            takeBack(true); // a part of the index may be written; a second commit must not store it
            throw;
        }
        commitTransaction();
    });
    inTransaction = false;
}

void SqlTransactions::rollback()
{
    inTransaction = false;
    takeBack(true);
}

bool SqlTransactions::isTransactionAlive()
{
    return inTransaction && ownConnection->holdsTransaction();
}

// Changes after a lost transaction would be stored outside of it, each one permanently.
void SqlTransactions::requireTransaction()
{
    if (inTransaction && !ownConnection->holdsTransaction()) {
        fail(shownName, "change", ownConnection->whyTransactionIsLost());
    }
}

// Fails if the engine has rolled back already, or the connection is lost: nothing is left to do
// then.
void SqlTransactions::takeBack(bool wholeTransaction)
{
    try {
        ownConnection->execute(
            wholeTransaction ? "ROLLBACK"
                             : "ROLLBACK TO SAVEPOINT one_change; RELEASE SAVEPOINT one_change");
    } catch (const SqlFailure&) {
        // The failure that led here is the one to report.
    }
    if (wholeTransaction) {
        changedKeys.clear();
    }
    moduleTables.reset(); // its statements cannot be used after a failure
}

void SqlTransactions::change(const char* attempted, const std::function<void()>& work)
{
    requireTransaction();
    attempt(attempted, [&] {
        const bool alone = !inTransaction;
        if (alone) {
            startTransaction();
        } else {
            ownConnection->executeOften("SAVEPOINT one_change");
        }
        try {
            work();
            if (alone) {
                updateSearchIndex(*ownConnection, std::exchange(changedKeys, {}));
                commitTransaction();
            } else {
                ownConnection->executeOften("RELEASE SAVEPOINT one_change");
            }
        } catch (const SqlFailure& failure) {
            takeBack(alone || failure.concern != SqlFailure::Concern::Statement);
            throw;
        } catch (...) {
            takeBack(alone);
            throw;
        }
    });
}

} // namespace devices::database
