#pragma once

#include "text/EditedText.h"

#include <mxstation/Station.h>

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace mxstation {

/// What a change makes of a row.
struct EditedRow
{
    std::vector<std::optional<std::size_t>> before; ///< Of each entry after it; empty: added.
    std::optional<std::size_t> changed;             ///< The entry, after it, with other content.
    std::vector<std::string> keys;                  ///< What is changed of it.
    /// Returns whether the changed entry is as wanted: what it was, what it is.
    std::function<bool(const Entry&, const Entry&)> isWanted;
};

/// Throws a `mxmodule::Failure` if a change from `before` to `after` is another one than `row`
/// says, or if an entry has an error that it did not have: then of `Origin::Request`.
void requireEdited(const Station& station, const EditedText& before, const EditedText& after,
                   const EditedRow& row);

} // namespace mxstation
