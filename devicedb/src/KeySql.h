#pragma once

#include "SqlConnection.h"

#include "devices/database/ModuleQuery.h"

#include <string>
#include <vector>

namespace devices::database {

/// Values bound in a statement, in the order of their placeholders.
class BoundValues
{
public:
    explicit BoundValues(const SqlDialect& sqlDialect) : dialect(sqlDialect) {}

    /// Binds a text, or a number as text, and returns its placeholder.
    std::string text(const std::string& value)
    {
        values.push_back({value, false});
        return "$" + std::to_string(values.size());
    }

    /// The same for bytes.
    std::string bytes(const std::string& value)
    {
        values.push_back({value, true});
        return "CAST($" + std::to_string(values.size()) + " AS " + dialect.bytes + ")";
    }

    /// The same for a key, which is compared with a pair of columns.
    std::string key(const ModuleKey& value)
    {
        const std::string family = bytes(value.family); // first
        return "(" + family + ", " + bytes(value.moduleIdText) + ")";
    }

    const std::vector<SqlParameter>& all() const { return values; }

private:
    const SqlDialect& dialect;
    std::vector<SqlParameter> values;
};

} // namespace devices::database
