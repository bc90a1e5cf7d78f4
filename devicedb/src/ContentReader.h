#pragma once

#include "SqlConnection.h"

#include "devices/database/ModuleContent.h"

#include <map>

namespace devices::database {

/// Contents by their keys: rows of family and module identifier.
using ContentsByKey = std::map<RowStatement::Row, ModuleContent>;

/// What to do with an option of a parameter that is missing: another program has changed the
/// tables.
enum class StrayOptions
{
    Refused, ///< Fail.
    LeftOut
};

/// Returns the content of those modules of `keys` that have one, in one query per table. Throws a
/// `SqlFailure`.
ContentsByKey readContents(SqlConnection& connection, const std::vector<RowStatement::Row>& keys,
                           StrayOptions strayOptions = StrayOptions::Refused);

} // namespace devices::database
