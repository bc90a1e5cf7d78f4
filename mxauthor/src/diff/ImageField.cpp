#include "diff/ImageField.h"

#include <algorithm>

namespace mxauthor {

namespace {

// The numbers that the bits of a value can hold.
WideNumber lowestNumber(const ParameterValue& value)
{
    return {value.isSigned ? ~highestPattern(value.bits - 1) : 0, value.isSigned};
}

WideNumber highestNumber(const ParameterValue& value)
{
    return {highestPattern(value.isSigned ? value.bits - 1 : value.bits), value.isSigned};
}

bool isNegative(const WideNumber& number)
{
    return number.isSigned && number.bits >> 63 != 0;
}

// Brings a range to the sign of `value`; false when `value` can hold no number of it.
bool takeSignOf(const ParameterValue& value, WideNumber& minimum, WideNumber& maximum)
{
    if (value.isSigned && !minimum.isSigned) {
        const std::uint64_t most = highestPattern(63);
        const bool holdsSome = minimum.bits <= most;
        minimum = {std::min(minimum.bits, most), true};
        maximum = {std::min(maximum.bits, most), true};
        return holdsSome;
    }
    if (!value.isSigned && minimum.isSigned) {
        const bool holdsSome = !isNegative(maximum);
        minimum = {isNegative(minimum) ? 0 : minimum.bits, false};
        maximum = {maximum.bits, false};
        return holdsSome;
    }
    return true;
}

} // namespace

ImageField fieldOf(const ParameterValue& value)
{
    const unsigned lastByte = value.byteOffset + (value.size == 0 ? 0 : value.size - 1);
    const unsigned lowBit = value.size == 1 ? value.firstBit % 8 : 0;
    return {lastByte * 8 + 8 - lowBit - value.bits, value.bits};
}

WideNumber numberOfPattern(const ParameterValue& value, std::uint64_t pattern)
{
    const bool negative = value.isSigned && (pattern >> (value.bits - 1) & 1U) != 0;
    return {negative ? pattern | ~highestPattern(value.bits) : pattern, value.isSigned};
}

PatternSet patternsBetween(const ParameterValue& value, WideNumber minimum, WideNumber maximum)
{
    PatternSet set(value.bits);
    if (value.bits == 0 || !takeSignOf(value, minimum, maximum)) {
        return set;
    }
    const WideNumber lowest = lowestNumber(value);
    const WideNumber highest = highestNumber(value);
    const WideNumber first = minimum.isBelow(lowest) ? lowest : minimum;
    const WideNumber last = highest.isBelow(maximum) ? highest : maximum;
    if (last.isBelow(first)) {
        return set;
    }
    if (isNegative(first) && !isNegative(last)) {
        set.add({{first.bits, ~std::uint64_t{0}}, {0, last.bits}});
    } else {
        set.add({{first.bits, last.bits}});
    }
    return set;
}

PatternSet patternsOfSameNumber(const ParameterValue& wider, const ParameterValue& narrower)
{
    return patternsBetween(wider, lowestNumber(narrower), highestNumber(narrower));
}

} // namespace mxauthor
