#pragma once

#include "RowStatement.h"
#include "SqlDialect.h"

#include <charconv>
#include <cstdint>
#include <functional>
#include <stdexcept>

namespace devices::database {

/// An error of an engine: the reason, in one line meant for users.
class SqlFailure : public std::runtime_error
{
public:
    enum class Concern
    {
        Statement, ///< This statement was rejected; others may succeed.
        Database   ///< A full disk, a lost connection, no permission: the next one fails too.
    };

    explicit SqlFailure(const std::string& reason, Concern concerned = Concern::Statement)
        : std::runtime_error(reason), concern(concerned)
    {}

    Concern concern;
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

    /// Returns why a transaction that was begun is no longer open.
    virtual std::string whyTransactionIsLost() = 0;
};

} // namespace devices::database
