#pragma once

#include "mxauthor/Field.h"

#include <mxformat/BigEndian.h>

#include <stdexcept>

namespace mxauthor {

/// Thrown by a reader when a payload does not have the shape that it expects.
class UnexpectedShape : public std::runtime_error
{
public:
    UnexpectedShape() : std::runtime_error("payload of another shape") {}
};

/// Reads fields from the start of a payload, never past its end: `UnexpectedShape` is thrown
/// instead. Its counterpart is `PayloadWriter`, so that one template lists the fields of a record
/// for both.
class PayloadReader
{
public:
    /// `payload` outlives the reader and starts at `offset` of the file.
    PayloadReader(std::uint16_t group, const Bytes& payload, std::uint32_t offset);

    std::size_t left() const { return payload.size() - pos; }

    /// Reads a number.
    template <typename Number>
    void field(Field<Number>& field)
    {
        field.value = mxformat::readBigEndian<Number>(take(field.place, sizeof(Number)));
    }

    /// Reads `count` bytes.
    void bytes(Field<Bytes>& field, std::size_t count);

    /// Reads all that is left.
    void rest(Field<Bytes>& field) { bytes(field, left()); }

    /// Reads text up to the next `stop`, which is not consumed.
    void textUpTo(Field<std::string>& field, char stop);

    /// Reads the byte `expected`.
    void literal(char expected);

    /// Returns the next `count` bytes without consuming them; null when fewer are left.
    const std::uint8_t* peek(std::size_t count) const;

private:
    const std::uint8_t* take(Place& place, std::size_t count);

    std::uint16_t group;
    const Bytes& payload;
    std::uint32_t offset;
    std::size_t pos = 0;
};

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

    void rest(const Field<Bytes>& field) { append(field.value); }
    void text(const Field<std::string>& field) { append(field.value); }

    /// Writes bytes as they are.
    template <typename Content>
    void append(const Content& bytes)
    {
        payload.insert(payload.end(), bytes.begin(), bytes.end());
    }

    void literal(char byte) { number(static_cast<std::uint8_t>(byte), 1); }

    Bytes payload; ///< The bytes written.

private:
    void number(std::uint64_t value, unsigned size);
};

/// Returns the number of `parts` that a record states in a byte. Throws `std::length_error` when it
/// has more.
std::uint8_t byteCount(std::size_t parts);

} // namespace mxauthor
