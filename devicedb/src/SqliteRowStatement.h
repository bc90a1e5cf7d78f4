#pragma once

#include "RowStatement.h"

#include <Poco/Data/LOB.h>
#include <Poco/Data/Session.h>
#include <Poco/Data/Statement.h>

#include <optional>

namespace devices::database {

/// Rows of SQLite: the driver is handed whole columns and runs the statement for each row. A step
/// costs next to nothing, but an execution of the driver's statement does.
class SqliteRowStatement final : public RowStatement
{
public:
    SqliteRowStatement(const Poco::Data::Session& openSession, const RowSql& rowSql);

    void execute(const std::vector<Row>& rows) override;

private:
    struct Column
    {
        bool isBytes;
        std::vector<std::string> texts;
        std::vector<Poco::Data::BLOB> blobs;
    };

    void fillColumns(const std::vector<Row>& rows);

    Poco::Data::Session session;
    std::string sql;
    std::vector<Column> columns; // the driver refers to what they hold
    std::optional<Poco::Data::Statement> statement;
};

Poco::Data::BLOB toBlob(const std::string& bytes);

} // namespace devices::database
