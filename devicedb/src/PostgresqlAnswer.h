#pragma once

#include "SqlConnection.h"

#include <libpq-fe.h>

#include <memory>

namespace devices::database {

/// The server's answer to a statement; freed by libpq.
using PostgresqlAnswer = std::unique_ptr<PGresult, decltype(&PQclear)>;

/// An open connection; ended by libpq.
using PostgresqlHandle = std::unique_ptr<PGconn, decltype(&PQfinish)>;

/// Returns the message of libpq or the server, in one line and without its label.
std::string postgresqlReason(const std::string& message);

/// Returns the reason of each host, in one line, from the message of libpq about hosts that cannot
/// be used; at least one.
std::vector<std::string> reasonsOfHosts(const std::string& message);

/// Takes ownership of `result`. Throws a `SqlFailure` if it is a failure.
PostgresqlAnswer checkedAnswer(PGconn* connection, PGresult* result);

/// Returns a cell of an answer in the binary format: bytes and texts as they are, numbers in
/// decimal.
std::string cellOf(const PGresult* answer, int row, int column);

/// Calls `take` for every row of `answer`, which has `columns` columns.
void takeRows(const PostgresqlAnswer& answer, std::size_t columns,
              const std::function<void(const SqlConnection::Row&)>& take);

/// Returns how many rows the statement changed.
std::size_t changedRows(const PostgresqlAnswer& answer);

} // namespace devices::database
