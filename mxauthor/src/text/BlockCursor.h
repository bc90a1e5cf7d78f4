#pragma once

#include "mxauthor/groups/Parameters.h"

namespace mxauthor {

/// The default place of the next parameter in a block: after the previous one; bit fields share a
/// byte as long as they fit.
class BlockCursor
{
public:
    /// Returns the byte for a parameter of this datatype and number of bits.
    std::uint32_t byteFor(std::uint8_t datatype, std::uint8_t bits) const;

    /// Returns the first bit for it in byte `at`.
    std::uint8_t bitFor(std::uint8_t datatype, std::uint8_t bits, std::uint32_t at) const;

    /// Moves past the parameter.
    void pass(const ParameterRecord& record);

private:
    std::uint32_t byte = 0;
    std::uint32_t bit = 0; // first free one of `byte`
};

} // namespace mxauthor
