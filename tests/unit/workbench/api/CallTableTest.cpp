#include "api/ApiFixture.h"

#include "api/CallTable.h"

#include <gmock/gmock.h>

#include <fstream>

namespace {

std::vector<std::string> documentedCalls()
{
    std::vector<std::string> calls;
    std::ifstream document(API_DOCUMENT);
    const std::string before = "### `";
    for (std::string line; std::getline(document, line);) {
        if (line.compare(0, before.size(), before) == 0) {
            calls.push_back(line.substr(before.size(), line.size() - before.size() - 1));
        }
    }
    return calls;
}

TEST(CallTable, IsTheDocument)
{
    std::vector<std::string> calls;
    for (const auto& entry : workbench::callTable()) {
        calls.push_back(std::string(entry.method) + " " + entry.path);
    }
    EXPECT_EQ(calls, documentedCalls());
}

class CallTableOfApi : public ApiTest
{};

TEST_F(CallTableOfApi, RefusesOtherPathsAndMethods)
{
    open("");
    EXPECT_EQ(failure("GET", "/starts", nullptr, 404)[0], "There is no call GET /api/v1/starts");
    const auto response = answer("DELETE", "/file");
    EXPECT_EQ(response.status, 405U);
    EXPECT_EQ(response.allowed, "GET, PUT");
}

TEST_F(CallTableOfApi, NeedsACouplerForOnlineCalls)
{
    open("");
    for (const auto& entry : workbench::callTable()) {
        const std::string path = entry.path;
        if (path.find("/online") != std::string::npos) {
            const auto response = answer(entry.method, path.substr(std::string("/api/v1").size()),
                                         R"({"text": "", "id": 1})");
            EXPECT_EQ(response.status, 404U) << path;
        }
    }
}

} // namespace
