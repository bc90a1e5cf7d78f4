#include "SearchTableFilling.h"

#include "ContentReader.h"
#include "IndexWriter.h"
#include "KeySql.h"
#include "RecordRow.h"
#include "SearchTables.h"
#include "SummaryRow.h"

#include <optional>
#include <vector>

namespace devices::database {

namespace {

// Some modules that follow each other in the order of their keys: all at once, those of a large
// catalogue would fill the memory.
std::vector<ModuleSummary> modulesAfter(SqlConnection& connection,
                                        const std::optional<ModuleKey>& last)
{
    BoundValues values(connection.dialect());
    const std::string after =
        last ? " WHERE (p.family, p.module_id) > " + values.key(*last) : std::string();
    std::vector<ModuleSummary> modules;
    connection.query(std::string("SELECT ") + summaryColumns + " FROM " + oldSummaries + after +
                         " ORDER BY p.family, p.module_id LIMIT 256",
                     values.all(), summaryColumnCount,
                     [&](const SqlConnection::Row& row) { modules.push_back(summaryOf(row)); });
    return modules;
}

// Another program may have removed parameters of which there are still options: searches do without
// these.
std::vector<SearchedModule> withContents(SqlConnection& connection,
                                         const std::vector<ModuleSummary>& modules)
{
    auto contents = readContents(connection, keysOf(modules), StrayOptions::LeftOut);
    std::vector<SearchedModule> searched;
    searched.reserve(modules.size());
    for (const ModuleSummary& module : modules) {
        searched.push_back({module, contents[{module.family, module.moduleIdText}]});
    }
    return searched;
}

} // namespace

void fillSearchTables(SqlConnection& connection)
{
    SearchTables tables(connection);
    ModuleKeys all;
    std::optional<ModuleKey> last;
    for (auto modules = modulesAfter(connection, last); !modules.empty();
         modules = modulesAfter(connection, last)) {
        tables.replace(withContents(connection, modules));
        for (const ModuleSummary& module : modules) {
            all.insert(keyOf(module));
        }
        last = keyOf(modules.back());
    }
    updateSearchIndex(connection, all);
}

} // namespace devices::database
