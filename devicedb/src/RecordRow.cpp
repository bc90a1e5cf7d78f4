#include "RecordRow.h"

namespace devices::database {

using namespace Poco::Data::Keywords;
using Poco::Data::BLOB;

namespace {

std::string asText(const DeviceProperties::Bytes& bytes)
{
    return bytes.isNull() ? "" : std::string(bytes->begin(), bytes->end());
}

DeviceProperties::Bytes toBytes(const BLOB& blob)
{
    return new std::vector<char>(blob.begin(), blob.end());
}

} // namespace

BLOB toBlob(const std::string& text)
{
    return {reinterpret_cast<const unsigned char*>(text.data()), text.size()};
}

std::string toText(const BLOB& blob)
{
    return {blob.begin(), blob.end()};
}

RowSql::Value bytesValue(const SqlDialect& dialect)
{
    return {std::string("coalesce(CAST(? AS ") + dialect.bytes + "), " + dialect.noBytes + ")",
            true};
}

RowSql recordInsertion(const SqlDialect& dialect)
{
    const RowSql::Value bytes = bytesValue(dialect);
    const RowSql::Value number = {"?", false};
    return {"INSERT INTO device_properties (family, module_id, brand_label_name, text4, text5,"
            " host_bytes, mx_file_data, default_parameter_block, in_data_size, out_data_size)"
            " VALUES ",
            {bytes, bytes, bytes, bytes, bytes, bytes, bytes, bytes, number, number},
            " ON CONFLICT (family, module_id) DO UPDATE SET"
            " brand_label_name = excluded.brand_label_name, text4 = excluded.text4,"
            " text5 = excluded.text5, host_bytes = excluded.host_bytes,"
            " mx_file_data = excluded.mx_file_data,"
            " default_parameter_block = excluded.default_parameter_block,"
            " in_data_size = excluded.in_data_size, out_data_size = excluded.out_data_size"};
}

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
            std::to_string(record.outDataSize)};
}

const char* const recordSelect =
    "SELECT family, module_id, brand_label_name, text4, text5, host_bytes, mx_file_data,"
    " default_parameter_block, in_data_size, out_data_size FROM device_properties";

namespace {

struct RecordRow
{
    BLOB family;
    BLOB moduleId;
    BLOB brandLabelName;
    BLOB text4;
    BLOB text5;
    BLOB hostBytes;
    BLOB mxFileData;
    BLOB defaultParameterBlock;
    Poco::Int64 inDataSize = 0;
    Poco::Int64 outDataSize = 0;
};

DeviceProperties toRecord(const RecordRow& row)
{
    DeviceProperties record;
    record.family = toText(row.family);
    record.moduleIdText = toText(row.moduleId);
    record.brandLabelName = toText(row.brandLabelName);
    record.text4 = toText(row.text4);
    record.text5 = toText(row.text5);
    record.hostBytes = toBytes(row.hostBytes);
    record.mxFileData = toBytes(row.mxFileData);
    record.defaultParameterBlock = toBytes(row.defaultParameterBlock);
    record.inDataSize = static_cast<std::uint32_t>(row.inDataSize);
    record.outDataSize = static_cast<std::uint32_t>(row.outDataSize);
    return record;
}

} // namespace

std::vector<DeviceProperties> fetchRecords(Poco::Data::Statement& select)
{
    RecordRow row;
    select, into(row.family), into(row.moduleId), into(row.brandLabelName), into(row.text4),
        into(row.text5), into(row.hostBytes), into(row.mxFileData), into(row.defaultParameterBlock),
        into(row.inDataSize), into(row.outDataSize), range(0, 1);
    std::vector<DeviceProperties> records;
    while (!select.done()) {
        if (select.execute() != 0) {
            records.push_back(toRecord(row));
        }
    }
    return records;
}

} // namespace devices::database
