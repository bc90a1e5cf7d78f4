#include "Records.h"

#include <Failure.h>
#include <TestDatabase.h>

#include <Poco/Data/Statement.h>

#include <gmock/gmock.h>

#include <chrono>
#include <cstdlib>
#include <future>

namespace {

using devices::database::DeviceDatabase;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using testkit::failureOf;

std::string serverFailure(const std::string& url)
{
    return failureOf([&] { DeviceDatabase database(url); });
}

// Sets an environment variable while it lives.
class Variable
{
public:
    Variable(const char* variable, const std::string& value) : name(variable)
    {
        setenv(name, value.c_str(), 1);
    }
    ~Variable() { unsetenv(name); }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

private:
    const char* name;
};

// What follows "postgresql:" in the test server's words, by its key.
std::string word(const std::string& key)
{
    const std::string words = testkit::testServer() + " ";
    const auto begin = words.find(key + "=") + key.size() + 1;
    return words.substr(begin, words.find(' ', begin) - begin);
}

TEST(PostgresqlWords, AreReadByLibpq)
{
    EXPECT_EQ(serverFailure("postgresql:host=/nowhere colour=red"),
              "Cannot open device database postgresql:...: its connection string is invalid: "
              "invalid connection option \"...\"");
}

TEST(PostgresqlWords, ThatCannotBeReadAreNotShown)
{
    for (const char* words :
         {"host=/nowhere password=secret word", "secret", "password='secret",
          "//user:sec:ret@ho[st/db", "//u:a\"secret@[host", "password=a \"secret",
          "//user:secret@h:x%zz/db", "//user:se@cret@127.0.0.1:1/db", "//user:se/cret@127.0.0.1/db",
          "//127.0.0.1/db?password=a&b%22cret=x"}) {
        EXPECT_THAT(serverFailure(std::string("postgresql:") + words), Not(HasSubstr("ret")))
            << words;
    }
}

TEST(PostgresqlWords, OfAUrlExplainWhatIsToBeEncoded)
{
    EXPECT_EQ(
        serverFailure("postgresql://user:se@cret@host/db"),
        "Cannot open device database postgresql:...: its connection string is invalid: host "
        "or database hold \"@\"; in a user name or a password write %40 for \"@\" and %2F for "
        "\"/\"");
    EXPECT_THAT(serverFailure("postgresql://u%40x:a%2Fb@/db?host=/nowhere"),
                HasSubstr("/nowhere/.s.PGSQL.5432"));
}

TEST(PostgresqlWords, OfAnUnreachableHostNameHostAndDatabaseAndNoPassword)
{
    const std::string reason = "Cannot open device database postgresql:host=/nowhere dbname=plant: "
                               "connection to server on socket \"/nowhere/.s.PGSQL.5432\" failed: "
                               "No such file or directory";
    EXPECT_EQ(serverFailure("postgresql:host=/nowhere dbname=plant user=u password=secret"),
              reason);
    EXPECT_EQ(serverFailure("postgresql://u:secret@/plant?host=/nowhere"), reason);
    EXPECT_EQ(serverFailure("postgresql:postgresql://u:secret@/plant?host=/nowhere"), reason);
}

TEST(PostgresqlWords, RefusedConnectionIsNamed)
{
    const std::string failure =
        serverFailure("postgresql:host=127.0.0.1 port=1 dbname=plant user=u");
    EXPECT_THAT(failure, StartsWith("Cannot open device database postgresql:host=127.0.0.1 "
                                    "dbname=plant: connection to server at"));
    EXPECT_THAT(failure, HasSubstr("Connection refused"));
    EXPECT_THAT(failure, Not(HasSubstr("\n")));
}

// A second writer sees what the first one stored, whatever the server's default is.
TEST(PostgresqlTransactions, ReadWhatOtherWritersCommitted)
{
    const testkit::TestDatabase place(testkit::Engine::Postgresql);
    std::string url = place.url();
    url.replace(url.find("options="), 8, "options='-cdefault_transaction_isolation=serializable ");
    url += "'";
    DeviceDatabase first(url);
    DeviceDatabase second(url);
    auto transaction = first.beginTransaction();
    first.insert(device("1", "first"));
    auto waiting = std::async(std::launch::async, [&] { second.insert(device("1", "second")); });
    waiting.wait_for(std::chrono::milliseconds(200));
    transaction.commit();
    waiting.get();
    EXPECT_EQ(first.find("1")->brandLabelName, "second");
}

TEST(PostgresqlWords, PasswordIsRemovedFromServerMessages)
{
    // The role's name is the password: the server shows it, the library does not.
    const std::string failure = serverFailure("postgresql:host=" + word("host") +
                                              " dbname=postgres user=hunter2 password=hunter2");
    EXPECT_EQ(failure, "Cannot open device database postgresql:host=" + word("host") +
                           " dbname=postgres: role \"***\" does not exist");
}

TEST(PostgresqlWords, MissingOnesComeFromTheEnvironment)
{
    const Variable host("PGHOST", "/nowhere");
    const Variable database("PGDATABASE", "plant");
    EXPECT_THAT(serverFailure("postgresql:"),
                StartsWith("Cannot open device database postgresql:host=/nowhere dbname=plant: "));
}

TEST(PostgresqlWords, MayComeFromAServiceFile)
{
    const testkit::TestDatabase place(testkit::Engine::Postgresql);
    const testkit::TemporaryDirectory directory;
    const std::string lines =
        "[catalogue]\nhost=" + word("host") + "\nuser=" + word("user") + "\ndbname=postgres\n";
    const Variable file("PGSERVICEFILE", directory.write("services", {lines.begin(), lines.end()}));
    const auto options = place.url().substr(place.url().find("options="));
    DeviceDatabase database("postgresql:service=catalogue " + options);
    database.insert(device("1"));
    EXPECT_THAT(storedIds(place.url()), ElementsAre("1"));
}

TEST(PostgresqlWords, ValuesMayHoldBlanksAndQuotes)
{
    EXPECT_THAT(serverFailure("postgresql:host=/nowhere dbname='my \\'plant' password='a secret'"),
                StartsWith("Cannot open device database postgresql:host=/nowhere dbname=my 'plant: "
                           "connection to server on socket"));
}

TEST(PostgresqlWords, OptionsMayHoldSeveralSettings)
{
    const testkit::TestDatabase place(testkit::Engine::Postgresql);
    const std::string url = place.url().substr(0, place.url().find(" options=")) + " options='-c " +
                            place.url().substr(place.url().find("search_path")) +
                            " -c work_mem=5MB'";
    DeviceDatabase(url).insert(device("1"));
    EXPECT_THAT(storedIds(place.url()), ElementsAre("1"));
}

class PostgresqlServer : public testing::Test
{
protected:
    testkit::TestDatabase place{testkit::Engine::Postgresql};
    DeviceDatabase database{place.url()};
    const std::string cannotWrite = "Cannot write to device database " + place.name() + ": ";
};

TEST_F(PostgresqlServer, MissingRightIsNamed)
{
    const std::string schema = place.url().substr(place.url().find("search_path=") + 12);
    const std::string reader = "reader_" + schema;
    place.execute("CREATE ROLE " + reader + " LOGIN");
    place.execute("GRANT USAGE ON SCHEMA " + schema + " TO " + reader);
    place.execute("GRANT SELECT ON ALL TABLES IN SCHEMA " + schema + " TO " + reader);
    database.insert(device("1"));
    std::string url = place.url();
    url.replace(url.find("user=tester"), 11, "user=" + reader);
    {
        DeviceDatabase asReader(url);
        EXPECT_THAT(moduleIds(asReader.list()), ElementsAre("1"));
        EXPECT_EQ(failureOf([&] { asReader.insert(device("2")); }),
                  cannotWrite + "permission denied for table schema_version");
        EXPECT_EQ(failureOf([&] { asReader.remove("1"); }),
                  cannotWrite + "permission denied for table schema_version");
        place.becomeVersion(2);
        EXPECT_THAT(moduleIds(DeviceDatabase(url).list()), ElementsAre("1"));
    }
    EXPECT_THAT(storedIds(place.url()), ElementsAre("1"));
    place.execute("DROP OWNED BY " + reader);
    place.execute("DROP ROLE " + reader);
}

TEST_F(PostgresqlServer, OtherWriterIsReportedAtOnceIfThereIsNoTimeToWait)
{
    const Variable wait("DEVICE_DATABASE_WAIT", "0");
    DeviceDatabase impatient(place.url());
    const auto transaction = database.beginTransaction();
    EXPECT_EQ(failureOf([&] { impatient.insert(device("2")); }),
              cannotWrite + "canceling statement due to lock timeout");
}

TEST_F(PostgresqlServer, RefusedRecordsLeaveTheStatementsUsable)
{
    place.refuseModuleBad();
    auto transaction = database.beginTransaction();
    for (int round = 0; round < 3; ++round) {
        database.insert(device(std::to_string(round)), contentNamed("x"));
        EXPECT_EQ(failureOf([&] { database.insert(device("bad"), contentNamed("y")); }),
                  cannotWrite + place.refusal());
    }
    transaction.commit();
    EXPECT_THAT(storedIds(place.url()), ElementsAre("0", "1", "2"));
}

TEST_F(PostgresqlServer, BytesAreStoredAsBytea)
{
    auto record = device("1", std::string("\0\\x41'\xB1", 7));
    database.insert(record);
    std::string stored;
    place.otherProgram() << "SELECT encode(brand_label_name, 'hex') FROM device_properties",
        Poco::Data::Keywords::into(stored), Poco::Data::Keywords::now;
    EXPECT_EQ(stored, "005c78343127b1");
}

} // namespace
