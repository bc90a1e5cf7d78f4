#pragma once

#include "mxauthor/Field.h"

namespace mxauthor {

/// Appends fields to a payload, multi-byte numbers big-endian. The counterpart of `PayloadReader`.
class PayloadWriter
{
public:
    /// Writes a number.
    template <typename Number>
    void field(const Field<Number>& field)
    {
        number(field.value, sizeof(Number));
    }

    void rest(const Field<Bytes>& field);

    void text(const Field<std::string>& field);
    void literal(char byte) { number(static_cast<std::uint8_t>(byte), 1); }

    Bytes payload; ///< The bytes written.

private:
    void number(std::uint64_t value, unsigned size);
};

/// Returns the number of `parts` that a record states in a byte. Throws `std::length_error` when it
/// has more.
std::uint8_t byteCount(std::size_t parts);

} // namespace mxauthor
