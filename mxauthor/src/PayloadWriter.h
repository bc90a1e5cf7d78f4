#pragma once

#include "mxauthor/Field.h"

namespace mxauthor {

/// Appends fields to a payload, multi-byte numbers big-endian. The counterpart of `PayloadReader`.
class PayloadWriter
{
public:
    void field(const Field<std::uint8_t>& field) { number(field.value, 1); }
    void field(const Field<std::uint16_t>& field) { number(field.value, 2); }
    void field(const Field<std::uint32_t>& field) { number(field.value, 4); }
    void field(const Field<std::uint64_t>& field) { number(field.value, 8); }
    void rest(const Field<Bytes>& field);

    /// Writes `parts`. Throws `std::length_error` when a byte cannot hold it.
    void count(const Field<std::uint8_t>& field, std::size_t parts);

    void text(const Field<std::string>& field);
    void literal(char byte) { number(static_cast<std::uint8_t>(byte), 1); }

    Bytes payload; ///< What was written.

private:
    void number(std::uint64_t value, unsigned size);
};

} // namespace mxauthor
