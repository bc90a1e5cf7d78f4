#pragma once

#include "diff/PatternSet.h"
#include "module/ParameterValues.h"

namespace mxauthor {

/// Bits of a parameter image, most significant first: bit 0 is bit 7 of byte 0, bit 15 is bit 0 of
/// byte 1. Values are big-endian, so the bits of each are one run.
struct ImageField
{
    unsigned first = 0;
    unsigned width = 0; ///< 0: no bits at all, as of an unknown datatype.

    unsigned end() const { return first + width; }
    bool overlaps(const ImageField& other) const
    {
        return first < other.end() && other.first < end();
    }
};

inline bool operator==(const ImageField& a, const ImageField& b)
{
    return a.first == b.first && a.width == b.width;
}

/// Returns the bits of the value `value`.
ImageField fieldOf(const ParameterValue& value);

/// Returns the number that the bits `pattern` are for `value`.
WideNumber numberOfPattern(const ParameterValue& value, std::uint64_t pattern);

/// Returns the patterns of the bits of `value` for the numbers `minimum` to `maximum`, which may
/// have another sign than `value`. Numbers that the bits cannot hold are left out.
PatternSet patternsBetween(const ParameterValue& value, WideNumber minimum, WideNumber maximum);

/// Returns the patterns of the wider of two values with the same last bit for which both are the
/// same number.
PatternSet patternsOfSameNumber(const ParameterValue& wider, const ParameterValue& narrower);

} // namespace mxauthor
