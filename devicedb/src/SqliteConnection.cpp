#include "SqliteConnection.h"

#include "SqliteFile.h"
#include "SqliteStatement.h"

#include <sqlite3.h>

#include <stdexcept>

namespace devices::database {

namespace {

sqlite3* openFile(const std::string& path, OpenMode mode)
{
    if (mode == OpenMode::ExistingOnly && isMissing(path)) {
        throw SqlFailure("there is no such file");
    }
    sqlite3* opened = nullptr;
    constexpr int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_URI;
    if (sqlite3_open_v2(sqliteFileName(path).c_str(), &opened, flags, nullptr) != SQLITE_OK) {
        sqlite3_close(opened);
        throw SqlFailure(whyNotOpened(path));
    }
    return opened;
}

// A mistake of this library: it would bind the values to other places than in PostgreSQL.
void requireInOrder(const std::string& placeholder, int number)
{
    if (placeholder != "$" + std::to_string(number)) {
        throw std::logic_error(placeholder);
    }
}

SqliteStatement prepared(sqlite3* connection, const std::string& sql,
                         const std::vector<SqlParameter>& parameters)
{
    SqliteStatement statement(connection, sql);
    int number = 0;
    for (const SqlParameter& parameter : parameters) {
        ++number; // SQLite counts the placeholders as they come, PostgreSQL reads their numbers
        requireInOrder(statement.placeholder(number), number);
        statement.bind(number, parameter.value, parameter.isBytes);
    }
    return statement;
}

std::string sqlOfOneRow(const RowSql& rowSql)
{
    std::string values;
    for (const CellType type : rowSql.cells) {
        values += values.empty() ? "" : ", ";
        values += type == CellType::NumberOrNull ? "CAST(nullif(?, '') AS INTEGER)" : "?";
    }
    return rowSql.cells.empty() ? rowSql.head
                                : rowSql.head + "VALUES (" + values + ")" + rowSql.tail;
}

// Rows of SQLite, one execution each, which is fastest in SQLite.
class SqliteRowStatement final : public RowStatement
{
public:
    // `openConnection` must outlive the object.
    SqliteRowStatement(sqlite3* openConnection, const RowSql& rowSql)
        : connection(openConnection),
          types(rowSql.cells),
          statement(openConnection, sqlOfOneRow(rowSql))
    {}

    std::size_t execute(const std::vector<Row>& rows) override
    {
        std::size_t changed = 0; // by the statement itself, not by foreign keys
        forEach(rows, [&] {
            statement.step();
            changed += static_cast<std::size_t>(sqlite3_changes(connection));
        });
        return changed;
    }

    void query(const std::vector<Row>& rows, std::size_t columns,
               const std::function<void(const Row&)>& take) override
    {
        Row answer(columns);
        forEach(rows, [&] {
            while (statement.step()) {
                for (std::size_t column = 0; column < columns; ++column) {
                    answer[column] = statement.cell(static_cast<int>(column));
                }
                take(answer);
            }
        });
    }

private:
    template <class Execution>
    void forEach(const std::vector<Row>& rows, const Execution& execution)
    {
        for (const Row& row : rows) {
            for (std::size_t column = 0; column < types.size(); ++column) {
                statement.bind(static_cast<int>(column) + 1, row[column],
                               types[column] == CellType::Bytes);
            }
            execution();
        }
        statement.unbind(); // frees the rows
    }

    sqlite3* connection;
    std::vector<CellType> types; // of each column
    SqliteStatement statement;
};

} // namespace

SqliteConnection::SqliteConnection(const std::string& path, OpenMode mode, unsigned patience)
    : connection(openFile(path, mode), &sqlite3_close)
{
    execute("PRAGMA busy_timeout = " + std::to_string(patience * 1000)); // milliseconds
    execute("PRAGMA foreign_keys = ON");
    // Large enough for the changes of a populate with thousands of modules in any order, and the
    // index of a hundred thousand. Memory is allocated page by page.
    execute("PRAGMA cache_size = -65536"); // kibibytes
    // A commit returns when the log is on the disk. With a rollback journal EXTRA also synchronises
    // its removal, unlike FULL.
    execute("PRAGMA synchronous = EXTRA");
    useWriteAheadLog();
}

// A transaction on a read-only file begins without an error, and its first change fails. So the
// claim is a change that changes nothing.
const SqlDialect& SqliteConnection::dialect() const
{
    static const SqlDialect sqlite = {
        "BLOB",
        "INTEGER",
        " WITHOUT ROWID",
        "instr",
        "SELECT count(*), coalesce(sum(name IN ('schema_version', 'device_properties')), 0), 1"
        " FROM sqlite_master WHERE type = 'table'",
        "BEGIN",
        "BEGIN IMMEDIATE",
        "DELETE FROM schema_version WHERE false",
        "CREATE TRIGGER library_is_older_than_schema BEFORE INSERT ON device_properties"
        " WHEN NEW.written_by IS NULL BEGIN SELECT RAISE(ABORT,"
        " 'library_is_older_than_schema_version_4'); END",
        nullptr,
        nullptr,
        nullptr,
        0};
    return sqlite;
}

// The mode stays in the file. One that cannot be written, or that another program is using, keeps
// its mode: with a rollback journal readers and a writer wait for each other.
void SqliteConnection::useWriteAheadLog()
{
    std::string mode;
    query("PRAGMA journal_mode", {}, 1, [&](const Row& row) { mode = row[0]; });
    if (mode == "wal" || mode == "memory") {
        return;
    }
    try {
        execute("PRAGMA journal_mode = WAL");
    } catch (const SqlFailure&) {
        // Keeps the file's current journal mode.
    }
}

void SqliteConnection::execute(const std::string& sql)
{
    checkSqlite(connection.get(),
                sqlite3_exec(connection.get(), sql.c_str(), nullptr, nullptr, nullptr));
}

void SqliteConnection::executeOften(const std::string& sql)
{
    auto& statement = often[sql];
    if (statement == nullptr) {
        statement = makeRowStatement({sql, {}, ""});
    }
    statement->execute({{}});
}

std::size_t SqliteConnection::change(const std::string& sql,
                                     const std::vector<SqlParameter>& parameters)
{
    prepared(connection.get(), sql, parameters).step();
    return static_cast<std::size_t>(sqlite3_changes(connection.get()));
}

void SqliteConnection::query(const std::string& sql, const std::vector<SqlParameter>& parameters,
                             std::size_t columns, const std::function<void(const Row&)>& take)
{
    SqliteStatement select = prepared(connection.get(), sql, parameters);
    Row row(columns);
    while (select.step()) {
        for (std::size_t column = 0; column < columns; ++column) {
            row[column] = select.cell(static_cast<int>(column));
        }
        take(row);
    }
}

std::unique_ptr<RowStatement> SqliteConnection::makeRowStatement(const RowSql& rowSql)
{
    return std::make_unique<SqliteRowStatement>(connection.get(), rowSql);
}

bool SqliteConnection::holdsTransaction()
{
    return sqlite3_get_autocommit(connection.get()) == 0;
}

// After some failures, a full disk for one, SQLite has rolled the whole transaction back by itself.
std::string SqliteConnection::whyTransactionIsLost()
{
    return "its transaction was rolled back after an earlier failure";
}

} // namespace devices::database
