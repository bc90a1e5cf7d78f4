#pragma once

#include "SqlConnection.h"

#include "devices/database/ModuleQuery.h"

#include <cstddef>
#include <functional>

namespace devices::database {

/// The columns of a `ModuleSummary`, on the tables p (records) and m (modules).
extern const char* const summaryColumns;
constexpr std::size_t summaryColumnCount = 8;

/// Returns the summary of a row whose first columns these are.
ModuleSummary summaryOf(const SqlConnection::Row& row);

/// Takes the modules of a search; returns false when it wants no more.
using SummaryTaker = std::function<bool(const ModuleSummary&)>;

/// Joins the table m (modules) to p (records).
extern const char* const joinModules;

/// Whether `left` is before `right` in the order of keys.
bool isBefore(const ModuleKey& left, const ModuleKey& right);

/// Returns the key of a module.
ModuleKey keyOf(const ModuleSummary& module);

} // namespace devices::database
