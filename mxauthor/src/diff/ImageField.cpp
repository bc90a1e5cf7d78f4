#include "diff/ImageField.h"

#include <algorithm>

namespace mxauthor {

using mxformat::BlockField;
using mxformat::WholeNumber;

ImageField imageFieldOf(const BlockField& field)
{
    const std::uint32_t lastByte = std::max(field.end(), field.begin() + 1) - 1;
    return {lastByte * 8 + 8 - field.firstBit() - field.bits(), field.bits()};
}

PatternSet patternsBetween(const BlockField& field, const WholeNumber& minimum,
                           const WholeNumber& maximum)
{
    PatternSet set(field.bits());
    const WholeNumber first = std::max(minimum, field.number(field.lowest()));
    const WholeNumber last = std::min(maximum, field.number(field.highest()));
    if (!field.exists() || last < first) {
        return set;
    }
    if (first.isNegative() && !last.isNegative()) {
        set.add({{first.bits(), ~std::uint64_t{0}}, {0, last.bits()}});
    } else {
        set.add({{first.bits(), last.bits()}});
    }
    return set;
}

PatternSet patternsOfSameNumber(const BlockField& wider, const BlockField& narrower)
{
    return patternsBetween(wider, narrower.number(narrower.lowest()),
                           narrower.number(narrower.highest()));
}

} // namespace mxauthor
