#include "mxformat/PhysicalScale.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>

namespace mxformat {

namespace {

const WholeNumber two(false, 2);

Decimal exactly(const PhysicalScale& scale, const WholeNumber& raw)
{
    return Decimal(scale.factor) * raw + Decimal(scale.offset);
}

// With factor and offset as a person writes them.
Decimal inDecimal(const PhysicalScale& scale, const WholeNumber& raw)
{
    return Decimal::shortestOf(scale.factor) * raw + Decimal::shortestOf(scale.offset);
}

float nearestFloat(const Decimal& number)
{
    const std::string text = number.text();
    float result = 0;
    const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), result);
    if (error == std::errc::result_out_of_range) {
        return text[0] == '-' ? -std::numeric_limits<float>::infinity()
                              : std::numeric_limits<float>::infinity();
    }
    return result;
}

// The next number towards zero, without libm: a library of its own would be needed for it alone.
// The bits of positive numbers are in the order of the numbers.
float nextTowardsZero(float positive)
{
    std::uint32_t bits = 0;
    std::memcpy(&bits, &positive, sizeof bits);
    --bits;
    std::memcpy(&positive, &bits, sizeof bits);
    return positive;
}

// The distance from `number` to the next binary32 towards zero; 0 for 0, which is no rounded
// number.
Decimal gapAt(float number)
{
    const float size = std::fabs(number);
    return size == 0 ? Decimal() : Decimal(size) - Decimal(nextTowardsZero(size));
}

// Looks for the raw value next to a physical one. Physical values are doubled, so that the middle
// between two raw values needs no division.
class RawSearch
{
public:
    RawSearch(const PhysicalScale& scale, const Decimal& wanted)
        : falling(scale.factor < 0),
          twiceWanted(wanted * two),
          factor(Decimal(scale.factor)),
          twiceFactor(factor * two),
          twiceOffset(Decimal(scale.offset) * two)
    {}

    // Whether a raw value above `raw` is nearer.
    bool isAbove(const WholeNumber& raw) const
    {
        return isBeyond(twiceFactor * raw + twiceOffset + factor, !raw.isNegative());
    }

    // Whether `raw` or a raw value above it is nearer than the one below it.
    bool isFrom(const WholeNumber& raw) const
    {
        const bool isPositive = !raw.isNegative() && raw.magnitude() != 0;
        return isBeyond(twiceFactor * raw + twiceOffset - factor, isPositive);
    }

private:
    // Whether the value lies above the middle between two raw values, or on it and `upwards` is
    // away from zero.
    bool isBeyond(const Decimal& twiceMiddle, bool upwards) const
    {
        if (twiceMiddle == twiceWanted) {
            return upwards;
        }
        return falling ? twiceWanted < twiceMiddle : twiceMiddle < twiceWanted;
    }

    bool falling;
    Decimal twiceWanted;
    Decimal factor;
    Decimal twiceFactor;
    Decimal twiceOffset;
};

constexpr std::uint64_t guessError = 2; // of the estimate, in nearly all cases

long double signedNumber(const WholeNumber& number)
{
    const auto magnitude = static_cast<long double>(number.magnitude());
    return number.isNegative() ? -magnitude : magnitude;
}

// About how many steps above `lowest` the raw value of `value` lies, from 0 to `most`.
std::uint64_t estimatedSteps(const PhysicalScale& scale, const Decimal& value,
                             const WholeNumber& lowest, std::uint64_t most)
{
    const long double raw = (value.estimate() - static_cast<long double>(scale.offset)) /
                            static_cast<long double>(scale.factor);
    const long double steps = raw - signedNumber(lowest);
    if (!(steps > 0)) {
        return 0;
    }
    return steps < static_cast<long double>(most) ? static_cast<std::uint64_t>(steps) : most;
}

} // namespace

float PhysicalScale::value(const WholeNumber& raw) const
{
    const long double product = signedNumber(raw) * static_cast<long double>(factor);
    const long double sum = product + static_cast<long double>(offset);
    const long double error =
        (std::fabs(product) + std::fabs(sum)) * std::numeric_limits<long double>::epsilon();
    const auto low = static_cast<float>(sum - error);
    const auto high = static_cast<float>(sum + error);
    // Where the rounding of the sum could matter, the exact number decides.
    return low == high ? static_cast<float>(sum) : nearestFloat(exactly(*this, raw));
}

std::optional<WholeNumber> PhysicalScale::nearestRaw(const Decimal& value,
                                                     const WholeNumber& lowest,
                                                     const WholeNumber& highest) const
{
    if (const auto same = isIdentity() ? value.whole() : std::nullopt) {
        return *same < lowest || highest < *same ? std::nullopt : same;
    }
    const RawSearch search(*this, value);
    if (highest < lowest || !search.isFrom(lowest) || search.isAbove(highest)) {
        return std::nullopt;
    }
    // The first raw value that none above it is nearer than, in steps from the lowest.
    std::uint64_t low = 0;
    std::uint64_t high = highest.bits() - lowest.bits();
    const std::uint64_t guess = estimatedSteps(*this, value, lowest, high);
    const std::uint64_t guessLow = guess - std::min<std::uint64_t>(guess, guessError);
    const std::uint64_t guessHigh = guess + std::min<std::uint64_t>(high - guess, guessError);
    if ((guessLow == 0 || search.isAbove(lowest.plus(guessLow - 1))) &&
        !search.isAbove(lowest.plus(guessHigh))) {
        low = guessLow;
        high = guessHigh;
    }
    while (low < high) {
        const std::uint64_t middle = low + (high - low) / 2;
        if (search.isAbove(lowest.plus(middle))) {
            low = middle + 1;
        } else {
            high = middle;
        }
    }
    return lowest.plus(low);
}

std::string PhysicalScale::text(const WholeNumber& raw) const
{
    const Decimal exact = exactly(*this, raw);
    const Decimal decimal = inDecimal(*this, raw);
    const Decimal step = Decimal(factor).absolute();
    const Decimal doubt = gapAt(factor) * WholeNumber(false, raw.magnitude()) + gapAt(offset);
    for (unsigned decimals = 0;; ++decimals) {
        for (const Decimal& whole : {decimal, exact}) {
            const Decimal candidate = whole.rounded(decimals);
            const Decimal twiceError = ((candidate - exact) * two).absolute();
            const bool isTheValue = candidate == decimal || !(doubt < twiceError);
            if (isTheValue && twiceError < step) {
                return candidate.text();
            }
        }
    }
}

bool PhysicalScale::states(const Decimal& value, const WholeNumber& raw) const
{
    if (isIdentity()) {
        return value.whole() == raw;
    }
    // With many digits the decimal factor and the binary32 lead to different raw values.
    const Decimal twiceError = ((value - exactly(*this, raw)) * two).absolute();
    return twiceError < Decimal(factor).absolute() &&
           (value == inDecimal(*this, raw) || value == *Decimal::ofText(text(raw)));
}

} // namespace mxformat
