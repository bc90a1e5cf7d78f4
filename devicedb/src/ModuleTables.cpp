#include "ModuleTables.h"

#include "RecordRow.h"

namespace devices::database {

namespace {

RowSql recordDeletion()
{
    return {"DELETE FROM device_properties WHERE (family, module_id) IN (",
            {CellType::Bytes, CellType::Bytes},
            ")"};
}

} // namespace

ModuleTables::ModuleTables(SqlConnection& connection)
    : insertion(connection.makeRowStatement(recordInsertion())),
      deletion(connection.makeRowStatement(recordDeletion())),
      content(connection)
{}

// The content refers to the records, so they are first.
void ModuleTables::store(const std::vector<ModuleToStore>& modules)
{
    insertion->execute(recordRows(modules));
    content.replace(modules);
}

// The content goes with its record.
std::size_t ModuleTables::remove(const std::vector<RowStatement::Row>& keys)
{
    return deletion->execute(keys);
}

} // namespace devices::database
