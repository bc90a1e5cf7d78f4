#include "PostgresqlConnection.h"

#include "PostgresqlAnswer.h"
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

} // namespace

PostgresqlConnection::PostgresqlConnection(const PostgresqlWords& words, unsigned patience)
    : connection(words.connect(), &PQfinish)
{
    execute("SET lock_timeout = " + std::to_string(patience * 1000)); // milliseconds
    execute("SET client_min_messages = error"); // libpq would print the others
}

// Writers lock the one row of the version table first. So writers cannot deadlock, and readers
// never wait.
const SqlDialect& PostgresqlConnection::dialect() const
{
    static const SqlDialect postgresql = {
        "BYTEA",
        "BIGINT",
        "",
        "strpos",
        "SELECT count(*), coalesce(sum(CASE WHEN table_name IN ('schema_version',"
        " 'device_properties') THEN 1 ELSE 0 END), 0) FROM information_schema.tables"
        " WHERE table_schema = current_schema()",
        "BEGIN ISOLATION LEVEL REPEATABLE READ",
        "BEGIN",
        "SELECT version FROM schema_version FOR UPDATE"};
    return postgresql;
}

void PostgresqlConnection::execute(const std::string& sql)
{
    checkedAnswer(connection.get(), PQexec(connection.get(), sql.c_str()));
}

std::size_t PostgresqlConnection::change(const std::string& sql,
                                         const std::vector<SqlParameter>& parameters)
{
    const auto answer = run(connection.get(), sql, parameters);
    const std::string rows = PQcmdTuples(answer.get());
    return rows.empty() ? 0 : std::stoull(rows);
}

void PostgresqlConnection::query(const std::string& sql,
                                 const std::vector<SqlParameter>& parameters, std::size_t columns,
                                 const std::function<void(const Row&)>& take)
{
    const auto answer = run(connection.get(), sql, parameters);
    Row row(columns);
    for (int number = 0; number < PQntuples(answer.get()); ++number) {
        for (std::size_t column = 0; column < columns; ++column) {
            row[column] = cellOf(answer.get(), number, static_cast<int>(column));
        }
        take(row);
    }
}

std::unique_ptr<RowStatement> PostgresqlConnection::makeRowStatement(const RowSql& rowSql)
{
    return std::make_unique<PostgresqlRowStatement>(connection.get(), rowSql);
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
