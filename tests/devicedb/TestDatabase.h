#pragma once

#include "TemporaryDirectory.h"
#include "TestServer.h"

#include <Poco/Data/Session.h>

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace testkit {

enum class Engine
{
    Sqlite,
    Postgresql, ///< The server that tests/devicedb/with-postgresql runs.
    Pooled      ///< The same through a pooler, which changes the connection with each transaction.
};

/// A place for one new device database of an engine, empty; it goes with the object, or is used
/// again.
class TestDatabase
{
public:
    explicit TestDatabase(Engine engine);
    ~TestDatabase();
    TestDatabase(const TestDatabase&) = delete;
    TestDatabase& operator=(const TestDatabase&) = delete;

    Engine engine() const { return kind; }

    /// Returns the URL, for the library.
    const std::string& url() const { return databaseUrl; }

    /// Returns how messages name the database.
    std::string name() const;

    /// Connects with the driver alone, as a program other than the library would, not through the
    /// pooler.
    Poco::Data::Session otherProgram() const;

    /// Runs `statement` as another program.
    void execute(const std::string& statement) const;

    /// Turns the database into one of schema version 2 or 3, as its library left it.
    void becomeVersion(int version) const;

    /// Makes the engine refuse the record of module "bad".
    void refuseModuleBad() const;

    /// Returns what the engine says then.
    std::string refusal() const;

private:
    Engine kind;
    std::optional<TemporaryDirectory> directory;
    std::string schema;         // of Engine::Postgresql
    std::string pooledDatabase; // of Engine::Pooled
    std::string databaseUrl;
};

/// A test that runs on every engine, each time with an empty database.
class OnEachEngine : public testing::TestWithParam<Engine>
{
protected:
    TestDatabase place{GetParam()};
    const std::string& url = place.url();
};

/// Names the tests of an engine; the build selects them by it.
inline std::string engineName(const testing::TestParamInfo<Engine>& info)
{
    switch (info.param) {
    case Engine::Sqlite:
        return "Sqlite";
    case Engine::Postgresql:
        return "Postgresql";
    case Engine::Pooled:
        break;
    }
    return "PostgresqlPooled";
}

} // namespace testkit

/// Runs the tests of a fixture derived from `OnEachEngine`.
#define RUN_ON_EACH_ENGINE(fixture)                                                                \
    INSTANTIATE_TEST_SUITE_P(On, fixture,                                                          \
                             testing::Values(testkit::Engine::Sqlite, testkit::Engine::Postgresql, \
                                             testkit::Engine::Pooled),                             \
                             testkit::engineName)

/// The same, without SQLite.
#define RUN_ON_EACH_SERVER(fixture)                                                                \
    INSTANTIATE_TEST_SUITE_P(                                                                      \
        On, fixture, testing::Values(testkit::Engine::Postgresql, testkit::Engine::Pooled),        \
        testkit::engineName)
