#pragma once

#include <devices/database/ModuleQuery.h>

#include <string>
#include <vector>

namespace bench {

/// A query and how a user writes it.
struct MixedQuery
{
    std::string text;
    devices::database::PagedQuery query;
};

/// Queries of one kind.
struct SearchMix
{
    std::string name;
    std::vector<MixedQuery> queries;
};

/// Returns queries for modules of `CatalogueGenerator`: words as one types them, each after each
/// character; conditions; words with conditions.
std::vector<SearchMix> searchMixes();

} // namespace bench
