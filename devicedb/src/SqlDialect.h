#pragma once

namespace devices::database {

/// Where the SQL of the engines differs. Everything else is one text for all of them; its
/// placeholders are $1, $2 ... in their order.
struct SqlDialect
{
    const char* bytes;        ///< Column type of bytes.
    const char* number;       ///< Column type of numbers of at least 33 bits.
    const char* tableEnd;     ///< What ends the definition of a table of rows found by their key.
    const char* findText;     ///< Function of (text, part): 0 when the text does not hold the part.
    const char* countTables;  ///< Selects how many tables there are, and how many of our two first.
    const char* beginReading; ///< Starts a transaction that sees the database of one moment.
    const char* beginWriting; ///< Starts a transaction that changes something.
    const char*
        claimWriting; ///< Behind it: waits for other writers; fails where there is no right.
};

} // namespace devices::database
