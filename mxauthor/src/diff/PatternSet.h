#pragma once

#include <mxformat/BlockField.h>

#include <cstdint>
#include <optional>
#include <vector>

namespace mxauthor {

/// A set of values of one field as bit patterns, most significant bit first: closed intervals of
/// unsigned numbers of `width` bits, 1 to 64.
class PatternSet
{
public:
    struct Interval
    {
        std::uint64_t first;
        std::uint64_t last;
    };

    explicit PatternSet(unsigned bits) : bitCount(bits) {}

    bool empty() const { return parts.empty(); }

    /// The intervals in ascending order, none touching the next.
    const std::vector<Interval>& intervals() const { return parts; }

    /// Adds the patterns of `more`; bits above the width are ignored.
    void add(const std::vector<Interval>& more);

    PatternSet complement() const;
    PatternSet without(const PatternSet& others) const;

    /// Returns the lowest pattern of the set.
    std::optional<std::uint64_t> lowest() const;

    enum class Share
    {
        None,
        Some,
        All
    };

    /// Returns how many of the patterns that begin with the `depth` bits `prefix` are in the set.
    Share shareOf(std::uint64_t prefix, unsigned depth) const;

private:
    unsigned bitCount;
    std::vector<Interval> parts;
};

/// Returns the highest pattern of `bits` bits, 0 to 64.
std::uint64_t highestPattern(unsigned bits);

/// Returns the patterns of the bits of `field` for the numbers `minimum` to `maximum`. Numbers that
/// the bits cannot hold are left out.
PatternSet patternsBetween(const mxformat::BlockField& field, const mxformat::WholeNumber& minimum,
                           const mxformat::WholeNumber& maximum);

/// Returns the patterns of the wider of two fields with the same last bit for which both hold the
/// same number.
PatternSet patternsOfSameNumber(const mxformat::BlockField& wider,
                                const mxformat::BlockField& narrower);

} // namespace mxauthor
