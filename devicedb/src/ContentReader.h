#pragma once

#include "SqlConnection.h"

#include "devices/database/ModuleContent.h"

#include <map>

namespace devices::database {

/// Contents by their keys: rows of family and module identifier.
using ContentsByKey = std::map<RowStatement::Row, ModuleContent>;

/// Returns the content of those modules of `keys` that have one, in one query per table.
ContentsByKey readContents(SqlConnection& connection, const std::vector<RowStatement::Row>& keys);

} // namespace devices::database
