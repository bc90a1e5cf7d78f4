#include "RecordRow.h"

#include "SqlSchema.h"

namespace devices::database {

namespace {

std::string asText(const DeviceProperties::Bytes& bytes)
{
    return bytes.isNull() ? "" : std::string(bytes->begin(), bytes->end());
}

DeviceProperties::Bytes toBytes(const std::string& bytes)
{
    return new std::vector<char>(bytes.begin(), bytes.end());
}

std::uint32_t toSize(const std::string& decimal)
{
    return static_cast<std::uint32_t>(numberOf(decimal));
}

DeviceProperties toRecord(const SqlConnection::Row& row)
{
    DeviceProperties record;
    record.family = row[0];
    record.moduleIdText = row[1];
    record.brandLabelName = row[2];
    record.text4 = row[3];
    record.text5 = row[4];
    record.hostBytes = toBytes(row[5]);
    record.mxFileData = toBytes(row[6]);
    record.defaultParameterBlock = toBytes(row[7]);
    record.inDataSize = toSize(row[8]);
    record.outDataSize = toSize(row[9]);
    return record;
}

} // namespace

RowSql recordInsertion()
{
    constexpr auto bytes = CellType::Bytes;
    constexpr auto number = CellType::Number;
    return {"INSERT INTO device_properties (family, module_id, brand_label_name, text4, text5,"
            " host_bytes, mx_file_data, default_parameter_block, in_data_size, out_data_size,"
            " written_by) ",
            {bytes, bytes, bytes, bytes, bytes, bytes, bytes, bytes, number, number, number},
            " ON CONFLICT (family, module_id) DO UPDATE SET"
            " brand_label_name = excluded.brand_label_name, text4 = excluded.text4,"
            " text5 = excluded.text5, host_bytes = excluded.host_bytes,"
            " mx_file_data = excluded.mx_file_data,"
            " default_parameter_block = excluded.default_parameter_block,"
            " in_data_size = excluded.in_data_size, out_data_size = excluded.out_data_size,"
            " written_by = excluded.written_by"};
}

namespace {

RowStatement::Row toRow(const DeviceProperties& record)
{
    return {record.family,
            record.moduleIdText,
            record.brandLabelName,
            record.text4,
            record.text5,
            asText(record.hostBytes),
            asText(record.mxFileData),
            asText(record.defaultParameterBlock),
            std::to_string(record.inDataSize),
            std::to_string(record.outDataSize),
            std::to_string(schemaVersion)};
}

} // namespace

std::vector<RowStatement::Row> recordRows(const std::vector<ModuleToStore>& modules)
{
    std::vector<RowStatement::Row> rows;
    rows.reserve(modules.size());
    for (const ModuleToStore& module : modules) {
        rows.push_back(toRow(*module.record));
    }
    return rows;
}

std::vector<RowStatement::Row> keysOf(const std::vector<ModuleToStore>& modules)
{
    std::vector<RowStatement::Row> keys;
    keys.reserve(modules.size());
    for (const ModuleToStore& module : modules) {
        keys.push_back({module.record->family, module.record->moduleIdText});
    }
    return keys;
}

std::vector<RowStatement::Row> keysOf(const std::vector<ModuleSummary>& modules)
{
    std::vector<RowStatement::Row> keys;
    keys.reserve(modules.size());
    for (const ModuleSummary& module : modules) {
        keys.push_back({module.family, module.moduleIdText});
    }
    return keys;
}

const char* const recordSelect =
    "SELECT family, module_id, brand_label_name, text4, text5, host_bytes, mx_file_data,"
    " default_parameter_block, in_data_size, out_data_size FROM device_properties";

namespace {

constexpr std::size_t recordColumns = 10;

} // namespace

std::vector<DeviceProperties> fetchRecords(SqlConnection& connection, const std::string& select,
                                           const std::vector<SqlParameter>& parameters)
{
    std::vector<DeviceProperties> records;
    connection.query(select, parameters, recordColumns,
                     [&](const SqlConnection::Row& row) { records.push_back(toRecord(row)); });
    return records;
}

std::vector<DeviceProperties> fetchRecords(SqlConnection& connection,
                                           const std::vector<RowStatement::Row>& keys)
{
    const auto select =
        connection.makeRowStatement({std::string(recordSelect) + " WHERE (family, module_id) IN (",
                                     {CellType::Bytes, CellType::Bytes},
                                     ")"});
    std::vector<DeviceProperties> records;
    select->query(keys, recordColumns,
                  [&](const SqlConnection::Row& row) { records.push_back(toRecord(row)); });
    return records;
}

} // namespace devices::database
