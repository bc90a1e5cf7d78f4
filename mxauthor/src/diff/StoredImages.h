#pragma once

#include "diff/PatternSet.h"
#include "mxauthor/Field.h"

#include <map>

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

/// The parameter images that are stored for a module: every parameter holds a value that it
/// accepts, bits of no parameter hold what the default block holds.
class StoredImages
{
public:
    /// `block` outlives the object.
    explicit StoredImages(const Bytes& block) : defaults(block) {}

    /// States that `field`, which lies in the block, holds one of `accepted`. A parameter that
    /// accepts nothing, or nothing that another one in its place accepts, is ignored.
    void add(const ImageField& field, const PatternSet& accepted);

    /// Whether a parameter shares bits with `field`.
    bool mayVary(const ImageField& field) const;

    /// Returns one of `patterns` that some image holds in `field`, which lies in the block; nothing
    /// when no image does. Where parameters contradict each other, and after very many steps, it is
    /// one that perhaps no image holds.
    std::optional<std::uint64_t> holding(const ImageField& field, const PatternSet& patterns);

    struct Held
    {
        ImageField field;
        PatternSet accepted;
    };

private:
    std::vector<Held> near(const ImageField& field) const;

    const Bytes& defaults;
    std::map<std::pair<unsigned, unsigned>, Held> all; // by first bit and width
    unsigned stepsLeft = 2000000;                      // over all searches
};

} // namespace mxauthor
