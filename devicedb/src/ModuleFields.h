#pragma once

#include "KeySql.h"
#include "SearchFacts.h"
#include "SearchTexts.h"

#include "devices/database/ModuleQuery.h"

#include <optional>
#include <string>

namespace devices::database {

/// A field that conditions may name: its SQL, and how the search index finds it. In `condition`,
/// "{}" is replaced by the comparison of `value`.
struct FieldSql
{
    ModuleField field;
    std::string value;
    std::string condition;
    std::optional<TextClass> texts; ///< Its texts are among those of this class.
    std::optional<Fact> fact;
};

/// Returns the field of this name. Throws a `SqlFailure` if there is none.
const FieldSql& fieldNamed(const std::string& name);

/// Returns the number that `condition` compares with. Throws a `SqlFailure` if it is none.
std::int64_t comparedNumber(const ModuleCondition& condition);

/// Returns whether `condition` names a module identifier: the engines find it without the search
/// index.
bool namesOneModule(const ModuleCondition& condition);

/// Returns the SQL of `condition` on the table p (`SummaryRow.h`); its values are bound
/// in `values`, so that no text of it is executed as SQL. Throws a `SqlFailure`.
std::string conditionSql(const ModuleCondition& condition, const SqlDialect& dialect,
                         BoundValues& values);

} // namespace devices::database
