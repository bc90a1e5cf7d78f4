#include "PostgresqlAnswer.h"

#include <Poco/String.h>

namespace devices::database {

namespace {

// The numbers of the types in the server's catalogue, which never change.
constexpr Oid int8Type = 20;
constexpr Oid int2Type = 21;
constexpr Oid int4Type = 23;

// A number of the binary format: two's complement, most significant byte first.
std::string decimalOf(const std::string& bytes)
{
    std::uint64_t bits = (static_cast<unsigned char>(bytes[0]) & 0x80U) != 0 ? UINT64_MAX : 0;
    for (const char byte : bytes) {
        bits = bits << 8 | static_cast<unsigned char>(byte);
    }
    return std::to_string(static_cast<std::int64_t>(bits));
}

// The first two letters of an SQLSTATE are its class: connection, state of the transaction, its
// rollback, resources, operator, system, internal. Two codes say that nothing may be changed: a
// transaction that only reads, and a missing right.
SqlFailure::Concern concernOf(const PGresult* result)
{
    const char* const field = PQresultErrorField(result, PG_DIAG_SQLSTATE);
    const std::string state = field == nullptr ? "08000" : field;
    if (state == "25006" || state == "42501") {
        return SqlFailure::Concern::Change;
    }
    for (const char* const kind : {"08", "25", "40", "53", "57", "58", "XX"}) {
        if (state.compare(0, std::string(kind).size(), kind) == 0) {
            return SqlFailure::Concern::Database;
        }
    }
    return SqlFailure::Concern::Statement;
}

} // namespace

std::string postgresqlReason(const std::string& message)
{
    std::size_t begin = 0;
    for (const char* const label : {"ERROR:  ", "FATAL:  ", "PANIC:  "}) {
        const auto at = message.find(label);
        begin = at == std::string::npos ? begin : at + std::string(label).size();
    }
    const std::string line = Poco::trim(message.substr(begin, message.find('\n', begin) - begin));
    return line.empty() ? "the server gives no reason" : line;
}

PostgresqlAnswer checkedAnswer(PGconn* connection, PGresult* result)
{
    PostgresqlAnswer answer(result, &PQclear);
    const ExecStatusType status = PQresultStatus(result);
    if (status == PGRES_COMMAND_OK || status == PGRES_TUPLES_OK) {
        return answer;
    }
    if (PQstatus(connection) == CONNECTION_BAD) {
        throw SqlFailure("the connection to the server is lost", SqlFailure::Concern::Database);
    }
    throw SqlFailure(postgresqlReason(PQerrorMessage(connection)), concernOf(result));
}

std::string cellOf(const PGresult* answer, int row, int column)
{
    const std::string bytes(PQgetvalue(answer, row, column),
                            static_cast<std::size_t>(PQgetlength(answer, row, column)));
    const Oid type = PQftype(answer, column);
    const bool isNumber = type == int8Type || type == int4Type || type == int2Type;
    return isNumber && !bytes.empty() ? decimalOf(bytes) : bytes;
}

} // namespace devices::database
