#include <TestDatabase.h>

#include <gmock/gmock.h>

#include <libpq-fe.h>

#include <memory>
#include <set>

namespace {

// What the tests behind the pooler rest on: a setting or a prepared statement of one transaction
// is missing in the next, since that has another connection to the server.
TEST(PoolerPostgresql, GivesEachTransactionAnotherConnection)
{
    const testkit::TestDatabase place(testkit::Engine::Pooled);
    const auto words = place.url().substr(std::string("postgresql:").size());
    const std::unique_ptr<PGconn, decltype(&PQfinish)> client(PQconnectdb(words.c_str()),
                                                              &PQfinish);
    std::set<std::string> connections;
    std::string last;
    for (int transaction = 0; transaction < 6; ++transaction) {
        const std::unique_ptr<PGresult, decltype(&PQclear)> answer(
            PQexec(client.get(), "SELECT pg_backend_pid()"), &PQclear);
        ASSERT_EQ(PQresultStatus(answer.get()), PGRES_TUPLES_OK) << PQerrorMessage(client.get());
        const std::string connection = PQgetvalue(answer.get(), 0, 0);
        EXPECT_NE(connection, last);
        last = connection;
        connections.insert(last);
    }
    EXPECT_EQ(connections.size(), 3U);
}

} // namespace
