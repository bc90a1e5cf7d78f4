#include "ModuleSearch.h"

#include "ContentTables.h"
#include "IndexedSearch.h"
#include "KeySql.h"
#include "ModuleFields.h"
#include "NotInListFailure.h"
#include "SearchFolding.h"
#include "SearchLookup.h"
#include "SqlSchema.h"

#include <algorithm>

namespace devices::database {

namespace {

using Source = SearchExplanation::Source;

// Which modules of the order of keys are read.
struct WantedKeys
{
    const char* comparison; // Of keys with `key`, such as " > ".
    std::optional<ModuleKey> key;
    std::size_t most; // 0: all
};

// Words are looked for in the texts which version 2 of the schema has, as its library did: in lower
// case, without options.
std::string orderedSql(const SqlDialect& dialect, int version, const PagedQuery& query,
                       const WantedKeys& wanted, BoundValues& values)
{
    const bool isOld = version < versionOfSearchTables;
    std::string sql = std::string("SELECT ") + summaryColumns + " FROM " +
                      (isOld ? oldSummaries : summaries) + " WHERE true";
    if (wanted.key) {
        sql += std::string(" AND (p.family, p.module_id)") + wanted.comparison +
               values.key(*wanted.key);
    }
    for (const std::string& word : query.words) {
        sql += std::string(" AND ") + dialect.findText + "(" + oldSearchText + ", " +
               values.text(foldedText(word)) + ") > 0";
    }
    for (const ModuleCondition& condition : query.conditions) {
        sql += " AND " + conditionSql(condition, dialect, values);
    }
    return sql + " ORDER BY p.family, p.module_id" +
           (wanted.most == 0 ? "" : " LIMIT " + std::to_string(wanted.most));
}

std::vector<ModuleSummary> modulesInOrder(SqlConnection& connection, int version,
                                          const PagedQuery& query, const WantedKeys& wanted)
{
    BoundValues values(connection.dialect());
    const std::string sql = orderedSql(connection.dialect(), version, query, wanted, values);
    std::vector<ModuleSummary> modules;
    connection.query(sql, values.all(), summaryColumnCount,
                     [&](const SqlConnection::Row& row) { modules.push_back(summaryOf(row)); });
    return modules;
}

// Some at a time, so that the first ones come soon.
void searchInOrder(SqlConnection& connection, int version, const PagedQuery& query,
                   const SummaryTaker& take)
{
    constexpr std::size_t mostAtOnce = 4096;
    std::optional<ModuleKey> after = query.after;
    if (after && modulesInOrder(connection, version, query, {" = ", after, 1}).empty()) {
        throw NotInListFailure(*after); // as where the index is searched
    }
    std::size_t left = query.limit;
    for (bool goesOn = true; goesOn;) {
        const std::size_t most = query.limit == 0 ? mostAtOnce : std::min(left, mostAtOnce);
        const auto modules = modulesInOrder(connection, version, query, {" > ", after, most});
        for (const ModuleSummary& module : modules) {
            if (!take(module)) {
                return;
            }
            after = keyOf(module);
        }
        left -= std::min(left, modules.size());
        goesOn = modules.size() == most && (query.limit == 0 || left != 0);
    }
}

// Words are looked for in lines of UTF-8. PostgreSQL refuses others, which would end a transaction.
bool matchesNothing(const SearchLookup& lookup)
{
    return std::any_of(lookup.words.begin(), lookup.words.end(), [](const std::string& word) {
        return word.find('\n') != std::string::npos || !isReadable(word);
    });
}

// A query that was checked, without the words that every module has: empty ones, and accents alone.
PagedQuery simplified(const PagedQuery& query, const SqlDialect& dialect)
{
    PagedQuery made = query;
    made.words.erase(
        std::remove_if(made.words.begin(), made.words.end(),
                       [](const std::string& word) { return foldedForSearch(word).empty(); }),
        made.words.end());
    BoundValues ignored(dialect);
    for (const ModuleCondition& condition : made.conditions) {
        conditionSql(condition, dialect, ignored); // or a failure, also where nothing is read
    }
    return made;
}

Source sourceOf(int version, const PagedQuery& query, const SearchLookup& lookup)
{
    if (version < versionOfSearchTables) {
        return query.words.empty() ? Source::Order : Source::Scan;
    }
    const bool isOfOneModule =
        query.words.empty() &&
        std::any_of(query.conditions.begin(), query.conditions.end(), namesOneModule);
    return lookup.parts.empty() || isOfOneModule ? Source::Order : Source::Index;
}

} // namespace

void searchModules(SqlConnection& connection, int version, const PagedQuery& query,
                   const SummaryTaker& take)
{
    const PagedQuery searched = simplified(query, connection.dialect());
    const SearchLookup lookup(searched);
    if (matchesNothing(lookup)) {
        return;
    }
    if (sourceOf(version, searched, lookup) == Source::Index) {
        searchByIndex(connection, searched, lookup, take);
    } else {
        searchInOrder(connection, version, searched, take);
    }
}

SearchExplanation explainSearch(SqlConnection& connection, int version, const PagedQuery& query)
{
    const PagedQuery searched = simplified(query, connection.dialect());
    const SearchLookup lookup(searched);
    SearchExplanation explanation;
    explanation.source = sourceOf(version, searched, lookup);
    explanation.words = lookup.words;
    explanation.parts = lookup.texts();
    if (explanation.source == Source::Index) {
        explainIndex(connection, searched, lookup, explanation);
        return explanation;
    }
    BoundValues values(connection.dialect());
    explanation.sql = orderedSql(connection.dialect(), version, searched,
                                 {" > ", searched.after, searched.limit}, values);
    return explanation;
}

ModuleCounts countModules(SqlConnection& connection)
{
    ModuleCounts counts;
    connection.query("SELECT (SELECT count(*) FROM device_properties),"
                     " (SELECT count(*) FROM modules)",
                     {}, 2, [&](const SqlConnection::Row& row) {
                         counts.modules = static_cast<std::uint64_t>(numberOf(row[0]));
                         counts.withContent = static_cast<std::uint64_t>(numberOf(row[1]));
                     });
    return counts;
}

} // namespace devices::database
