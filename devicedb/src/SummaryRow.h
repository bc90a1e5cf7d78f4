#pragma once

#include "SqlConnection.h"

#include "devices/database/ModuleQuery.h"

#include <cstddef>
#include <functional>
#include <set>

namespace devices::database {

/// The columns of a `ModuleSummary`, on the table p.
extern const char* const summaryColumns;
constexpr std::size_t summaryColumnCount = 8;

/// The table p: since version 4 of the schema, and before.
extern const char* const summaries;
extern const char* const oldSummaries;

/// Returns the summary of a row whose first columns these are.
ModuleSummary summaryOf(const SqlConnection::Row& row);

/// Takes the modules of a search; returns false when it wants no more.
using SummaryTaker = std::function<bool(const ModuleSummary&)>;

/// The text for searches of a module of p, before version 4.
extern const char* const oldSearchText;

/// Whether `left` is before `right` in the order of keys.
bool isBefore(const ModuleKey& left, const ModuleKey& right);

/// Keys, each once, in their order.
struct KeyOrder
{
    bool operator()(const ModuleKey& left, const ModuleKey& right) const
    {
        return isBefore(left, right);
    }
};
using ModuleKeys = std::set<ModuleKey, KeyOrder>;

/// Returns the key of a module.
ModuleKey keyOf(const ModuleSummary& module);

} // namespace devices::database
