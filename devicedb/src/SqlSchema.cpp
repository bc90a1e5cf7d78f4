#include "SqlSchema.h"

#include <Poco/String.h>

namespace devices::database {

namespace {

// {bytes}, {number} and {table end} are replaced by the dialect's words. Never destroyed: a host
// may still insert while its own statics are destroyed.
const auto& migrations = *new std::vector<std::vector<const char*>>{
    // Version 1.
    {
        "CREATE TABLE schema_version (version INTEGER NOT NULL)",
        "CREATE TABLE device_properties ("
        " family {bytes} NOT NULL,"
        " module_id {bytes} NOT NULL,"
        " brand_label_name {bytes} NOT NULL,"
        " text4 {bytes} NOT NULL,"
        " text5 {bytes} NOT NULL,"
        " host_bytes {bytes} NOT NULL,"
        " mx_file_data {bytes} NOT NULL,"
        " default_parameter_block {bytes} NOT NULL,"
        " in_data_size {number} NOT NULL,"
        " out_data_size {number} NOT NULL,"
        " PRIMARY KEY (family, module_id))",
        "CREATE INDEX device_properties_by_module_id ON device_properties (module_id)",
    },
    // Version 2: the catalogue.
    {
        "CREATE TABLE modules ("
        " family TEXT NOT NULL,"
        " module TEXT NOT NULL,"
        " record_family {bytes} NOT NULL,"
        " record_module_id {bytes} NOT NULL,"
        " label TEXT NOT NULL,"
        " order_code TEXT NOT NULL,"
        " in_bytes {number} NOT NULL,"
        " out_bytes {number} NOT NULL,"
        " search_text TEXT NOT NULL,"
        " PRIMARY KEY (family, module),"
        " UNIQUE (record_family, record_module_id),"
        " FOREIGN KEY (record_family, record_module_id)"
        " REFERENCES device_properties (family, module_id) ON DELETE CASCADE){table end}",
        "CREATE TABLE channels ("
        " family TEXT NOT NULL,"
        " module TEXT NOT NULL,"
        " position INTEGER NOT NULL,"
        " number INTEGER NOT NULL,"
        " name TEXT NOT NULL,"
        " direction TEXT NOT NULL,"
        " size_letter TEXT NOT NULL,"
        " symbol TEXT NOT NULL,"
        " PRIMARY KEY (family, module, position),"
        " FOREIGN KEY (family, module) REFERENCES modules (family, module)"
        " ON DELETE CASCADE){table end}",
        "CREATE TABLE parameters ("
        " family TEXT NOT NULL,"
        " module TEXT NOT NULL,"
        " position INTEGER NOT NULL,"
        " name TEXT NOT NULL,"
        " channel INTEGER,"
        " width_bits INTEGER NOT NULL,"
        " default_value TEXT NOT NULL,"
        " minimum TEXT NOT NULL,"
        " maximum TEXT NOT NULL,"
        " unit TEXT NOT NULL,"
        " PRIMARY KEY (family, module, position),"
        " FOREIGN KEY (family, module) REFERENCES modules (family, module)"
        " ON DELETE CASCADE){table end}",
        "CREATE TABLE options ("
        " family TEXT NOT NULL,"
        " module TEXT NOT NULL,"
        " parameter_position INTEGER NOT NULL,"
        " position INTEGER NOT NULL,"
        " text TEXT NOT NULL,"
        " value TEXT NOT NULL,"
        " PRIMARY KEY (family, module, parameter_position, position),"
        " FOREIGN KEY (family, module, parameter_position)"
        " REFERENCES parameters (family, module, position) ON DELETE CASCADE){table end}",
    },
    // Version 3: the same tables, bit fields with their own widths (`takeWidthsFromFiles`).
    {},
    // Version 4: the tables of searches (`fillSearchTables`). Until they are filled, the tables of
    // version 3 are only read: readers do not wait.
    {
        "CREATE TABLE search_modules ("
        " family {bytes} NOT NULL,"
        " module_id {bytes} NOT NULL,"
        " label {bytes} NOT NULL,"
        " in_bytes {number} NOT NULL,"
        " out_bytes {number} NOT NULL,"
        " parameter_bytes {number} NOT NULL,"
        " file_bytes {number} NOT NULL,"
        " has_content INTEGER NOT NULL,"
        " names TEXT NOT NULL,"
        " channels TEXT NOT NULL,"
        " parameters TEXT NOT NULL,"
        " options TEXT NOT NULL,"
        " facts {bytes} NOT NULL,"
        " PRIMARY KEY (family, module_id),"
        " FOREIGN KEY (family, module_id) REFERENCES device_properties (family, module_id)"
        " ON DELETE CASCADE)",
        "CREATE INDEX search_modules_by_module_id ON search_modules (module_id)",
        "CREATE TABLE search_new ("
        " family {bytes} NOT NULL,"
        " module_id {bytes} NOT NULL,"
        " PRIMARY KEY (family, module_id),"
        " FOREIGN KEY (family, module_id) REFERENCES search_modules (family, module_id)"
        " ON DELETE CASCADE){table end}",
        "CREATE TABLE search_blocks ("
        " block {number} NOT NULL,"
        " first_family {bytes} NOT NULL,"
        " first_module_id {bytes} NOT NULL,"
        " PRIMARY KEY (block))",
        "CREATE TABLE search_members ("
        " block {number} NOT NULL,"
        " place INTEGER NOT NULL,"
        " family {bytes} NOT NULL,"
        " module_id {bytes} NOT NULL,"
        " PRIMARY KEY (block, place)){table end}",
        "CREATE TABLE search_parts ("
        " block {number} NOT NULL,"
        " part {bytes} NOT NULL,"
        " members {bytes} NOT NULL,"
        " PRIMARY KEY (part, block)){table end}",
    },
};

// After the above. A library of an older version that has the database open would not fill the
// tables of searches: the engine refuses its records, in which `written_by` is missing.
constexpr const char* recordsStateTheirWriter =
    "ALTER TABLE device_properties ADD COLUMN written_by INTEGER";

std::string inDialect(std::string statement, const SqlDialect& dialect)
{
    Poco::replaceInPlace(statement, "{bytes}", dialect.bytes);
    Poco::replaceInPlace(statement, "{number}", dialect.number);
    Poco::replaceInPlace(statement, "{table end}", dialect.tableEnd);
    return statement;
}

} // namespace

const int schemaVersion = static_cast<int>(migrations.size());

std::vector<std::vector<std::string>> sqlMigrations(const SqlDialect& dialect)
{
    std::vector<std::vector<std::string>> steps;
    for (const auto& migration : migrations) {
        steps.emplace_back();
        for (const char* statement : migration) {
            steps.back().push_back(inDialect(statement, dialect));
        }
    }
    return steps;
}

std::vector<std::string> sqlEndingVersion4(const SqlDialect& dialect)
{
    std::vector<std::string> statements = {recordsStateTheirWriter, dialect.refuseOlderWriters};
    if (dialect.dropContentKeys != nullptr) {
        statements.emplace_back(dialect.dropContentKeys);
    }
    return statements;
}

} // namespace devices::database
