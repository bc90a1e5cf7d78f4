#include "SqliteSchema.h"

namespace devices::database {

const std::vector<std::vector<const char*>> sqliteMigrations = {
    // Version 1.
    {
        "CREATE TABLE schema_version (version INTEGER NOT NULL)",
        "CREATE TABLE device_properties ("
        " family BLOB NOT NULL,"
        " module_id BLOB NOT NULL,"
        " brand_label_name BLOB NOT NULL,"
        " text4 BLOB NOT NULL,"
        " text5 BLOB NOT NULL,"
        " host_bytes BLOB NOT NULL,"
        " mx_file_data BLOB NOT NULL,"
        " default_parameter_block BLOB NOT NULL,"
        " in_data_size INTEGER NOT NULL,"
        " out_data_size INTEGER NOT NULL,"
        " PRIMARY KEY (family, module_id))",
        "CREATE INDEX device_properties_by_module_id ON device_properties (module_id)",
    },
};

const int sqliteSchemaVersion = static_cast<int>(sqliteMigrations.size());

// The driver binds an empty blob as NULL.
const char* const sqliteInsert =
    "INSERT INTO device_properties (family, module_id, brand_label_name, text4, text5, host_bytes,"
    " mx_file_data, default_parameter_block, in_data_size, out_data_size)"
    " VALUES (coalesce(?, x''), coalesce(?, x''), coalesce(?, x''), coalesce(?, x''),"
    " coalesce(?, x''), coalesce(?, x''), coalesce(?, x''), coalesce(?, x''), ?, ?)"
    " ON CONFLICT (family, module_id) DO UPDATE SET"
    " brand_label_name = excluded.brand_label_name, text4 = excluded.text4,"
    " text5 = excluded.text5, host_bytes = excluded.host_bytes,"
    " mx_file_data = excluded.mx_file_data,"
    " default_parameter_block = excluded.default_parameter_block,"
    " in_data_size = excluded.in_data_size, out_data_size = excluded.out_data_size";

const char* const sqliteSelect =
    "SELECT family, module_id, brand_label_name, text4, text5, host_bytes, mx_file_data,"
    " default_parameter_block, in_data_size, out_data_size FROM device_properties";

} // namespace devices::database
