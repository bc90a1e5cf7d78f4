#include "PostgresqlConnection.h"

#include "PostgresqlRowStatement.h"

namespace devices::database {

namespace {

// Runs a statement with its values; the answer is in the binary format.
PostgresqlAnswer run(PGconn* connection, const std::string& sql,
                     const std::vector<SqlParameter>& parameters)
{
    std::vector<const char*> values;
    std::vector<int> lengths;
    std::vector<int> formats; // 0: text, 1: binary
    for (const SqlParameter& parameter : parameters) {
        values.push_back(parameter.value.c_str());
        lengths.push_back(static_cast<int>(parameter.value.size()));
        formats.push_back(parameter.isBytes ? 1 : 0);
    }
    constexpr int binary = 1;
    return checkedAnswer(
        connection, PQexecParams(connection, sql.c_str(), static_cast<int>(values.size()), nullptr,
                                 values.data(), lengths.data(), formats.data(), binary));
}

// The information schema would not list the tables that the role may not read.
constexpr const char* countTables =
    "SELECT count(*), coalesce(sum(CASE WHEN relname IN ('schema_version', 'device_properties')"
    " THEN 1 ELSE 0 END), 0), CASE WHEN current_schema() IS NULL THEN 0 ELSE 1 END"
    " FROM pg_catalog.pg_class WHERE relkind IN ('r', 'p', 'v', 'f') AND relnamespace ="
    " (SELECT oid FROM pg_catalog.pg_namespace WHERE nspname = current_schema())";

// A foreign key costs a query of the server for each row: with those of the content a populate
// takes twice as long.
//
// Writers lock the one row of the version table first. So writers cannot deadlock, and readers
// never wait. A writer that waited reads what was committed meanwhile, whatever the server's
// default is. The time to wait is set for this transaction only: with a pooler, the next
// transaction may use another connection.
SqlDialect dialectWaiting(unsigned seconds)
{
    const unsigned milliseconds = seconds == 0 ? 1 : seconds * 1000; // 0 would be for ever
    return {"BYTEA",
            "BIGINT",
            "",
            "strpos",
            countTables,
            "BEGIN ISOLATION LEVEL REPEATABLE READ",
            "BEGIN ISOLATION LEVEL READ COMMITTED; SET LOCAL lock_timeout = " +
                std::to_string(milliseconds),
            "SELECT version FROM schema_version FOR UPDATE",
            "ALTER TABLE device_properties ADD CONSTRAINT library_is_older_than_schema_version_4"
            " CHECK (written_by IS NOT NULL) NOT VALID",
            "SELECT 'GRANT ' || privilege_type || ' ON ' || t.name || ' TO ' ||"
            " CASE WHEN grantee = 'PUBLIC' THEN grantee ELSE quote_ident(grantee) END"
            " FROM information_schema.role_table_grants CROSS JOIN (VALUES ('search_modules'),"
            " ('search_new'), ('search_blocks'), ('search_members'), ('search_parts')) AS t (name)"
            " WHERE table_schema = current_schema() AND table_name = 'modules' AND grantee <>"
            " current_user AND privilege_type IN ('SELECT', 'INSERT', 'UPDATE', 'DELETE')",
            "ALTER TABLE channels DROP CONSTRAINT IF EXISTS channels_family_module_fkey;"
            "ALTER TABLE parameters DROP CONSTRAINT IF EXISTS parameters_family_module_fkey;"
            "ALTER TABLE options DROP CONSTRAINT IF EXISTS"
            " options_family_module_parameter_position_fkey",
            "SET LOCAL lock_timeout = 200;" // less than deadlock_timeout
            "LOCK TABLE device_properties, modules, channels, parameters, options"
            " IN ACCESS EXCLUSIVE MODE",
            seconds};
}

// Otherwise libpq prints notices to the standard error.
void dropNotice(void* /*unused*/, const PGresult* /*notice*/) {}

} // namespace

PostgresqlConnection::PostgresqlConnection(PostgresqlWords connectionWords, Access access,
                                           unsigned patience)
    : words(std::move(connectionWords)),
      connection(nullptr, &PQfinish),
      ownDialect(dialectWaiting(patience))
{
    connect(access);
}

void PostgresqlConnection::connect(Access access)
{
    connection = words.connect(access);
    PQsetNoticeReceiver(connection.get(), &dropNotice, nullptr);
}

void PostgresqlConnection::execute(const std::string& sql)
{
    checkedAnswer(connection.get(), PQexec(connection.get(), sql.c_str()));
}

std::size_t PostgresqlConnection::change(const std::string& sql,
                                         const std::vector<SqlParameter>& parameters)
{
    return changedRows(run(connection.get(), sql, parameters));
}

void PostgresqlConnection::query(const std::string& sql,
                                 const std::vector<SqlParameter>& parameters, std::size_t columns,
                                 const std::function<void(const Row&)>& take)
{
    takeRows(run(connection.get(), sql, parameters), columns, take);
}

std::unique_ptr<RowStatement> PostgresqlConnection::makeRowStatement(const RowSql& rowSql)
{
    return std::make_unique<PostgresqlRowStatement>(connection, rowSql);
}

bool PostgresqlConnection::connectAgain(const SqlFailure& failure, Access access)
{
    const bool isLost = failure.concern == SqlFailure::Concern::Connection;
    const bool onlyReads = failure.concern == SqlFailure::Concern::Server;
    if (!isLost && !(onlyReads && access == Access::Change)) {
        return false;
    }
    if (access == Access::Change && !words.readersOnly().empty()) {
        throw SqlFailure("its connection string asks for servers that only read "
                         "(target_session_attrs=" +
                             words.readersOnly() + "); to change it, state any or prefer-standby",
                         SqlFailure::Concern::Change);
    }
    try {
        connect(access);
    } catch (const SqlFailure& reason) {
        // After this failure the next call tries again.
        throw SqlFailure(access == Access::Change
                             ? reason.what()
                             : std::string("the connection to the server is lost: ") +
                                   reason.what(),
                         reason.concern);
    }
    return true;
}

bool PostgresqlConnection::holdsTransaction()
{
    return PQtransactionStatus(connection.get()) == PQTRANS_INTRANS;
}

std::string PostgresqlConnection::whyTransactionIsLost()
{
    return PQstatus(connection.get()) == CONNECTION_BAD
               ? "the connection to the server is lost"
               : "its transaction was rolled back after an earlier failure";
}

} // namespace devices::database
