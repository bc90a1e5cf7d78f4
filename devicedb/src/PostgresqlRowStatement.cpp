#include "PostgresqlRowStatement.h"

#include "PostgresqlArray.h"

namespace devices::database {

namespace {

const char* arrayTypeOf(CellType type)
{
    return type == CellType::Bytes ? "::bytea[]" : type == CellType::Text ? "::text[]" : "::int8[]";
}

// "SELECT c1, c2 FROM unnest($1::bytea[], $2::int8[]) AS given (c1, c2)"
std::string rowsSql(const std::vector<CellType>& types)
{
    std::string names;
    std::string arrays;
    for (std::size_t column = 0; column < types.size(); ++column) {
        const std::string number = std::to_string(column + 1);
        const char* const comma = column == 0 ? "" : ", ";
        names += comma + ("c" + number);
        arrays += comma + ("$" + number) + arrayTypeOf(types[column]);
    }
    return "SELECT " + names + " FROM unnest(" + arrays + ") AS given (" + names + ")";
}

PostgresqlArray columnOf(const std::vector<RowStatement::Row>& rows, std::size_t column,
                         CellType type)
{
    PostgresqlArray array(type);
    for (const RowStatement::Row& row : rows) {
        array.add(row[column]);
    }
    return array;
}

} // namespace

PostgresqlRowStatement::PostgresqlRowStatement(const PostgresqlHandle& openConnection,
                                               const RowSql& rowSql)
    : connection(openConnection),
      types(rowSql.cells),
      sql(types.empty() ? rowSql.head : rowSql.head + rowsSql(types) + rowSql.tail)
{}

PostgresqlAnswer PostgresqlRowStatement::answerTo(const std::vector<Row>& rows) const
{
    std::vector<PostgresqlArray> arrays;
    arrays.reserve(types.size()); // the values point into them
    std::vector<Oid> oids;
    std::vector<const char*> values;
    std::vector<int> lengths;
    for (const CellType type : types) {
        arrays.push_back(columnOf(rows, arrays.size(), type));
        oids.push_back(arrays.back().type());
        values.push_back(arrays.back().bytes().data());
        lengths.push_back(static_cast<int>(arrays.back().bytes().size()));
    }
    constexpr int binary = 1;
    const std::vector<int> formats(types.size(), binary);
    return checkedAnswer(connection.get(),
                         PQexecParams(connection.get(), sql.c_str(), static_cast<int>(types.size()),
                                      oids.data(), values.data(), lengths.data(), formats.data(),
                                      binary));
}

std::size_t PostgresqlRowStatement::execute(const std::vector<Row>& rows)
{
    return rows.empty() ? 0 : changedRows(answerTo(rows));
}

void PostgresqlRowStatement::query(const std::vector<Row>& rows, std::size_t columns,
                                   const std::function<void(const Row&)>& take)
{
    if (!rows.empty()) {
        takeRows(answerTo(rows), columns, take);
    }
}

} // namespace devices::database
