#pragma once

#include <memory>
#include <string>
#include <vector>

namespace devices::database {

/// A statement that takes rows of values: "head (value, value), (value, value) tail". Without
/// values it is its head.
struct RowSql
{
    struct Value
    {
        std::string sql; ///< SQL for the cell; "?" is its value.
        bool isBytes;    ///< True: bytes; false: text, or a number as text.
    };

    std::string head;
    std::vector<Value> values;
    std::string tail;
};

/// A statement that is prepared once and executed for rows. One implementation per engine, since
/// the fast way to store many rows differs: see each. Failures are a `SqlFailure`; the object
/// cannot be used afterwards.
class RowStatement
{
public:
    using Row = std::vector<std::string>;

    RowStatement() = default;
    virtual ~RowStatement() = default;
    RowStatement(const RowStatement&) = delete;
    RowStatement& operator=(const RowStatement&) = delete;

    virtual void execute(const std::vector<Row>& rows) = 0;
};

} // namespace devices::database
