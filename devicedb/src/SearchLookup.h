#pragma once

#include "SearchTexts.h"

#include "devices/database/ModuleQuery.h"

#include <cstddef>
#include <string>
#include <vector>

namespace devices::database {

/// Parts of the search index of which a module that matches has at least one.
struct WantedPart
{
    std::string part;  ///< This part,
    std::string end;   ///< or, unless empty, all from this part up to that one, without it.
    TextClass poorest; ///< In a text of this class, or of a better one.
    bool ranks;        ///< Of a word: its class counts for the order.
};

/// What a query looks up in the search index. Every module that matches has each of `parts`, which
/// are few; one that has them may still not match.
struct SearchLookup
{
    explicit SearchLookup(const PagedQuery& query);

    /// Returns the parts that are texts.
    std::vector<std::string> texts() const;

    std::vector<std::string> words; ///< Those of the query, folded; no empty ones.
    std::vector<WantedPart> parts;
};

} // namespace devices::database
