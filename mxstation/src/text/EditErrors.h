#pragma once

#include "mxstation/Station.h"
#include "text/YamlEdit.h"

#include <cstddef>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace mxstation {

/// Why the text of a station cannot be changed as wanted. Entries that share a text have the same
/// errors: each place is named once.
class EditErrors
{
public:
    /// `edited` outlives the object; `hint` says how to change the text by hand.
    EditErrors(const Station& edited, const char* hint) : station(edited), byHand(hint) {}

    void add(mxmodule::Finding finding) { findings.push_back(std::move(finding)); }
    void add(const std::vector<YamlError>& errors);

    /// Throws a `mxmodule::Failure` with all errors, if there are any.
    void requireNone() const;

private:
    const Station& station;
    const char* byHand;
    std::set<std::pair<std::size_t, std::size_t>> places; // line and column
    std::vector<mxmodule::Finding> findings;
};

/// Returns the lowest number of changes, from 1 to `count`, that is not good. That of 0 is good,
/// that of `count` is not.
template <typename IsGood>
std::size_t firstBad(std::size_t count, const IsGood& isGood)
{
    std::size_t good = 0;
    std::size_t bad = count;
    while (good + 1 < bad) {
        const std::size_t middle = good + (bad - good) / 2;
        (isGood(middle) ? good : bad) = middle;
    }
    return bad;
}

} // namespace mxstation
