#include "ContentReader.h"

#include <utility>

namespace devices::database {

namespace {

using Answer = SqlConnection::Row;

unsigned toNumber(const std::string& decimal)
{
    return static_cast<unsigned>(numberOf(decimal));
}

// Reads the tables of the content one after the other. A key is two equal texts and bytes; the
// bytes of a record need not be a text.
class ContentQueries
{
public:
    ContentQueries(SqlConnection& openConnection, StrayOptions whatOfStray)
        : connection(openConnection), strayOptions(whatOfStray)
    {}

    ContentsByKey read(const std::vector<RowStatement::Row>& keys)
    {
        readModules(keys);
        readChannels();
        readParameters();
        readOptions();
        return std::move(contents);
    }

private:
    void readModules(const std::vector<RowStatement::Row>& keys)
    {
        connection
            .makeRowStatement({"SELECT family, module, label, order_code FROM modules"
                               " WHERE (record_family, record_module_id) IN (",
                               {CellType::Bytes, CellType::Bytes},
                               ")"})
            ->query(keys, 4, [this](const Answer& row) {
                const RowStatement::Row key{row[0], row[1]};
                ModuleContent& content = contents[key];
                content.label = row[2];
                content.orderCode = row[3];
                found.push_back(key);
            });
    }

    // Calls `take` with `columns` of the rows of `table` after the two of their key.
    template <class Take>
    void readRows(const std::string& columns, std::size_t count, const std::string& table,
                  const std::string& order, const Take& take)
    {
        connection
            .makeRowStatement({"SELECT family, module, " + columns + " FROM " + table +
                                   " WHERE (family, module) IN (",
                               {CellType::Text, CellType::Text},
                               ") ORDER BY " + order})
            ->query(found, count + 2, [&](const Answer& row) {
                take(contents[{row[0], row[1]}], Answer(row.begin() + 2, row.end()));
            });
    }

    void readChannels()
    {
        readRows("number, name, direction, size_letter, symbol", 5, "channels", "position",
                 [](ModuleContent& content, const Answer& row) {
                     content.channels.push_back({toNumber(row[0]), row[1], row[2], row[3], row[4]});
                 });
    }

    void readParameters()
    {
        readRows("name, coalesce(CAST(channel AS TEXT), ''), width_bits, default_value, minimum,"
                 " maximum, unit",
                 7, "parameters", "position", [](ModuleContent& content, const Answer& row) {
                     ModuleContent::Parameter parameter;
                     parameter.name = row[0];
                     if (!row[1].empty()) {
                         parameter.channel = toNumber(row[1]);
                     }
                     parameter.widthBits = toNumber(row[2]);
                     parameter.defaultValue = row[3];
                     parameter.minimum = row[4];
                     parameter.maximum = row[5];
                     parameter.unit = row[6];
                     content.parameters.push_back(std::move(parameter));
                 });
    }

    void readOptions()
    {
        readRows("parameter_position, text, value", 3, "options", "parameter_position, position",
                 [this](ModuleContent& content, const Answer& row) {
                     const unsigned parameter = toNumber(row[0]);
                     if (parameter < content.parameters.size()) {
                         content.parameters[parameter].options.push_back({row[1], row[2]});
                     } else if (strayOptions == StrayOptions::Refused) {
                         throw SqlFailure("an option belongs to parameter " + row[0] +
                                          ", the module has " +
                                          std::to_string(content.parameters.size()));
                     }
                 });
    }

    SqlConnection& connection;
    StrayOptions strayOptions;
    ContentsByKey contents;
    std::vector<RowStatement::Row> found; // keys of the contents
};

} // namespace

ContentsByKey readContents(SqlConnection& connection, const std::vector<RowStatement::Row>& keys,
                           StrayOptions strayOptions)
{
    return ContentQueries(connection, strayOptions).read(keys);
}

} // namespace devices::database
