#include "Records.h"

#include <Failure.h>
#include <TestDatabase.h>

#include <gmock/gmock.h>

#include <libpq-fe.h>

#include <cstdlib>
#include <memory>
#include <set>

namespace {

using devices::database::DeviceDatabase;
using testing::ElementsAre;
using testing::IsEmpty;
using testkit::failureOf;

// The tests with the pooler need this. Each transaction has another connection to the server, so
// that a setting or a prepared statement of one transaction is missing in the next.
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

TEST(PoolerPostgresql, PassesNoOptionsOn)
{
    const testkit::TestDatabase place(testkit::Engine::Pooled);
    EXPECT_EQ(
        failureOf([&] { DeviceDatabase database(place.url() + " options=-csearch_path=public"); }),
        "Cannot open device database " + place.name() + ": unsupported startup parameter: options");
}

// Whether it is the only host or one of several.
TEST(PoolerPostgresql, LeadsToTheServerThatAcceptsChanges)
{
    const testkit::TestDatabase place(testkit::Engine::Pooled);
    DeviceDatabase(place.url() + " target_session_attrs=read-write").insert(device("1"));
    std::string several = place.url() + " target_session_attrs=prefer-standby";
    several.replace(several.find("host="), 5, "host=/nowhere,");
    DeviceDatabase database(several);
    database.insert(device("2"));
    EXPECT_THAT(moduleIds(database.list()), ElementsAre("1", "2"));
}

// The time to wait for is a setting of each transaction. The same holds without a pooler.
TEST(PoolerPostgresql, OtherWriterIsWaitedForAndThenReported)
{
    const testkit::TestDatabase place(testkit::Engine::Pooled);
    DeviceDatabase database(place.url());
    setenv("DEVICE_DATABASE_WAIT", "1", 1);
    DeviceDatabase impatient(place.url());
    unsetenv("DEVICE_DATABASE_WAIT");
    auto transaction = database.beginTransaction();
    database.insert(device("1"));
    EXPECT_EQ(failureOf([&] { impatient.insert(device("2")); }),
              "Cannot write to device database " + place.name() +
                  ": canceling statement due to lock timeout");
    EXPECT_THAT(moduleIds(impatient.list()), IsEmpty());
    transaction.commit();
    impatient.insert(device("2"));
    EXPECT_THAT(storedIds(place.url()), ElementsAre("1", "2"));
}

} // namespace
