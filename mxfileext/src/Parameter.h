#pragma once

#include <mxformat/BlockField.h>
#include <mxformat/ParameterRecord.h>

#include <cstdint>
#include <string>

namespace mxfileext {

/// A parameter as its record describes it.
struct Parameter
{
    /// Reads the 29-byte `bytes`.
    explicit Parameter(const std::uint8_t* bytes)
        : record(mxformat::readRecord<mxformat::ParameterRecord>(bytes)), field(record)
    {}

    bool isConverted() const { return mxformat::isConverted(record.flags); }

    /// Returns the decimal text of a raw value.
    std::string text(std::uint64_t rawValue) const { return field.number(rawValue).text(); }

    mxformat::ParameterRecord record;
    mxformat::BlockField field;
};

} // namespace mxfileext
