#include "PostgresqlConnection.h"

#include "PostgresqlAnswer.h"

#include <Poco/String.h>

#include <algorithm>
#include <map>

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

constexpr std::size_t mostRows = 64;

std::string sqlOf(const RowSql& rowSql, std::size_t rows)
{
    std::string sql = rowSql.head;
    std::size_t number = 0;
    for (std::size_t row = 0; row < rows; ++row) {
        std::string values;
        for (const RowSql::Value& value : rowSql.values) {
            values += (values.empty() ? "" : ", ") +
                      Poco::replace(value.sql, std::string("?"), "$" + std::to_string(++number));
        }
        sql += (row == 0 ? "(" : ", (") + values + ")";
    }
    return sql + rowSql.tail;
}

// A unique name for each statement of the process.
std::string newName()
{
    static unsigned long count = 0;
    return "device_database_" + std::to_string(++count);
}

// Rows of PostgreSQL: many in one statement, since each execution is a round trip over the
// connection. There is one prepared statement per number of rows.
class PostgresqlRowStatement final : public RowStatement
{
public:
    PostgresqlRowStatement(PGconn* openConnection, RowSql sql);
    ~PostgresqlRowStatement() override;

    void execute(const std::vector<Row>& rows) override;

private:
    const std::string& preparedFor(std::size_t rows);
    void executeSome(const std::vector<Row>& rows, std::size_t first, std::size_t count);

    PGconn* connection;
    RowSql rowSql;
    std::map<std::size_t, std::string> names; // of the prepared statements
};

PostgresqlRowStatement::PostgresqlRowStatement(PGconn* openConnection, RowSql sql)
    : connection(openConnection), rowSql(std::move(sql))
{}

PostgresqlRowStatement::~PostgresqlRowStatement()
{
    for (const auto& statement : names) {
        PQclear(PQexec(connection, ("DEALLOCATE " + statement.second).c_str()));
    }
}

const std::string& PostgresqlRowStatement::preparedFor(std::size_t rows)
{
    const auto known = names.find(rows);
    if (known != names.end()) {
        return known->second;
    }
    const std::string name = newName();
    checkedAnswer(connection,
                  PQprepare(connection, name.c_str(), sqlOf(rowSql, rows).c_str(), 0, nullptr));
    return names[rows] = name;
}

void PostgresqlRowStatement::executeSome(const std::vector<Row>& rows, std::size_t first,
                                         std::size_t count)
{
    std::vector<const char*> cells;
    std::vector<int> lengths;
    std::vector<int> formats; // 0: text, 1: binary
    for (std::size_t row = first; row < first + count; ++row) {
        for (std::size_t column = 0; column < rowSql.values.size(); ++column) {
            cells.push_back(rows[row][column].data());
            lengths.push_back(static_cast<int>(rows[row][column].size()));
            formats.push_back(rowSql.values[column].isBytes ? 1 : 0);
        }
    }
    const std::string& name = preparedFor(count);
    checkedAnswer(connection,
                  PQexecPrepared(connection, name.c_str(), static_cast<int>(cells.size()),
                                 cells.data(), lengths.data(), formats.data(), 0));
}

void PostgresqlRowStatement::execute(const std::vector<Row>& rows)
{
    for (std::size_t first = 0; first < rows.size(); first += mostRows) {
        executeSome(rows, first, std::min(mostRows, rows.size() - first));
    }
}

} // namespace

PostgresqlConnection::PostgresqlConnection(PostgresqlWords connectionWords, Access access,
                                           unsigned patience)
    : words(std::move(connectionWords)), secondsToWait(patience), connection(nullptr, &PQfinish)
{
    connect(access);
}

void PostgresqlConnection::connect(Access access)
{
    connection.reset(words.connect(access));
    execute("SET lock_timeout = " + std::to_string(secondsToWait * 1000)); // milliseconds
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
