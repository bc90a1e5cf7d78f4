#pragma once

#include "SearchLookup.h"
#include "SqlConnection.h"
#include "SummaryRow.h"

#include "devices/database/ModuleQuery.h"

namespace devices::database {

/// Calls `take` with the modules that match `query`, in its order, until it returns false or there
/// are `PagedQuery::limit`. They are found by the search index: `lookup`, which is made of
/// `query`, has parts. Throws `SqlFailure`.
void searchByIndex(SqlConnection& connection, const PagedQuery& query, const SearchLookup& lookup,
                   const SummaryTaker& take);

/// Fills in what the index has for `lookup`.
void explainIndex(SqlConnection& connection, const PagedQuery& query, const SearchLookup& lookup,
                  SearchExplanation& explanation);

} // namespace devices::database
