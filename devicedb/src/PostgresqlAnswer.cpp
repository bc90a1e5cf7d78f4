#include "PostgresqlAnswer.h"

#include <Poco/String.h>

#include <array>
#include <sstream>
#include <utility>

namespace devices::database {

namespace {

constexpr const char* noReason = "the server gives no reason";

bool startsWith(const std::string& text, const std::string& beginning)
{
    return text.compare(0, beginning.size(), beginning) == 0;
}

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

using StateOfFailure = std::pair<const char*, SqlFailure::Concern>;

// How an SQLSTATE begins. Its first two letters are its class: connection, state of the
// transaction, its rollback, resources, operator, system, internal. "40003" says that it is not
// known what became of the transaction, "57P" that the server ends connections; two more that
// nothing may be changed: a server that only reads, and a missing right.
constexpr std::array<StateOfFailure, 11> statesOfFailures = {{
    {"25006", SqlFailure::Concern::Server},
    {"42501", SqlFailure::Concern::Change},
    {"40003", SqlFailure::Concern::Connection},
    {"57P", SqlFailure::Concern::Connection},
    {"08", SqlFailure::Concern::Connection},
    {"25", SqlFailure::Concern::Database},
    {"40", SqlFailure::Concern::Database},
    {"53", SqlFailure::Concern::Database},
    {"57", SqlFailure::Concern::Database},
    {"58", SqlFailure::Concern::Database},
    {"XX", SqlFailure::Concern::Database},
}};

SqlFailure::Concern concernOf(const PGresult* result)
{
    const char* const state = PQresultErrorField(result, PG_DIAG_SQLSTATE);
    if (state == nullptr) { // a failure of libpq itself
        return SqlFailure::Concern::Connection;
    }
    for (const StateOfFailure& known : statesOfFailures) {
        if (startsWith(state, known.first)) {
            return known.second;
        }
    }
    return SqlFailure::Concern::Statement;
}

// After a write that failed, libpq notices the lost connection when it has read what was received
// before.
bool isLost(PGconn* connection, const PGresult* failure)
{
    constexpr int readsAtMost = 3;
    const bool ofServer = PQresultErrorField(failure, PG_DIAG_SQLSTATE) != nullptr;
    for (int read = 0; !ofServer && read < readsAtMost; ++read) {
        PQconsumeInput(connection);
    }
    return PQstatus(connection) == CONNECTION_BAD;
}

// A line that belongs to the one before it.
bool continues(const std::string& line)
{
    return line.empty() || line[0] == '\t' || startsWith(line, "DETAIL:") ||
           startsWith(line, "HINT:");
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
    return line.empty() ? noReason : line;
}

std::vector<std::string> reasonsOfHosts(const std::string& message)
{
    std::vector<std::string> reasons;
    std::istringstream lines(message);
    for (std::string line; std::getline(lines, line);) {
        if (!continues(line)) {
            reasons.push_back(Poco::replace(line, std::string("FATAL:  "), std::string()));
        }
    }
    return reasons.empty() ? std::vector<std::string>{noReason} : reasons;
}

PostgresqlAnswer checkedAnswer(PGconn* connection, PGresult* result)
{
    PostgresqlAnswer answer(result, &PQclear);
    const ExecStatusType status = PQresultStatus(result);
    if (status == PGRES_COMMAND_OK || status == PGRES_TUPLES_OK) {
        return answer;
    }
    if (isLost(connection, result)) {
        throw SqlFailure("the connection to the server is lost", SqlFailure::Concern::Connection);
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

void takeRows(const PostgresqlAnswer& answer, std::size_t columns,
              const std::function<void(const SqlConnection::Row&)>& take)
{
    SqlConnection::Row row(columns);
    for (int number = 0; number < PQntuples(answer.get()); ++number) {
        for (std::size_t column = 0; column < columns; ++column) {
            row[column] = cellOf(answer.get(), number, static_cast<int>(column));
        }
        take(row);
    }
}

std::size_t changedRows(const PostgresqlAnswer& answer)
{
    const std::string rows = PQcmdTuples(answer.get());
    return rows.empty() ? 0 : std::stoull(rows);
}

} // namespace devices::database
