#include "Records.h"

#include <Failure.h>
#include <TestDatabase.h>

#include <Poco/Data/Statement.h>

#include <gmock/gmock.h>

#include <csignal>
#include <utility>

#include <sys/resource.h>

namespace {

using devices::database::DeviceDatabase;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;
using testkit::failureOf;

class Transactions : public testkit::OnEachEngine
{
protected:
    DeviceDatabase database{url};

    std::string refusal() const
    {
        return "Cannot write to device database " + place.name() + ": " + place.refusal();
    }
};

RUN_ON_EACH_ENGINE(Transactions);

class SqliteTransactions : public testing::Test
{
protected:
    testkit::TestDatabase place{testkit::Engine::Sqlite};
    const std::string& url = place.url();
    DeviceDatabase database{url};
};

/// No file of this process grows beyond `bytes` while this lives, as on a full disk.
class FullDisk
{
public:
    explicit FullDisk(rlim_t bytes) : oldHandler(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &oldLimit);
        rlimit limit = oldLimit;
        limit.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &oldLimit);
        std::signal(SIGXFSZ, oldHandler);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    void (*oldHandler)(int);
    rlimit oldLimit{};
};

TEST_P(Transactions, InsertAloneIsStoredAtOnce)
{
    database.insert(device("1"));
    EXPECT_THAT(storedIds(url), ElementsAre("1"));
}

TEST_P(Transactions, ChangesBecomeVisibleTogetherAtCommit)
{
    database.insert(device("0"));
    auto transaction = database.beginTransaction();
    database.insert(device("1"));
    database.insert(device("2"));
    database.remove("0");
    EXPECT_THAT(storedIds(url), ElementsAre("0"));
    transaction.commit();
    EXPECT_THAT(storedIds(url), ElementsAre("1", "2"));
}

TEST_P(Transactions, UncommittedChangesAreTakenBack)
{
    database.insert(device("1", "old"));
    {
        const auto transaction = database.beginTransaction();
        database.insert(device("1", "new"));
        database.insert(device("2"));
        EXPECT_THAT(moduleIds(database.list()), ElementsAre("1", "2"));
    }
    EXPECT_THAT(moduleIds(database.list()), ElementsAre("1"));
    EXPECT_EQ(database.find("1")->brandLabelName, "old");
}

TEST_P(Transactions, ExceptionRollsTheChangesBack)
{
    EXPECT_EQ(failureOf([&] {
                  const auto transaction = database.beginTransaction();
                  database.insert(device("1"));
                  throw std::runtime_error("left");
              }),
              "left");
    EXPECT_THAT(database.list(), IsEmpty());
}

TEST_P(Transactions, MovedTransactionGoesOn)
{
    auto first = database.beginTransaction();
    {
        auto second = std::move(first);
        database.insert(device("1"));
        second.commit();
    }
    EXPECT_THAT(storedIds(url), ElementsAre("1"));
}

TEST_P(Transactions, AnotherFollowsACommittedOne)
{
    database.beginTransaction().commit();
    auto second = database.beginTransaction();
    database.insert(device("2"));
    second.commit();
    EXPECT_THAT(storedIds(url), ElementsAre("2"));
}

TEST_P(Transactions, DoNotNest)
{
    auto outer = database.beginTransaction();
    database.insert(device("1"));
    EXPECT_EQ(failureOf([&] { database.beginTransaction(); }),
              "Cannot change device database " + place.name() +
                  ": cannot start a transaction within a transaction");
    outer.commit();
    EXPECT_THAT(storedIds(url), ElementsAre("1"));
}

TEST_P(Transactions, FailingInsertLeavesTheRestOfTheTransaction)
{
    place.refuseModuleBad();
    auto transaction = database.beginTransaction();
    database.insert(device("1"));
    EXPECT_EQ(failureOf([&] { database.insert(device("bad")); }), refusal());
    database.insert(device("2"));
    transaction.commit();
    EXPECT_THAT(storedIds(url), ElementsAre("1", "2"));
}

TEST_F(SqliteTransactions, FailingReplacementKeepsTheOldRecord)
{
    database.insert(device("1", "old"));
    place.execute("CREATE TRIGGER refuse BEFORE UPDATE ON device_properties"
                  " BEGIN SELECT RAISE(ABORT, 'refused'); END");
    EXPECT_EQ(failureOf([&] { database.insert(device("1", "new")); }),
              "Cannot write to device database " + url + ": refused");
    EXPECT_EQ(database.find("1")->brandLabelName, "old");
}

TEST_F(SqliteTransactions, NothingIsStoredOutsideATransactionThatTheEngineGaveUp)
{
    place.execute("CREATE TRIGGER refuse BEFORE INSERT ON device_properties"
                  " WHEN NEW.module_id = CAST('bad' AS BLOB)"
                  " BEGIN SELECT RAISE(ROLLBACK, 'refused'); END");
    const std::string refusal = "Cannot write to device database " + url + ": refused";
    const std::string lost = "Cannot change device database " + url +
                             ": its transaction was rolled back after an earlier failure";
    {
        auto transaction = database.beginTransaction();
        database.insert(device("1"));
        EXPECT_EQ(failureOf([&] { database.insert(device("bad")); }), refusal);
        EXPECT_EQ(failureOf([&] { database.insert(device("2")); }), lost);
        EXPECT_EQ(failureOf([&] { database.remove("1"); }), lost);
        EXPECT_EQ(failureOf([&] { transaction.commit(); }), lost);
    }
    EXPECT_THAT(storedIds(url), IsEmpty());
    database.insert(device("3"));
    EXPECT_THAT(storedIds(url), ElementsAre("3"));
}

TEST_F(SqliteTransactions, FullDiskLeavesTheDatabaseAsItWas)
{
    database.insert(device("1"));
    auto big = device("2");
    big.mxFileData = new std::vector<char>(400000, 'x');
    {
        const FullDisk disk(65536);
        EXPECT_THAT(failureOf([&] { database.insert(big); }),
                    StartsWith("Cannot write to device database " + url + ": "));
    }
    EXPECT_THAT(storedIds(url), ElementsAre("1"));
    database.insert(big);
    EXPECT_THAT(storedIds(url), ElementsAre("1", "2"));
}

// Else a part of the index would be stored, and modules would be in no search.
TEST_F(SqliteTransactions, IsLostIfTheSearchIndexCannotBeWritten)
{
    place.execute("CREATE TRIGGER refuse BEFORE INSERT ON search_new BEGIN"
                  " SELECT RAISE(ABORT, 'refused'); END");
    auto transaction = database.beginTransaction();
    database.insert(device("1"));
    EXPECT_THAT(failureOf([&] { transaction.commit(); }), HasSubstr("refused"));
    EXPECT_FALSE(transaction.isAlive());
    EXPECT_THAT(failureOf([&] { transaction.commit(); }), HasSubstr("rolled back"));
}

TEST_F(SqliteTransactions, OtherWriterIsWaitedForAndThenReported)
{
    setenv("DEVICE_DATABASE_WAIT", "1", 1);
    DeviceDatabase impatient(url);
    unsetenv("DEVICE_DATABASE_WAIT");
    auto other = place.otherProgram();
    other << "BEGIN IMMEDIATE", Poco::Data::Keywords::now;
    EXPECT_EQ(failureOf([&] { impatient.insert(device("1")); }),
              "Cannot write to device database " + url + ": database is locked");
    EXPECT_THAT(database.list(), IsEmpty());
    other << "ROLLBACK", Poco::Data::Keywords::now;
    database.insert(device("1"));
    EXPECT_THAT(storedIds(url), ElementsAre("1"));
}

} // namespace
