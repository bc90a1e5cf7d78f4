#include "diff/PatternSet.h"

#include <algorithm>

namespace mxauthor {

namespace {

using Interval = PatternSet::Interval;

// The first interval that ends at `pattern` or above.
std::vector<Interval>::const_iterator firstFrom(const std::vector<Interval>& parts,
                                                std::uint64_t pattern)
{
    return std::lower_bound(
        parts.begin(), parts.end(), pattern,
        [](const Interval& part, std::uint64_t value) { return part.last < value; });
}

} // namespace

std::uint64_t highestPattern(unsigned bits)
{
    return bits >= 64 ? ~std::uint64_t{0} : (std::uint64_t{1} << bits) - 1;
}

void PatternSet::add(const std::vector<Interval>& more)
{
    const std::uint64_t mask = highestPattern(bitCount);
    for (const Interval& part : more) {
        parts.push_back({part.first & mask, part.last & mask});
    }
    std::sort(parts.begin(), parts.end(),
              [](const Interval& a, const Interval& b) { return a.first < b.first; });
    std::vector<Interval> joined;
    for (const Interval& part : parts) {
        // A difference of 1 keeps the comparison from wrapping at the highest pattern.
        if (!joined.empty() &&
            (part.first <= joined.back().last || part.first - joined.back().last == 1)) {
            joined.back().last = std::max(joined.back().last, part.last);
        } else {
            joined.push_back(part);
        }
    }
    parts = std::move(joined);
}

PatternSet PatternSet::complement() const
{
    PatternSet rest(bitCount);
    const std::uint64_t highest = highestPattern(bitCount);
    std::uint64_t next = 0;
    bool isOpen = true;
    for (const Interval& part : parts) {
        if (part.first > next) {
            rest.parts.push_back({next, part.first - 1});
        }
        isOpen = part.last < highest;
        next = part.last + 1;
    }
    if (isOpen) {
        rest.parts.push_back({next, highest});
    }
    return rest;
}

PatternSet PatternSet::without(const PatternSet& others) const
{
    PatternSet rest(bitCount);
    const PatternSet outside = others.complement();
    for (auto a = parts.begin(), b = outside.parts.begin();
         a != parts.end() && b != outside.parts.end();) {
        const Interval both{std::max(a->first, b->first), std::min(a->last, b->last)};
        if (both.first <= both.last) {
            rest.parts.push_back(both);
        }
        (a->last < b->last ? a : b)++;
    }
    return rest;
}

std::optional<std::uint64_t> PatternSet::lowest() const
{
    return parts.empty() ? std::nullopt : std::optional<std::uint64_t>(parts.front().first);
}

PatternSet::Share PatternSet::shareOf(std::uint64_t prefix, unsigned depth) const
{
    const unsigned below = bitCount - depth;
    const std::uint64_t first = below >= 64 ? 0 : prefix << below;
    const std::uint64_t last = first | highestPattern(below);
    const auto found = firstFrom(parts, first);
    if (found == parts.end() || found->first > last) {
        return Share::None;
    }
    return found->first <= first && found->last >= last ? Share::All : Share::Some;
}

PatternSet patternsBetween(const mxformat::BlockField& field, const mxformat::WholeNumber& minimum,
                           const mxformat::WholeNumber& maximum)
{
    PatternSet set(field.bits());
    const mxformat::WholeNumber first = std::max(minimum, field.number(field.lowest()));
    const mxformat::WholeNumber last = std::min(maximum, field.number(field.highest()));
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

PatternSet patternsOfSameNumber(const mxformat::BlockField& wider,
                                const mxformat::BlockField& narrower)
{
    return patternsBetween(wider, narrower.number(narrower.lowest()),
                           narrower.number(narrower.highest()));
}

} // namespace mxauthor
