#pragma once

#include "mxformat/BigEndian.h"

namespace mxformat {

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

} // namespace mxformat
