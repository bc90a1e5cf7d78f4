#pragma once

#include "mxauthor/groups/Parameters.h"

namespace mxauthor {

/// Where the next parameter of a block stands when nothing else is stated: behind the one before
/// it, bit fields together in a byte as long as they fit.
class BlockCursor
{
public:
    /// Returns the byte for a parameter of this datatype and number of bits.
    std::uint32_t byteFor(std::uint8_t datatype, std::uint8_t bits) const;

    /// Returns the first bit for it when it stands in byte `at`.
    std::uint8_t bitFor(std::uint8_t datatype, std::uint8_t bits, std::uint32_t at) const;

    /// Goes behind the parameter.
    void pass(const ParameterRecord& record);

private:
    std::uint32_t byte = 0;
    std::uint32_t bit = 0; // first free one of `byte`
};

} // namespace mxauthor
