#include "TestServer.h"

#include <cstdlib>
#include <stdexcept>

namespace testkit {

namespace {

std::string wordsOf(const char* variable)
{
    const char* const words = std::getenv(variable);
    if (words == nullptr) {
        throw std::runtime_error(
            "No PostgreSQL server: run tests/devicedb/with-postgresql PROGRAM");
    }
    return words;
}

} // namespace

std::string testServer()
{
    return wordsOf("TEST_POSTGRESQL");
}

std::string testPooler()
{
    return wordsOf("TEST_POSTGRESQL_POOLED");
}

} // namespace testkit
