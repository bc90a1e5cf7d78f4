#pragma once

#include "mxformat/BigEndian.h"

namespace mxformat {

/// @file
/// Records of fixed fields. Each is a template `...RecordOf` over `FieldOf`: what the fields are,
/// plain values or values with something to each of them, such as their place in a file. Its static
/// function `transfer` hands the fields to `io.field` in the order of the file: that list is the
/// layout of the record.

/// A field of a record that is its plain value.
template <typename Value>
using Plain = Value;

/// Reads the fields of a record one after the other. The caller guarantees that its bytes exist.
class RecordReader
{
public:
    explicit RecordReader(const std::uint8_t* record) : next(record) {}

    template <typename Value>
    void field(Value& value)
    {
        value = readBigEndian<Value>(next);
        next += sizeof(Value);
    }

private:
    const std::uint8_t* next;
};

/// Adds up the bytes that the fields of a record take.
class RecordSize
{
public:
    template <typename Value>
    constexpr void field(const Value& /*value*/)
    {
        size += sizeof(Value);
    }

    std::uint32_t size = 0;
};

/// Returns the bytes of a `Record` of plain fields.
template <typename Record>
constexpr std::uint32_t sizeOfRecord()
{
    RecordSize counted;
    Record record;
    Record::transfer(counted, record);
    return counted.size;
}

/// Reads the `Record` of plain fields at `bytes`, which exist.
template <typename Record>
Record readRecord(const std::uint8_t* bytes)
{
    RecordReader in(bytes);
    Record record;
    Record::transfer(in, record);
    return record;
}

} // namespace mxformat
