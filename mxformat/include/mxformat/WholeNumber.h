#pragma once

#include <cstdint>
#include <string>

namespace mxformat {

/// A whole number from -(2^64 - 1) to 2^64 - 1, such as a raw value.
class WholeNumber
{
public:
    WholeNumber() = default;
    WholeNumber(bool isNegative, std::uint64_t itsMagnitude)
        : negative(isNegative && itsMagnitude != 0), absolute(itsMagnitude)
    {}

    /// Reads 64 bits, in two's complement when `isSigned`.
    static WholeNumber ofBits(std::uint64_t bits, bool isSigned);

    bool isNegative() const { return negative; }
    std::uint64_t magnitude() const { return absolute; }

    /// Returns the number in two's complement; the sign of a number beyond 63 bits is lost.
    std::uint64_t bits() const { return negative ? 0 - absolute : absolute; }

    std::string text() const; ///< In decimal.

    /// Returns the number `steps` above this one, which must be in reach.
    WholeNumber plus(std::uint64_t steps) const;

    bool operator==(const WholeNumber& other) const;
    bool operator!=(const WholeNumber& other) const { return !(*this == other); }
    bool operator<(const WholeNumber& other) const;

private:
    bool negative = false;
    std::uint64_t absolute = 0;
};

} // namespace mxformat
