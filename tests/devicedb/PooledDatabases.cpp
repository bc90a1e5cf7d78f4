#include "PooledDatabases.h"

#include "TestServer.h"

#include <libpq-fe.h>

#include <memory>
#include <stdexcept>
#include <vector>

#include <unistd.h>

namespace testkit {

namespace {

using Connection = std::unique_ptr<PGconn, decltype(&PQfinish)>;

Connection connectedTo(const std::string& words)
{
    Connection connection(PQconnectdb(words.c_str()), &PQfinish);
    if (PQstatus(connection.get()) != CONNECTION_OK) {
        throw std::runtime_error(PQerrorMessage(connection.get()));
    }
    return connection;
}

void run(const Connection& connection, const std::string& sql)
{
    const std::unique_ptr<PGresult, decltype(&PQclear)> answer(
        PQexec(connection.get(), sql.c_str()), &PQclear);
    if (PQresultStatus(answer.get()) != PGRES_COMMAND_OK) {
        throw std::runtime_error(PQerrorMessage(connection.get()));
    }
}

// The pooler opens a connection only when all that it has are within transactions. An earlier test
// may have ended those of the database.
void openConnectionsOfThePooler(const std::string& database)
{
    constexpr std::size_t several = 3;
    std::vector<Connection> clients;
    while (clients.size() < several) {
        clients.push_back(connectedTo(testPooler() + " dbname=" + database));
        run(clients.back(), "BEGIN");
    }
    for (const Connection& client : clients) {
        run(client, "COMMIT");
    }
}

std::string newDatabase()
{
    static int count = 0;
    const std::string name = "pooled_" + std::to_string(getpid()) + "_" + std::to_string(++count);
    run(connectedTo(testServer()), "CREATE DATABASE " + name + " STRATEGY file_copy");
    return name;
}

std::vector<std::string>& unusedDatabases()
{
    static std::vector<std::string> names;
    return names;
}

std::string emptiedDatabase()
{
    const std::string name = unusedDatabases().back();
    unusedDatabases().pop_back();
    run(connectedTo(testServer() + " dbname=" + name),
        "SET client_min_messages = error; DROP SCHEMA public CASCADE; CREATE SCHEMA public");
    return name;
}

} // namespace

std::string takePooledDatabase()
{
    const std::string name = unusedDatabases().empty() ? newDatabase() : emptiedDatabase();
    openConnectionsOfThePooler(name);
    return name;
}

void giveBackPooledDatabase(const std::string& name)
{
    unusedDatabases().push_back(name);
}

} // namespace testkit
