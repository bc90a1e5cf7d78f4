#include "Records.h"

#include <Failure.h>
#include <TestDatabase.h>

#include <Poco/Data/Statement.h>

#include <gmock/gmock.h>

namespace {

using devices::database::DeviceDatabase;
using devices::database::OutcomeUnknown;
using testing::ElementsAre;
using testing::IsEmpty;
using testkit::failureOf;

// A pooler ends the connection of a client when that to the server is lost within a transaction.
class LostConnection : public testkit::OnEachEngine
{
protected:
    DeviceDatabase database{url};
    const std::string cannotWrite = "Cannot write to device database " + place.name() + ": ";
    const std::string cannotChange = "Cannot change device database " + place.name() + ": ";

    // Ends every other connection, like a server that is stopped, and waits until it has ended: one
    // that ends later, within the next transaction, is another case.
    void endConnections() const
    {
        place.otherProgram() << "SELECT pg_terminate_backend(pid, 5000) FROM pg_stat_activity"
                                " WHERE pid <> pg_backend_pid() AND datname = current_database()",
            Poco::Data::Keywords::now;
    }

    // A transaction that stores module "lost" ends its own connection while it commits.
    void loseAtCommit() const
    {
        place.execute("CREATE FUNCTION lose() RETURNS trigger LANGUAGE plpgsql AS"
                      " 'BEGIN PERFORM pg_terminate_backend(pg_backend_pid()); RETURN NULL; END'");
        place.execute("CREATE CONSTRAINT TRIGGER lose AFTER INSERT ON device_properties"
                      " DEFERRABLE INITIALLY DEFERRED FOR EACH ROW"
                      " WHEN (NEW.module_id = 'lost'::bytea) EXECUTE FUNCTION lose()");
    }

    static std::string unknownOutcomeOf(const std::function<void()>& operation)
    {
        try {
            operation();
        } catch (const OutcomeUnknown& failure) {
            return failure.what();
        }
        ADD_FAILURE() << "no OutcomeUnknown was thrown";
        return {};
    }
};

RUN_ON_EACH_SERVER(LostConnection);

TEST_P(LostConnection, ReadingConnectsAgain)
{
    database.insert(device("1"), contentNamed("a"));
    endConnections();
    EXPECT_THAT(moduleIds(database.list()), ElementsAre("1"));
    endConnections();
    EXPECT_TRUE(database.find("1"));
    endConnections();
    EXPECT_THAT(moduleIds(database.search({})), ElementsAre("1"));
    endConnections();
    EXPECT_EQ(linesOf(*database.content("kv38", "1")), linesOf(contentNamed("a")));
}

TEST_P(LostConnection, ChangeOutsideATransactionConnectsAgain)
{
    database.insert(device("1"));
    endConnections();
    database.insert(device("2"));
    endConnections();
    EXPECT_TRUE(database.remove("1"));
    EXPECT_THAT(storedIds(url), ElementsAre("2"));
}

TEST_P(LostConnection, BeginOfATransactionConnectsAgain)
{
    database.insert(device("1"));
    endConnections();
    auto transaction = database.beginTransaction();
    database.insert(device("2"));
    transaction.commit();
    EXPECT_THAT(storedIds(url), ElementsAre("1", "2"));
}

TEST_P(LostConnection, TransactionIsRolledBackAndTheNextOneWorks)
{
    {
        auto transaction = database.beginTransaction();
        database.insert(device("1"), contentNamed("a"));
        EXPECT_TRUE(transaction.isAlive());
        endConnections();
        EXPECT_EQ(failureOf([&] { database.insert(device("2")); }),
                  cannotWrite + "the connection to the server is lost");
        EXPECT_FALSE(transaction.isAlive());
        EXPECT_EQ(failureOf([&] { transaction.commit(); }),
                  cannotChange + "the connection to the server is lost");
    }
    EXPECT_THAT(storedIds(url), IsEmpty());
    auto transaction = database.beginTransaction();
    database.insert(device("3"));
    transaction.commit();
    EXPECT_THAT(storedIds(url), ElementsAre("3"));
}

// What is read inside a transaction may be what it stored itself.
TEST_P(LostConnection, ReadingWithinATransactionFails)
{
    auto transaction = database.beginTransaction();
    database.insert(device("1"));
    endConnections();
    EXPECT_EQ(failureOf([&] { database.list(); }), "Cannot read device database " + place.name() +
                                                       ": the connection to the server is lost");
    EXPECT_FALSE(transaction.isAlive());
}

TEST_P(LostConnection, CommitThatIsNotAnsweredMayBeStored)
{
    const std::string reason = "the connection to the server is lost during the commit: it is not "
                               "known whether the changes are stored";
    loseAtCommit();
    {
        auto transaction = database.beginTransaction();
        database.insert(device("lost"));
        EXPECT_EQ(unknownOutcomeOf([&] { transaction.commit(); }), cannotChange + reason);
    }
    EXPECT_EQ(unknownOutcomeOf([&] { database.insert(device("lost")); }), cannotChange + reason);
    EXPECT_THAT(moduleIds(database.list()), IsEmpty());
    database.insert(device("1"));
    EXPECT_THAT(storedIds(url), ElementsAre("1"));
}

} // namespace
