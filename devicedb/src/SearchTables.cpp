#include "SearchTables.h"

namespace devices::database {

namespace {

RowSql searchTextInsertion()
{
    constexpr auto ofText = CellType::Text;
    constexpr auto ofBytes = CellType::Bytes;
    return {"INSERT INTO search_texts (family, module_id, names, channels, parameters, options,"
            " facts) ",
            {ofBytes, ofBytes, ofText, ofText, ofText, ofText, ofBytes},
            " ON CONFLICT (family, module_id) DO UPDATE SET names = excluded.names,"
            " channels = excluded.channels, parameters = excluded.parameters,"
            " options = excluded.options, facts = excluded.facts"};
}

RowSql notIndexedInsertion()
{
    return {"INSERT INTO search_new (family, module_id) ",
            {CellType::Bytes, CellType::Bytes},
            " ON CONFLICT (family, module_id) DO NOTHING"};
}

std::int64_t sizeOf(const DeviceProperties::Bytes& bytes)
{
    return bytes.isNull() ? 0 : static_cast<std::int64_t>(bytes->size());
}

// A stored file has one byte more than the file on disk.
RecordSizes sizesOf(const DeviceProperties& record)
{
    return {record.inDataSize, record.outDataSize, sizeOf(record.defaultParameterBlock),
            sizeOf(record.mxFileData) - 1};
}

RowStatement::Row searchTextRow(const ModuleKey& key, const RecordSizes& sizes,
                                const ModuleContent* content)
{
    const SearchTexts made = content == nullptr ? SearchTexts{} : searchTextsOf(*content);
    return {key.family,
            key.moduleIdText,
            made[0],
            made[1],
            made[2],
            made[3],
            joinedFacts(factPartsOf(sizes, content))};
}

} // namespace

SearchTables::SearchTables(SqlConnection& connection)
    : texts(connection.makeRowStatement(searchTextInsertion())),
      notIndexed(connection.makeRowStatement(notIndexedInsertion()))
{}

void SearchTables::replace(const std::vector<ModuleToStore>& modules)
{
    std::vector<RowStatement::Row> rows;
    rows.reserve(modules.size());
    for (const ModuleToStore& module : modules) {
        rows.push_back(searchTextRow({module.record->family, module.record->moduleIdText},
                                     sizesOf(*module.record), module.content));
    }
    store(rows);
}

void SearchTables::replace(const std::vector<SearchedModule>& modules)
{
    std::vector<RowStatement::Row> rows;
    rows.reserve(modules.size());
    for (const SearchedModule& module : modules) {
        rows.push_back(searchTextRow(module.key, module.sizes, &module.content));
    }
    store(rows);
}

void SearchTables::store(const std::vector<RowStatement::Row>& rows)
{
    texts->execute(rows);
    std::vector<RowStatement::Row> keys;
    keys.reserve(rows.size());
    for (const RowStatement::Row& row : rows) {
        keys.push_back({row[0], row[1]});
    }
    notIndexed->execute(keys);
}

} // namespace devices::database
