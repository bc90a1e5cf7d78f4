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

/// Returns the bits of `field`.
ImageField imageFieldOf(const mxformat::BlockField& field);

/// Returns the patterns of the bits of `field` for the numbers `minimum` to `maximum`. Numbers that
/// the bits cannot hold are left out.
PatternSet patternsBetween(const mxformat::BlockField& field, const mxformat::WholeNumber& minimum,
                           const mxformat::WholeNumber& maximum);

/// Returns the patterns of the wider of two fields with the same last bit for which both hold the
/// same number.
PatternSet patternsOfSameNumber(const mxformat::BlockField& wider,
                                const mxformat::BlockField& narrower);

} // namespace mxauthor
