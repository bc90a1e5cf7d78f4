#include "Records.h"

#include <Failure.h>
#include <TestDatabase.h>

#include <Poco/Data/Statement.h>

#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>
#include <thread>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

using devices::database::DeviceDatabase;
using devices::database::OpenMode;
using testing::ElementsAre;
using testkit::failureOf;

constexpr const char* socketName = ".s.PGSQL.5432";

// Another name of the test server, as a host of a connection string. Nothing answers there when it
// is away.
class Host
{
public:
    Host()
    {
        const std::string words = testkit::testServer();
        const auto begin = words.find("host=") + 5;
        server = words.substr(begin, words.find(' ') - begin);
        comeBack();
    }

    void goAway() { std::filesystem::remove(directory.path(socketName)); }
    void comeBack()
    {
        std::filesystem::create_symlink(server + "/" + socketName, directory.path(socketName));
    }

    std::string name() const { return directory.path(); }
    std::string socketPath() const { return directory.path(socketName); }
    std::string refusal(const std::string& reason) const
    {
        return "connection to server on socket \"" + directory.path(socketName) +
               "\" failed: " + reason;
    }

private:
    testkit::TemporaryDirectory directory;
    std::string server;
};

// Ends each connection at once while it lives, as a server does that is being stopped.
class ClosingServer
{
public:
    explicit ClosingServer(const std::string& path) : listening(socket(AF_UNIX, SOCK_STREAM, 0))
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        path.copy(address.sun_path, sizeof(address.sun_path) - 1);
        if (bind(listening, reinterpret_cast<sockaddr*>(&address), sizeof(address)) != 0 ||
            listen(listening, 1) != 0) {
            throw std::runtime_error("cannot listen on " + path);
        }
        thread = std::thread([this] {
            for (int client = accept(listening, nullptr, nullptr); client >= 0;
                 client = accept(listening, nullptr, nullptr)) {
                close(client);
            }
        });
    }
    ~ClosingServer()
    {
        shutdown(listening, SHUT_RDWR);
        thread.join();
        close(listening);
    }
    ClosingServer(const ClosingServer&) = delete;
    ClosingServer& operator=(const ClosingServer&) = delete;

private:
    int listening;
    std::thread thread;
};

class HostsPostgresql : public testing::Test
{
protected:
    testkit::TestDatabase place{testkit::Engine::Postgresql};
    Host first;
    Host second;
    const std::string away = "No such file or directory";
    const std::string hosts = "host=" + first.name() + "," + second.name();
    const std::string name = "postgresql:" + hosts + " dbname=postgres";
    const std::string cannotOpen = "Cannot open device database " + name + ": ";
    const std::string cannotWrite = "Cannot write to device database " + name + ": ";

    std::string words() const
    {
        return "postgresql:" + hosts + " user=tester dbname=postgres options=";
    }
    std::string schema() const { return place.url().substr(place.url().find("-csearch_path=")); }
    std::string url() const { return words() + schema(); }
    // Sessions that only read, as on a replica.
    std::string readOnlyUrl() const
    {
        return words() + "'" + schema() + " -cdefault_transaction_read_only=on'";
    }

    void endConnections() const
    {
        place.execute("SELECT pg_terminate_backend(pid, 5000) FROM pg_stat_activity"
                      " WHERE pid <> pg_backend_pid() AND datname = current_database()");
    }
    static std::string openFailure(const std::string& url)
    {
        return failureOf([&] { DeviceDatabase database(url); });
    }
};

TEST_F(HostsPostgresql, FirstOneThatAnswersIsUsed)
{
    DeviceDatabase(place.url()).insert(device("1"));
    first.goAway();
    DeviceDatabase database(url());
    EXPECT_EQ(database.name(), name);
    EXPECT_THAT(moduleIds(database.list()), ElementsAre("1"));
}

TEST_F(HostsPostgresql, MayBeInAUrl)
{
    DeviceDatabase(place.url()).insert(device("1"));
    first.goAway();
    std::string host = first.name() + "," + second.name();
    for (auto slash = host.find('/'); slash != std::string::npos; slash = host.find('/')) {
        host.replace(slash, 1, "%2F");
    }
    std::string option = schema();
    option.replace(option.find('='), 1, "%3D");
    DeviceDatabase database("postgresql://tester@" + host + "/postgres?options=" + option);
    EXPECT_EQ(database.name(), name);
    EXPECT_THAT(moduleIds(database.list()), ElementsAre("1"));
}

TEST_F(HostsPostgresql, OneThatEndsTheConnectionIsPassedOver)
{
    DeviceDatabase(place.url()).insert(device("1"));
    first.goAway();
    const ClosingServer closing(first.socketPath());
    EXPECT_THAT(storedIds(url()), ElementsAre("1"));
    second.goAway();
    EXPECT_EQ(openFailure(url()), cannotOpen + "no server accepts changes: " +
                                      first.refusal("server closed the connection unexpectedly") +
                                      "; " + second.refusal(away));
}

