#include "SearchTables.h"

namespace devices::database {

namespace {

RowSql searchedModuleInsertion()
{
    constexpr auto ofText = CellType::Text;
    constexpr auto ofBytes = CellType::Bytes;
    constexpr auto ofNumber = CellType::Number;
    return {"INSERT INTO search_modules (family, module_id, label, in_bytes, out_bytes,"
            " parameter_bytes, file_bytes, has_content, names, channels, parameters, options,"
            " facts) ",
            {ofBytes, ofBytes, ofBytes, ofNumber, ofNumber, ofNumber, ofNumber, ofNumber, ofText,
             ofText, ofText, ofText, ofBytes},
            " ON CONFLICT (family, module_id) DO UPDATE SET label = excluded.label,"
            " in_bytes = excluded.in_bytes, out_bytes = excluded.out_bytes,"
            " parameter_bytes = excluded.parameter_bytes, file_bytes = excluded.file_bytes,"
            " has_content = excluded.has_content, names = excluded.names,"
            " channels = excluded.channels, parameters = excluded.parameters,"
            " options = excluded.options, facts = excluded.facts"};
}

std::uint64_t bytesIn(const DeviceProperties::Bytes& bytes)
{
    return bytes.isNull() ? 0 : bytes->size();
}

// A stored file has one byte more than the file on disk.
ModuleSummary summaryOf(const ModuleToStore& module)
{
    const DeviceProperties& record = *module.record;
    const std::uint64_t stored = bytesIn(record.mxFileData);
    return {record.family,
            record.moduleIdText,
            record.brandLabelName,
            record.inDataSize,
            record.outDataSize,
            bytesIn(record.defaultParameterBlock),
            stored == 0 ? 0 : stored - 1,
            module.content != nullptr};
}

RowStatement::Row searchedModuleRow(const ModuleSummary& module, const ModuleContent* content)
{
    const SearchTexts texts = content == nullptr ? SearchTexts{} : searchTextsOf(*content);
    return {module.family,
            module.moduleIdText,
            module.brandLabelName,
            std::to_string(module.inDataSize),
            std::to_string(module.outDataSize),
            std::to_string(module.parameterBlockSize),
            std::to_string(module.mxFileSize),
            module.hasContent ? "1" : "0",
            texts[0],
            texts[1],
            texts[2],
            texts[3],
            joinedFacts(factPartsOf(module, content))};
}

} // namespace

SearchTables::SearchTables(SqlConnection& connection)
    : insertion(connection.makeRowStatement(searchedModuleInsertion()))
{}

void SearchTables::replace(const std::vector<ModuleToStore>& modules)
{
    std::vector<RowStatement::Row> rows;
    rows.reserve(modules.size());
    for (const ModuleToStore& module : modules) {
        rows.push_back(searchedModuleRow(summaryOf(module), module.content));
    }
    insertion->execute(rows);
}

void SearchTables::replace(const std::vector<SearchedModule>& modules)
{
    std::vector<RowStatement::Row> rows;
    rows.reserve(modules.size());
    for (const SearchedModule& module : modules) {
        rows.push_back(searchedModuleRow(module.summary, &module.content));
    }
    insertion->execute(rows);
}

} // namespace devices::database
