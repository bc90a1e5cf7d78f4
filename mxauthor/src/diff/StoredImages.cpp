#include "diff/StoredImages.h"

#include <algorithm>
#include <set>

namespace mxauthor {

namespace {

using Held = StoredImages::Held;
using Share = PatternSet::Share;

// Looks for an image in which every field holds one of its patterns. Goes bit by bit through the
// image, which is the order of the bits of each value: the search for the rest depends only on what
// the bits so far leave open of each set; each such state is visited once.
class ImageSearch
{
public:
    // The first of `constraints` is the field of the query; its bits are free only where another
    // field is.
    ImageSearch(std::vector<Held> constraints, const Bytes& block, unsigned& steps)
        : all(std::move(constraints)), defaults(block), stepsLeft(steps)
    {
        for (const Held& held : all) {
            begin = std::min(begin, held.field.first);
            end = std::max(end, held.field.end());
        }
    }

    std::optional<std::uint64_t> run()
    {
        return succeedsFrom(begin, {}) ? std::optional<std::uint64_t>(pattern) : std::nullopt;
    }

private:
    // A set that the bits so far neither rule out nor fulfil.
    struct Open
    {
        std::size_t index; // in `all`
        std::uint64_t prefix;
    };

    // Whether the set of `open` can still be met with the bits up to `bit`; keeps it in `rest` when
    // it is not met yet.
    bool keep(const Open& open, unsigned bit, std::vector<Open>& rest) const
    {
        const Held& held = all[open.index];
        const Share share = held.accepted.shareOf(open.prefix, bit - held.field.first);
        if (share == Share::Some) {
            rest.push_back(open);
        }
        return share != Share::None;
    }

    bool keepBeginningAt(unsigned bit, std::vector<Open>& rest) const
    {
        for (std::size_t i = 0; i < all.size(); ++i) {
            if (all[i].field.first == bit && !keep({i, 0}, bit, rest)) {
                return false;
            }
        }
        return true;
    }

    bool isFree(unsigned bit) const
    {
        return std::any_of(all.begin() + 1, all.end(), [bit](const Held& held) {
            return held.field.first <= bit && bit < held.field.end();
        });
    }

    bool defaultBit(unsigned bit) const
    {
        return bit / 8 < defaults.size() && (defaults[bit / 8] >> (7 - bit % 8) & 1) != 0;
    }

    void note(unsigned bit, bool value)
    {
        const ImageField& asked = all.front().field;
        if (asked.first <= bit && bit < asked.end()) {
            const std::uint64_t place = std::uint64_t{1} << (asked.end() - 1 - bit);
            pattern = value ? pattern | place : pattern & ~place;
        }
    }

    bool succeedsWith(unsigned bit, bool value, const std::vector<Open>& open)
    {
        std::vector<Open> rest;
        for (const Open& one : open) {
            if (!keep({one.index, one.prefix << 1 | (value ? 1U : 0U)}, bit + 1, rest)) {
                return false;
            }
        }
        note(bit, value);
        return succeedsFrom(bit + 1, std::move(rest));
    }

    bool succeedsFrom(unsigned bit, std::vector<Open> open)
    {
        if (bit == end) {
            return true;
        }
        if (stepsLeft == 0) {
            pattern = *all.front().accepted.lowest();
            return true;
        }
        --stepsLeft;
        if (!keepBeginningAt(bit, open) || !failed.insert(keyOf(bit, open)).second) {
            return false;
        }
        if (!isFree(bit)) {
            return succeedsWith(bit, defaultBit(bit), open);
        }
        return succeedsWith(bit, false, open) || succeedsWith(bit, true, open);
    }

    static std::vector<std::uint64_t> keyOf(unsigned bit, const std::vector<Open>& open)
    {
        std::vector<std::uint64_t> key{bit};
        for (const Open& one : open) {
            key.push_back(one.index);
            key.push_back(one.prefix);
        }
        return key;
    }

    std::vector<Held> all;
    const Bytes& defaults;
    unsigned& stepsLeft;
    unsigned begin = ~0U;
    unsigned end = 0;
    std::uint64_t pattern = 0;
    std::set<std::vector<std::uint64_t>> failed; // or in progress
};

} // namespace

ImageField imageFieldOf(const mxformat::BlockField& field)
{
    const std::uint32_t lastByte = std::max(field.end(), field.begin() + 1) - 1;
    return {lastByte * 8 + 8 - field.firstBit() - field.bits(), field.bits()};
}

void StoredImages::add(const ImageField& field, const PatternSet& accepted)
{
    if (accepted.empty()) {
        return;
    }
    const auto [entry, isNew] =
        all.emplace(std::pair(field.first, field.width), Held{field, accepted});
    if (!isNew) {
        const PatternSet both = accepted.without(entry->second.accepted.complement());
        if (!both.empty()) {
            entry->second.accepted = both;
        }
    }
}

bool StoredImages::mayVary(const ImageField& field) const
{
    return std::any_of(all.begin(), all.end(),
                       [&field](const auto& entry) { return entry.second.field.overlaps(field); });
}

// The fields that share bits with `field`, those that share bits with these, and so on.
std::vector<Held> StoredImages::near(const ImageField& field) const
{
    std::vector<Held> found;
    std::vector<Held> run; // fields without a gap between them
    const auto endRun = [&] {
        if (std::any_of(run.begin(), run.end(),
                        [&field](const Held& held) { return held.field.overlaps(field); })) {
            found.insert(found.end(), run.begin(), run.end());
        }
        run.clear();
    };
    unsigned end = 0;
    for (const auto& entry : all) {
        const Held& held = entry.second;
        if (held.field.first >= end) {
            endRun();
        }
        run.push_back(held);
        end = std::max(end, held.field.end());
    }
    endRun();
    return found;
}

std::optional<std::uint64_t> StoredImages::holding(const ImageField& field,
                                                   const PatternSet& patterns)
{
    if (patterns.empty()) {
        return std::nullopt;
    }
    std::vector<Held> constraints = near(field);
    constraints.insert(constraints.begin(), Held{field, patterns});
    const auto found = ImageSearch(constraints, defaults, stepsLeft).run();
    constraints.front().accepted = PatternSet(field.width).complement();
    const bool isPossible = found || ImageSearch(constraints, defaults, stepsLeft).run();
    return isPossible ? found : patterns.lowest();
}

} // namespace mxauthor
