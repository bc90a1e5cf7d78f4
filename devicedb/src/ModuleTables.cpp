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
      content(connection),
      search(connection)
{}

// The other tables refer to the records, so they are first.
void ModuleTables::store(const std::vector<ModuleToStore>& modules)
{
    insertion->execute(recordRows(modules));
    content.replace(modules);
    search.replace(modules);
}

// The rows of the other tables go with the record.
std::size_t ModuleTables::remove(const std::vector<RowStatement::Row>& keys)
{
    content.removeParts(keys);
    return deletion->execute(keys);
}

} // namespace devices::database
