#include "SqliteRowStatement.h"

#include "SqliteConnection.h"

namespace devices::database {

namespace {

std::string sqlOfOneRow(const RowSql& rowSql)
{
    std::string values;
    for (const RowSql::Value& value : rowSql.values) {
        values += (values.empty() ? "" : ", ") + value.sql;
    }
    return rowSql.head + "(" + values + ")" + rowSql.tail;
}

} // namespace

Poco::Data::BLOB toBlob(const std::string& bytes)
{
    return {reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()};
}

SqliteRowStatement::SqliteRowStatement(const Poco::Data::Session& openSession, const RowSql& rowSql)
    : session(openSession), sql(sqlOfOneRow(rowSql))
{
    for (const RowSql::Value& value : rowSql.values) {
        columns.push_back({value.isBytes, {}, {}});
    }
}

void SqliteRowStatement::fillColumns(const std::vector<Row>& rows)
{
    for (std::size_t number = 0; number < columns.size(); ++number) {
        Column& column = columns[number];
        column.texts.clear();
        column.blobs.clear();
        for (const Row& row : rows) {
            if (column.isBytes) {
                column.blobs.push_back(toBlob(row[number]));
            } else {
                column.texts.push_back(row[number]);
            }
        }
    }
}

void SqliteRowStatement::execute(const std::vector<Row>& rows)
{
    if (rows.empty()) {
        return; // the driver takes no empty columns
    }
    fillColumns(rows);
    if (!statement) {
        statement.emplace(session);
        *statement << sql;
        for (Column& column : columns) {
            if (column.isBytes) {
                *statement, Poco::Data::Keywords::use(column.blobs);
            } else {
                *statement, Poco::Data::Keywords::use(column.texts);
            }
        }
    }
    withSqliteDriver([this] { statement->execute(); });
}

} // namespace devices::database
