#pragma once

#include "SqlConnection.h"

#include <libpq-fe.h>

#include <string>

namespace devices::database {

/// The cells of one column as an array of the server, in its binary form: bytes and texts need no
/// quotes, and are copied once.
class PostgresqlArray
{
public:
    explicit PostgresqlArray(CellType cellType);

    /// Adds `cell`. Throws a `SqlFailure` if it is not of the type.
    void add(const std::string& cell);

    /// Returns the array's bytes.
    const std::string& bytes();

    /// Returns the number of the array's type in the server's catalogue.
    Oid type() const;

private:
    CellType cells;
    std::uint32_t count = 0;
    bool holdsNull = false;
    std::string array; ///< Begins with a place for what precedes the cells.
};

} // namespace devices::database
