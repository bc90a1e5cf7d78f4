#pragma once

namespace devices::database {

/// The SQL that differs between the engines. All other SQL is shared; its placeholders are $1, $2
/// ... in order.
struct SqlDialect
{
    const char* bytes;        ///< Column type of bytes.
    const char* number;       ///< Column type of numbers of at least 33 bits.
    const char* tableEnd;     ///< End of the definition of a table of rows found by their key.
    const char* findText;     ///< Function of (text, part): 0 when the text does not hold the part.
    const char* countTables;  ///< Selects the number of tables, and of our first two.
    const char* beginReading; ///< Starts a transaction that reads one state of the database.
    const char* beginWriting; ///< Starts a transaction that makes changes.
    const char* claimWriting; ///< After it: waits for other writers; fails without permission.
};

} // namespace devices::database
