#pragma once

#include "diff/ImageField.h"
#include "mxauthor/Field.h"

#include <map>

namespace mxauthor {

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
