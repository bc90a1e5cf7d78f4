#pragma once

#include "SqlConnection.h"

#include <libpq-fe.h>

#include <memory>

namespace devices::database {

/// What the server answers to a statement; libpq frees it.
using PostgresqlAnswer = std::unique_ptr<PGresult, decltype(&PQclear)>;

/// Returns what libpq or the server says, in one line and without its label.
std::string postgresqlReason(const std::string& message);

/// Takes `result` over. Throws a `SqlFailure` when it is a failure.
PostgresqlAnswer checkedAnswer(PGconn* connection, PGresult* result);

/// Returns a cell of an answer in the binary format: bytes and texts as they are, numbers in
/// decimal.
std::string cellOf(const PGresult* answer, int row, int column);

} // namespace devices::database
