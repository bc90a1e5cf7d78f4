#include "SearchTableFilling.h"

#include "IndexWriter.h"
#include "KeySql.h"
#include "SearchTables.h"
#include "SummaryRow.h"

#include <map>
#include <optional>
#include <utility>

namespace devices::database {

namespace {

// Some modules that follow each other in the order of their keys: all at once, those of a large
// catalogue would fill the memory.
struct SomeModules
{
    std::vector<SearchedModule> modules;        // at first without their content
    std::vector<RowStatement::Row> inCatalogue; // keys of those that have one
};

SomeModules modulesAfter(SqlConnection& connection, const std::optional<ModuleKey>& last)
{
    BoundValues values(connection.dialect());
    const std::string after =
        last ? " WHERE (p.family, p.module_id) > " + values.key(*last) : std::string();
    SomeModules some;
    connection.query(std::string("SELECT ") + summaryColumns + " FROM " + oldSummaries + after +
                         " ORDER BY p.family, p.module_id LIMIT 256",
                     values.all(), summaryColumnCount, [&](const SqlConnection::Row& row) {
                         some.modules.push_back({summaryOf(row), {}});
                         if (some.modules.back().summary.hasContent) {
                             some.inCatalogue.push_back({row[0], row[1]});
                         }
                     });
    return some;
}

// Reads the content of modules as far as searches know it.
class ContentReader
{
public:
    ContentReader(SqlConnection& openConnection, SomeModules& some)
        : connection(openConnection), keys(some.inCatalogue)
    {
        for (SearchedModule& module : some.modules) {
            contents[{module.summary.family, module.summary.moduleIdText}] = &module.content;
        }
    }

    void read()
    {
        readTable("label, order_code FROM modules", 2,
                  [](ModuleContent& content, const std::string* cell) {
                      content.label = cell[0];
                      content.orderCode = cell[1];
                  });
        readTable("name, direction, size_letter FROM channels", 3,
                  [](ModuleContent& content, const std::string* cell) {
                      content.channels.push_back({0, cell[0], cell[1], cell[2], ""});
                  });
        readTable("name, unit FROM parameters", 2,
                  [](ModuleContent& content, const std::string* cell) {
                      content.parameters.emplace_back().name = cell[0];
                      content.parameters.back().unit = cell[1];
                  });
        readTable("text FROM options", 1, [](ModuleContent& content, const std::string* cell) {
            if (!content.parameters.empty()) { // another program may have removed them
                content.parameters[0].options.push_back({cell[0], ""}); // whosever they are
            }
        });
    }

private:
    void readTable(const std::string& columnsFrom, std::size_t columns,
                   void (*take)(ModuleContent& content, const std::string* cells))
    {
        const auto select = connection.makeRowStatement(
            {"SELECT family, module, " + columnsFrom + " WHERE (family, module) IN (",
             {CellType::Text, CellType::Text},
             ")"});
        select->query(keys, columns + 2, [&](const SqlConnection::Row& row) {
            const auto module = contents.find({row[0], row[1]});
            if (module != contents.end()) {
                take(*module->second, row.data() + 2);
            }
        });
    }

    SqlConnection& connection;
    const std::vector<RowStatement::Row>& keys;
    std::map<std::pair<std::string, std::string>, ModuleContent*> contents; // by key
};

} // namespace

void fillSearchTables(SqlConnection& connection)
{
    SearchTables tables(connection);
    ModuleKeys all;
    std::optional<ModuleKey> last;
    for (auto some = modulesAfter(connection, last); !some.modules.empty();
         some = modulesAfter(connection, last)) {
        ContentReader(connection, some).read();
        tables.replace(some.modules);
        for (const SearchedModule& module : some.modules) {
            all.insert(keyOf(module.summary));
        }
        last = keyOf(some.modules.back().summary);
    }
    updateSearchIndex(connection, std::move(all));
}

} // namespace devices::database
