#pragma once

#include "KeySql.h"
#include "SearchLookup.h"
#include "SqlConnection.h"
#include "SummaryRow.h"

#include "devices/database/ModuleQuery.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace devices::database {

/// A module that was read, and how well it matches the words of the query.
struct FoundModule
{
    ModuleSummary module;
    std::optional<TextClass> match; ///< Nothing: a word is missing.
    std::size_t number = 0;         ///< Which of the places that were read.
};

/// A place in the search index.
struct IndexPlace
{
    std::string block;
    std::size_t place;
};

/// Reads modules with what is needed to decide whether they match a query. Throws `SqlFailure`.
class FoundModules
{
public:
    /// All must outlive the object.
    FoundModules(SqlConnection& openConnection, const PagedQuery& searched,
                 const SearchLookup& wanted);

    /// Returns the modules that are not in the index and meet the conditions.
    std::vector<FoundModule> notIndexed();

    /// Returns the modules in `places` that exist and meet the conditions, without those that
    /// `notIndexed` gives, in the order of `places`.
    std::vector<FoundModule> at(const std::vector<IndexPlace>& places);

    /// Returns the module of this key, if it exists and meets the conditions.
    std::optional<FoundModule> of(const ModuleKey& key);

    /// Returns the statement that reads places.
    std::string sql() const;

private:
    std::string selectSql(const std::string& from, const std::string& where,
                          BoundValues& values) const;
    std::string placeSql(const std::string& places, BoundValues& values) const;
    std::vector<FoundModule> read(const std::string& sql, const BoundValues& values);

    SqlConnection& connection;
    const PagedQuery& query;
    const SearchLookup& lookup;
};

} // namespace devices::database
