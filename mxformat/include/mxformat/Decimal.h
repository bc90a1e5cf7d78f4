#pragma once

#include "mxformat/WholeNumber.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace mxformat {

/// A decimal number, exact: 162 decimals and 72 digits before the point. That holds every binary32,
/// and raw * factor + offset for every raw value of 64 bits.
class Decimal
{
public:
    Decimal() = default; ///< Zero.

    /// Takes a finite binary32 as it is: 0.1F is 0.100000001490116119384765625.
    explicit Decimal(float number);

    /// Takes the shortest decimal number that reads as `number`: for 0.1F 0.1.
    static Decimal shortestOf(float number);

    /// Reads "[+-]DIGITS[.DIGITS][e[+-]DIGITS]"; nothing when `text` is not of this form. A number
    /// beyond the 71st digit becomes 10^71, a part after the 161st decimal is kept as one digit
    /// that is not 0: both compare with any raw * factor + offset as the number itself does.
    [[nodiscard]] static std::optional<Decimal> ofText(std::string_view text);

    Decimal operator-() const;
    Decimal operator+(const Decimal& other) const;
    Decimal operator-(const Decimal& other) const { return *this + -other; }
    Decimal operator*(const WholeNumber& factor) const;

    bool operator==(const Decimal& other) const;
    bool operator!=(const Decimal& other) const { return !(*this == other); }
    bool operator<(const Decimal& other) const;

    Decimal absolute() const;

    /// Returns the number if it is whole and its magnitude has at most 64 bits.
    [[nodiscard]] std::optional<WholeNumber> whole() const;

    /// Returns the number, rounded; at most a few units of the last place away.
    long double estimate() const;

    /// Returns the nearest number with `decimals` decimals, away from zero half way.
    Decimal rounded(unsigned decimals) const;

    /// Returns all digits, without exponent and without zeros at the end: "-9.5", "1000".
    std::string text() const;

private:
    static constexpr std::size_t limbDigits = 9;
    static constexpr std::size_t fractionLimbs = 18;
    static constexpr std::size_t limbCount = fractionLimbs + 8;
    static constexpr int lowestPlace = -static_cast<int>(fractionLimbs * limbDigits);
    static constexpr int highestPlace = static_cast<int>((limbCount - fractionLimbs) * limbDigits);

    using Limbs = std::array<std::uint32_t, limbCount>;

    // Adds `digit` times 10^`place`.
    void addDigit(unsigned digit, int place);
    static bool isBelow(const Limbs& a, const Limbs& b);
    bool isZero() const;
    std::string digits() const;

    bool negative = false;
    Limbs limbs{}; // the least significant first, each below 10^9
};

} // namespace mxformat
