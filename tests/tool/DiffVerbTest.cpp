#include "TemporaryDirectory.h"
#include "ToolProcess.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::StartsWith;
using tooltest::readFile;
using tooltest::runTool;
using tooltest::ToolRun;

const std::string before = std::string(EXAMPLE_MODULES) + "/MX0304.bin";

// The analogue module with another default of parameter 3, at 0x128.
std::string withOtherDefault(const testkit::TemporaryDirectory& directory)
{
    std::string content = readFile(before);
    content[0x129] = 0x1D;
    return directory.write("MX1.bin", {content.begin(), content.end()});
}

TEST(DiffVerb, theSameFileEndsWith0)
{
    const ToolRun run = runTool({"diff", before, before});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_THAT(run.out, StartsWith("a parameter image stored for "));
    EXPECT_THAT(run.out, HasSubstr(": yes, because every parameter keeps its place"));
}

TEST(DiffVerb, aDifferenceEndsWith1)
{
    const testkit::TemporaryDirectory directory;
    const std::string after = withOtherDefault(directory);
    const ToolRun run = runTool({"diff", before, after});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(
        run.out,
        "compatible  parameter 3 \"Upper limit\" of channel 0: default 9500 becomes 9501\n"
        "a parameter image stored for " +
            before + " stays valid for " + after +
            ": yes, because every parameter keeps its place and still accepts its old values\n");
}

TEST(DiffVerb, jsonHoldsDifferencesAndVerdict)
{
    const ToolRun run =
        runTool({"diff", "--format", "json", std::string(EXAMPLE_MODULES) + "/MX0108.bin",
                 std::string(EXAMPLE_MODULES) + "/MX0116.bin"});
    EXPECT_EQ(run.exitCode, 1);
    const json report = json::parse(run.out);
    EXPECT_EQ(report["schema"]["name"], "mxtool.diff");
    EXPECT_EQ(report["same"], false);
    EXPECT_EQ(report["parameter_image_stays_valid"], false);
    EXPECT_EQ(report["differences"][0]["effect"], "breaking");
    EXPECT_EQ(report["differences"][0]["breaks_parameter_image"], true);
    EXPECT_EQ(report["because"], "module identifier 5a010108 becomes 5a010116, and 9 more");
}

TEST(DiffVerb, refusesAFileWithoutFraming)
{
    const std::string cut = std::string(EXAMPLE_MODULES) + "/MX9999.bin";
    const ToolRun run = runTool({"diff", before, cut});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_EQ(run.out, "");
    EXPECT_THAT(run.err,
                StartsWith(cut + ":0x000000: error: Parser::parse(): Truncated mx buffer"));
}

TEST(DiffVerb, readsOneFileFromStandardInput)
{
    tooltest::ToolSetup setup;
    setup.standardInput = before;
    EXPECT_EQ(runTool({"diff", "-", before}, setup).exitCode, 0);
    EXPECT_EQ(runTool({"diff", "-", "-"}, setup).exitCode, 2);
}

} // namespace
