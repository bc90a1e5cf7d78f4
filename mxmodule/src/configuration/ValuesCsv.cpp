#include "configuration/ValuesFile.h"

#include "CsvTable.h"
#include <mxmodule/Finding.h>

#include <fmt/format.h>

#include <set>
#include <utility>

namespace mxmodule {

namespace {

// The cells that make a row's assignment.
class ValueColumns
{
public:
    ValueColumns(const CsvTable& table, const std::string& file)
        : id(table.column("id")),
          channel(table.column("channel")),
          name(id ? table.column("name") : table.requiredColumn("name", file)),
          value(table.requiredColumn("value", file)),
          identity(table.column("device_type_id"))
    {}

    std::string nameIn(const CsvTable::Row& row) const
    {
        if (id) {
            return "#" + row.cells[*id];
        }
        const std::string owner = channel ? row.cells[*channel] : "";
        return (owner.empty() ? "" : owner + "/") + row.cells[*name];
    }

    // The name that the row gives beside the identifier.
    std::string statedNameIn(const CsvTable::Row& row) const
    {
        return id && name ? row.cells[*name] : "";
    }

    const std::string& valueIn(const CsvTable::Row& row) const { return row.cells[value]; }
    bool hasIds() const { return id.has_value(); }

    std::string identityIn(const CsvTable::Row& row) const
    {
        return identity ? row.cells[*identity] : "";
    }

private:
    std::optional<std::size_t> id;
    std::optional<std::size_t> channel;
    std::optional<std::size_t> name; // this column or that of identifiers exists
    std::size_t value;
    std::optional<std::size_t> identity;
};

void takeIdentity(const std::string& identity, const std::string& place, Values& values)
{
    if (!identity.empty() && !values.deviceTypeId.empty() && identity != values.deviceTypeId) {
        throw Failure(Origin::Input, place,
                      fmt::format("Found {}, expected {} as in the rows before", identity,
                                  values.deviceTypeId));
    }
    values.deviceTypeId = identity.empty() ? values.deviceTypeId : identity;
}

} // namespace

Values readValuesCsv(const std::string& content, const std::string& file)
{
    const CsvTable table = readCsv(content, file);
    Values values;
    if (table.columns.empty()) {
        return values;
    }
    const ValueColumns columns(table, file);
    values.optionsByNumber = columns.hasIds();
    std::set<std::pair<std::string, std::string>> said;
    for (const CsvTable::Row& row : table.rows) {
        const std::string place = fmt::format("{}:{}", file, row.line);
        takeIdentity(columns.identityIn(row), place, values);
        const Assignment assignment{columns.nameIn(row), columns.valueIn(row), place, Origin::Input,
                                    columns.statedNameIn(row)};
        // A parameter has a row for each of its places in the registers.
        if (!assignment.value.empty() && said.emplace(assignment.name, assignment.value).second) {
            addAssignment(assignment, values.assignments);
        }
    }
    return values;
}

} // namespace mxmodule
