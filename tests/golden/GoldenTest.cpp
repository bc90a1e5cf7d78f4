// Compares what mxtool prints with the files in expected/. Each line of calls.txt is one call:
// the name of its file, then the arguments. The argument DB is replaced by a database of the
// example modules; "< FILE" gives a file of input/ as standard input. scripts/update-golden writes
// the files anew; the change is reviewed as a diff.

#include "TemporaryDirectory.h"
#include "ToolProcess.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace {

using tooltest::readFile;
using tooltest::runTool;
using tooltest::words;

const std::filesystem::path goldenDirectory =
    std::filesystem::path(PROJECT_ROOT) / "tests" / "golden";

std::vector<std::vector<std::string>> calls()
{
    std::vector<std::vector<std::string>> all;
    std::ifstream file(goldenDirectory / "calls.txt");
    for (std::string line; std::getline(file, line);) {
        if (!line.empty()) {
            all.push_back(words(line));
        }
    }
    return all;
}

std::string outputOf(const std::vector<std::string>& call)
{
    const testkit::TemporaryDirectory directory;
    std::vector<std::string> arguments(call.begin() + 1, call.end());
    const auto database = std::find(arguments.begin(), arguments.end(), "DB");
    if (database != arguments.end()) {
        *database = "sqlite:" + directory.path("devices.sqlite");
        runTool({"populate", "examples/modules", "--db", *database});
    }
    tooltest::ToolSetup setup;
    setup.environment["SOURCE_DATE_EPOCH"] = "0"; // whatever the caller's is
    if (arguments.size() > 2 && arguments[arguments.size() - 2] == "<") {
        setup.standardInput = (goldenDirectory / "input" / arguments.back()).string();
        arguments.resize(arguments.size() - 2);
    }
    return runTool(arguments, setup).out;
}

class Golden : public testing::TestWithParam<std::vector<std::string>>
{};

TEST_P(Golden, outputIsAsRecorded)
{
    const std::filesystem::path expected = goldenDirectory / "expected" / GetParam().front();
    const std::string output = outputOf(GetParam());
    if (std::getenv("UPDATE_GOLDEN") != nullptr) {
        std::ofstream(expected, std::ios::binary) << output;
    }
    ASSERT_TRUE(std::filesystem::exists(expected)) << expected;
    EXPECT_EQ(output, readFile(expected.string()));
}

INSTANTIATE_TEST_SUITE_P(Calls, Golden, testing::ValuesIn(calls()));

TEST(GoldenFiles, eachIsNamedByACall)
{
    std::vector<std::string> named;
    for (const auto& call : calls()) {
        named.push_back(call.front());
    }
    for (const auto& entry : std::filesystem::directory_iterator(goldenDirectory / "expected")) {
        EXPECT_THAT(named, testing::Contains(entry.path().filename().string()));
    }
}

} // namespace
