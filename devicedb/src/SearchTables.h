#pragma once

#include "SearchFacts.h"
#include "SearchTexts.h"
#include "SqlConnection.h"

#include "devices/database/DeviceDatabase.h"

#include <memory>
#include <vector>

namespace devices::database {

/// What searches have to know of a stored module. Its content is empty if it has none.
struct SearchedModule
{
    ModuleSummary summary;
    ModuleContent content;
};

/// The table of modules that searches read; what is changed in it is not in the index
/// (`updateSearchIndex`). Whatever fails is a `SqlFailure`.
class SearchTables
{
public:
    explicit SearchTables(SqlConnection& connection);

    /// Stores what searches know of `modules`, each of which is there once, in place of what they
    /// knew.
    void replace(const std::vector<ModuleToStore>& modules);

    /// The same for modules that are stored already.
    void replace(const std::vector<SearchedModule>& modules);

private:
    std::unique_ptr<RowStatement> insertion;
};

} // namespace devices::database
