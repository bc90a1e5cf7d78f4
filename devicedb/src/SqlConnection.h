#pragma once

#include <charconv>
#include <cstdint>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace devices::database {

/// An error of an engine: the reason, in one line meant for users.
class SqlFailure : public std::runtime_error
{
public:
    enum class Concern
    {
        Statement,  ///< This statement was rejected; others may succeed.
        Database,   ///< A full disk, a lost transaction: the next one fails too.
        Connection, ///< The connection is lost: another one may work.
        Change,     ///< The database may only be read: each change fails.
        Server      ///< The same, but another server of the database may accept changes.
    };

    explicit SqlFailure(const std::string& reason, Concern concerned = Concern::Statement)
        : std::runtime_error(reason), concern(concerned)
    {}

    /// Returns whether the database can be read although it could not be changed.
    bool allowsReading() const { return concern == Concern::Change || concern == Concern::Server; }

    Concern concern;
};

/// What a connection is for, where a database has several servers.
enum class Access
{
    Read,  ///< Any server that was asked for.
    Change ///< A server that accepts changes.
};

/// Returns the number that `decimal` states. Throws a `SqlFailure` if it is not a number: another
/// program may have stored anything.
inline std::int64_t numberOf(const std::string& decimal)
{
    std::int64_t number = 0;
    const char* const end = decimal.data() + decimal.size();
    const auto result = std::from_chars(decimal.data(), end, number);
    if (result.ec != std::errc() || result.ptr != end) {
        throw SqlFailure("a column of numbers holds \"" + decimal + "\"");
    }
    return number;
}

/// The SQL that differs between the engines. All other SQL is shared; its placeholders are $1, $2
/// ... in order.
struct SqlDialect
{
    const char* bytes;        ///< Column type of bytes.
    const char* number;       ///< Column type of numbers of at least 33 bits.
    const char* tableEnd;     ///< End of the definition of a table of rows found by their key.
    const char* findText;     ///< Function of (text, part): 0 when the text does not hold the part.
    const char* countTables;  ///< Selects the number of tables, that of our first two, and 0 if
                              ///< there is no schema for them.
    const char* beginReading; ///< Starts a transaction that reads one state of the database.
    std::string beginWriting; ///< Starts a transaction that makes changes.
    const char* claimWriting; ///< After it: waits for other writers; fails without permission.
    /// Adds that the engine refuses records without `written_by`, with a reason for users.
    const char* refuseOlderWriters;
    /// Selects statements that grant on the tables of searches what others may do with the table of
    /// modules; null in an engine without rights.
    const char* grantsOfModules;
    /// Removes the foreign keys of the tables of channels, parameters and options, whose rows then
    /// do not go with those of the modules; null in an engine in which the keys cost little.
    const char* dropContentKeys;
    /// Keeps readers from the tables of version 3 until the transaction ends; fails after a moment
    /// if there are some. Null in an engine in which they do not matter.
    const char* keepReadersOut;
    unsigned secondsToWait; ///< How long a writer waits for others.
};

/// The type of the cells of a column. A number is in decimal.
enum class CellType
{
    Bytes,
    Text,
    Number,
    NumberOrNull ///< An empty cell is NULL.
};

/// A statement that takes rows of cells: "head ROWS tail", where each engine has its own way to
/// state the table ROWS. Without cells it is its head.
struct RowSql
{
    std::string head;
    std::vector<CellType> cells; ///< Of each row.
    std::string tail;
};

/// A statement for rows. One implementation per engine, since the fast way to handle many rows
/// differs: see each. Failures are a `SqlFailure`; the object cannot be used afterwards.
class RowStatement
{
public:
    using Row = std::vector<std::string>;

    RowStatement() = default;
    virtual ~RowStatement() = default;
    RowStatement(const RowStatement&) = delete;
    RowStatement& operator=(const RowStatement&) = delete;

    /// Runs the statement and returns how many rows of the database it changed.
    virtual std::size_t execute(const std::vector<Row>& rows) = 0;

    /// Runs the statement, a SELECT, and calls `take` for every row of the answer, which has
    /// `columns` columns and no NULL. Its ORDER BY holds among the answers to one of `rows` alone.
    virtual void query(const std::vector<Row>& rows, std::size_t columns,
                       const std::function<void(const Row&)>& take) = 0;
};

/// A value for $1, $2 ... in a statement.
struct SqlParameter
{
    std::string value;
    bool isBytes; ///< Else text, or a number as text.
};

/// One connection to an engine. Whatever fails is a `SqlFailure`.
class SqlConnection
{
public:
    using Row = std::vector<std::string>; ///< Bytes and texts as they are, numbers in decimal.

    SqlConnection() = default;
    virtual ~SqlConnection() = default;
    SqlConnection(const SqlConnection&) = delete;
    SqlConnection& operator=(const SqlConnection&) = delete;

    virtual const SqlDialect& dialect() const = 0;

    /// Runs a statement without parameters or results.
    virtual void execute(const std::string& sql) = 0;

    /// As above, for the few statements that are executed often.
    virtual void executeOften(const std::string& sql) { execute(sql); }

    /// Runs a statement and returns how many rows it changed.
    virtual std::size_t change(const std::string& sql,
                               const std::vector<SqlParameter>& parameters) = 0;

    /// Calls `take` for every row of the answer, which has `columns` columns and no NULL.
    virtual void query(const std::string& sql, const std::vector<SqlParameter>& parameters,
                       std::size_t columns, const std::function<void(const Row&)>& take) = 0;

    /// Makes a statement for rows. It must not outlive the connection.
    virtual std::unique_ptr<RowStatement> makeRowStatement(const RowSql& rowSql) = 0;

    /// Returns whether a transaction is open and not aborted.
    virtual bool holdsTransaction() = 0;

    /// Replaces the connection if `failure` says that another one may work for `access`, and
    /// returns whether it did: statements made before must not be used then, and transactions are
    /// gone. Throws if no other connection can be made; this one stays.
    virtual bool connectAgain(const SqlFailure& failure, Access access)
    {
        static_cast<void>(failure);
        static_cast<void>(access);
        return false;
    }

    /// Returns why a transaction that was begun is no longer open.
    virtual std::string whyTransactionIsLost() = 0;
};

} // namespace devices::database
