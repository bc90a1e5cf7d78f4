#include "FoundModules.h"

#include "ModuleFields.h"

#include <algorithm>
#include <utility>

namespace devices::database {

FoundModules::FoundModules(SqlConnection& openConnection, const PagedQuery& searched,
                           const SearchLookup& wanted)
    : connection(openConnection), query(searched), lookup(wanted)
{}

// CROSS JOIN: SQLite then reads the tables in this order.
std::string FoundModules::selectSql(const std::string& from, const std::string& where,
                                    BoundValues& values) const
{
    std::string sql = std::string("SELECT ") + summaryColumns +
                      ", p.names, p.channels, p.parameters, p.options, x.number FROM " + from +
                      " CROSS JOIN " + summaries +
                      " WHERE p.family = x.family AND p.module_id = x.module_id" + where;
    for (const ModuleCondition& condition : query.conditions) {
        sql += " AND " + conditionSql(condition, connection.dialect(), values);
    }
    return sql;
}

std::string FoundModules::placeSql(const std::string& places, BoundValues& values) const
{
    return selectSql("(SELECT n.family, n.module_id, k.column3 AS number FROM (VALUES " + places +
                         ") AS k CROSS JOIN search_members n WHERE n.block = k.column1"
                         " AND n.place = k.column2) AS x",
                     " AND NOT EXISTS (SELECT 1 FROM search_new n WHERE n.family = x.family"
                     " AND n.module_id = x.module_id)",
                     values);
}

std::vector<FoundModule> FoundModules::read(const std::string& sql, const BoundValues& values)
{
    constexpr std::size_t first = summaryColumnCount; // of the texts
    std::vector<FoundModule> found;
    connection.query(
        sql, values.all(), first + textClassCount + 1, [&](const SqlConnection::Row& row) {
            const SearchTexts texts = {row[first], row[first + 1], row[first + 2], row[first + 3]};
            found.push_back({summaryOf(row), matchOf(texts, lookup.words),
                             static_cast<std::size_t>(numberOf(row.back()))});
        });
    return found;
}

std::vector<FoundModule> FoundModules::notIndexed()
{
    BoundValues values(connection.dialect());
    return read(
        selectSql("(SELECT family, module_id, 0 AS number FROM search_new) AS x", "", values),
        values);
}

std::vector<FoundModule> FoundModules::at(const std::vector<IndexPlace>& places)
{
    std::string rows;
    std::size_t number = 0;
    for (const IndexPlace& place : places) {
        rows += (rows.empty() ? "(" : ", (") + place.block + ", " + std::to_string(place.place) +
                ", " + std::to_string(number++) + ")";
    }
    BoundValues values(connection.dialect());
    const std::string sql = placeSql(rows, values);
    std::vector<FoundModule> found = read(sql, values);
    std::sort(found.begin(), found.end(), [](const FoundModule& left, const FoundModule& right) {
        return left.number < right.number;
    });
    return found;
}

std::optional<FoundModule> FoundModules::of(const ModuleKey& key)
{
    BoundValues values(connection.dialect());
    const std::string wanted = values.key(key);
    const std::string sql =
        selectSql("(SELECT family, module_id, 0 AS number FROM search_modules) AS x",
                  " AND (x.family, x.module_id) = " + wanted, values);
    std::vector<FoundModule> found = read(sql, values);
    return found.empty() ? std::nullopt : std::optional(std::move(found.front()));
}

std::string FoundModules::sql() const
{
    BoundValues values(connection.dialect());
    return placeSql("(BLOCK, PLACE, NUMBER), ...", values);
}

} // namespace devices::database
