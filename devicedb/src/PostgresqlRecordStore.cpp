#include "PostgresqlRecordStore.h"

#include "DatabaseFailure.h"
#include "PostgresqlRowStatement.h"

#include <Poco/Data/PostgreSQL/Connector.h>
#include <Poco/Data/PostgreSQL/SessionImpl.h>
#include <Poco/String.h>

#include <memory>

namespace devices::database {

namespace {

// Writers wait for each other at the one row of the version table. So two of them never hold what
// the other one needs next, and readers wait for nobody.
const SqlDialect postgresql = {
    "BYTEA",
    "BIGINT",
    "",
    "CAST('' AS BYTEA)",
    "strpos",
    "SELECT count(*), coalesce(sum(CASE WHEN table_name IN ('schema_version', 'device_properties')"
    " THEN 1 ELSE 0 END), 0) FROM information_schema.tables"
    " WHERE table_schema = current_schema()",
    "BEGIN ISOLATION LEVEL REPEATABLE READ",
    {"BEGIN", "SELECT version FROM schema_version FOR UPDATE"}};

// What the server or libpq says, in one line and without the driver's own words.
std::string shortReason(const std::string& message)
{
    std::size_t begin = 0;
    for (const std::string& mark :
         {std::string("[PostgreSQL]: "), std::string("postgresql_stmt_prepare error: "),
          std::string("postgresql_stmt_execute error: "), std::string("ERROR:  "),
          std::string("FATAL:  "), std::string("PANIC:  ")}) {
        const auto at = message.find(mark, begin);
        begin = at == std::string::npos ? begin : at + mark.size();
    }
    const std::string line = message.substr(begin, message.find('\n', begin) - begin);
    return Poco::trim(line).empty() ? "the server gives no reason" : Poco::trim(line);
}

// The connector loses a connection that fails, and with it what libpq holds for it. So libpq tries
// first.
void requireServer(const PostgresqlConnection& words, const std::string& text)
{
    const std::unique_ptr<PGconn, decltype(&PQfinish)> attempt(PQconnectdb(text.c_str()),
                                                               &PQfinish);
    if (PQstatus(attempt.get()) != CONNECTION_OK) {
        fail(words.name(), "open",
             words.withoutPasswords(shortReason(PQerrorMessage(attempt.get()))));
    }
}

Poco::Data::Session openSession(const PostgresqlConnection& words)
{
    const std::string text = words.forConnector();
    requireServer(words, text);
    try {
        return Poco::Data::Session(Poco::Data::PostgreSQL::Connector().createSession(text));
    } catch (const Poco::Exception& failure) {
        fail(words.name(), "open", words.withoutPasswords(shortReason(failure.message())));
    }
}

PGconn* connectionOf(Poco::Data::Session& session)
{
    auto* const impl = static_cast<Poco::Data::PostgreSQL::SessionImpl*>(session.impl());
    return impl->handle();
}

} // namespace

PostgresqlRecordStore::PostgresqlRecordStore(const PostgresqlConnection& words, OpenMode mode,
                                             unsigned patience)
    : SqlRecordStore(words.name(), openSession(words), postgresql), connection(words)
{
    try {
        execute("SET lock_timeout = " +
                std::to_string(patience * 1000));   // milliseconds, 0: for ever
        execute("SET client_min_messages = error"); // nothing of it belongs on standard error
    } catch (const Poco::Exception& failure) {
        fail(shownName, "open", reasonOf(failure));
    }
    prepareSchema(mode);
}

std::string PostgresqlRecordStore::reasonOf(const Poco::Exception& failure)
{
    if (PQstatus(connectionOf(session)) == CONNECTION_BAD) {
        return "the connection to the server is lost";
    }
    return connection.withoutPasswords(
        shortReason(failure.message().empty() ? failure.what() : failure.message()));
}

bool PostgresqlRecordStore::holdsTransaction()
{
    return PQtransactionStatus(connectionOf(session)) == PQTRANS_INTRANS;
}

std::string PostgresqlRecordStore::whyTransactionIsLost()
{
    return PQstatus(connectionOf(session)) == CONNECTION_BAD
               ? "the connection to the server is lost"
               : "its transaction was taken back after an earlier failure";
}

std::unique_ptr<RowStatement> PostgresqlRecordStore::makeRowStatement(const RowSql& rowSql)
{
    return std::make_unique<PostgresqlRowStatement>(connectionOf(session), rowSql);
}

void PostgresqlRecordStore::execute(const std::string& sql)
{
    executePostgresql(connectionOf(session), sql);
}

} // namespace devices::database