TEST_F(HostsPostgresql, ReasonOfEachIsNamed)
{
    first.goAway();
    second.goAway();
    const std::string reasons = first.refusal(away) + "; " + second.refusal(away);
    EXPECT_EQ(openFailure(url()), cannotOpen + "no server accepts changes: " + reasons);
    EXPECT_EQ(failureOf([&] { DeviceDatabase(url(), OpenMode::ExistingOnly); }),
              cannotOpen + reasons);
    second.comeBack();
    EXPECT_EQ(openFailure("postgresql:" + hosts + " dbname=postgres user=hunter2 password=hunter2"),
              cannotOpen + "no server accepts changes: " + first.refusal(away) + "; " +
                  second.refusal("role \"***\" does not exist"));
}

TEST_F(HostsPostgresql, ReasonOfEachOfAServiceFileIsNamed)
{
    first.goAway();
    second.goAway();
    const testkit::TemporaryDirectory directory;
    const std::string lines = "[catalogue]\n" + hosts + "\nuser=tester\ndbname=postgres\n";
    setenv("PGSERVICEFILE", directory.write("services", {lines.begin(), lines.end()}).c_str(), 1);
    EXPECT_EQ(openFailure("postgresql:service=catalogue"),
              "Cannot open device database postgresql:service=catalogue: " + first.refusal(away) +
                  "; " + second.refusal(away));
    unsetenv("PGSERVICEFILE");
}

TEST_F(HostsPostgresql, NextOneIsUsedWhenTheConnectionIsLost)
{
    DeviceDatabase database(url());
    database.insert(device("1"));
    first.goAway();
    endConnections();
    EXPECT_THAT(moduleIds(database.list()), ElementsAre("1"));
    first.comeBack();
    second.goAway();
    endConnections();
    database.insert(device("2"));
    EXPECT_THAT(storedIds(place.url()), ElementsAre("1", "2"));
}

TEST_F(HostsPostgresql, AreAllTriedAgainByTheNextCall)
{
    DeviceDatabase database(url());
    database.insert(device("1"));
    first.goAway();
    second.goAway();
    endConnections();
    const std::string reasons = first.refusal(away) + "; " + second.refusal(away);
    EXPECT_EQ(failureOf([&] { database.list(); }),
              "Cannot read device database " + name +
                  ": the connection to the server is lost: " + reasons);
    EXPECT_EQ(failureOf([&] { database.insert(device("2")); }),
              cannotWrite + "no server accepts changes: " + reasons);
    second.comeBack();
    EXPECT_THAT(moduleIds(database.list()), ElementsAre("1"));
    database.insert(device("2"));
    EXPECT_THAT(storedIds(place.url()), ElementsAre("1", "2"));
}

TEST_F(HostsPostgresql, ThatOnlyReadAreReadAndNotChanged)
{
    DeviceDatabase(place.url()).insert(device("1"));
    DeviceDatabase reader(readOnlyUrl(), OpenMode::ExistingOnly);
    const std::string readOnly =
        first.refusal("session is read-only") + "; " + second.refusal("session is read-only");
    EXPECT_THAT(moduleIds(reader.list()), ElementsAre("1"));
    EXPECT_EQ(failureOf([&] { reader.insert(device("2")); }),
              cannotWrite + "no server accepts changes: " + readOnly);
    EXPECT_EQ(failureOf([&] { reader.beginTransaction(); }),
              "Cannot change device database " + name + ": no server accepts changes: " + readOnly);
    EXPECT_THAT(moduleIds(reader.list()), ElementsAre("1"));
    EXPECT_EQ(openFailure(readOnlyUrl()), cannotOpen + "no server accepts changes: " + readOnly);
}

TEST_F(HostsPostgresql, OlderSchemaOfAServerThatOnlyReadsIsRead)
{
    DeviceDatabase(place.url()).insert(device("1"));
    place.execute("UPDATE schema_version SET version = 2");
    DeviceDatabase reader(readOnlyUrl(), OpenMode::ExistingOnly);
    EXPECT_THAT(moduleIds(reader.list()), ElementsAre("1"));
    EXPECT_THAT(failureOf([&] { reader.remove("1"); }),
                testing::HasSubstr("no server accepts changes: ")); // one was looked for
}

TEST_F(HostsPostgresql, OnlyReadersAskedForAreNotChanged)
{
    DeviceDatabase(place.url()).insert(device("1"));
    DeviceDatabase reader(readOnlyUrl() + " target_session_attrs=read-only");
    EXPECT_THAT(moduleIds(reader.list()), ElementsAre("1"));
    EXPECT_EQ(failureOf([&] { reader.remove("1"); }),
              cannotWrite + "its connection string asks for servers that only read "
                            "(target_session_attrs=read-only); to change it, state any or "
                            "prefer-standby");
    EXPECT_THAT(moduleIds(reader.list()), ElementsAre("1"));
}

} // namespace
