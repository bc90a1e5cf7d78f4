// Physical values through mxtool config as a process: exact in both directions.

#include "TemporaryDirectory.h"
#include "ToolProcess.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <fstream>

namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using tooltest::runTool;
using tooltest::ToolRun;

class PhysicalValues : public testing::Test
{
protected:
    std::string file(const std::string& name, const std::string& content) const
    {
        std::ofstream(directory.path(name), std::ios::binary) << content;
        return directory.path(name);
    }

    // Builds a module with these parameters; findings do not prevent it.
    std::string module(const std::string& parameters, const std::string& more = "") const
    {
        const std::string text = "module: {type: 1, id: 0x12345678}\n"
                                 "catalogue: {BrandLabelName: L, BrandVersion: V, BrandId: I,\n"
                                 "            BrandSerialNumber: S, ProductVersion: P,\n"
                                 "            BrandHwRevision: H, BrandOrderCode: O}\n"
                                 "component: {Component: C, Creator: K}\n"
                                 "parameters:\n" +
                                 parameters + more;
        const std::string built = directory.path("module.bin");
        const ToolRun run = runTool({"build", file("module.yaml", text), "-o", built, "--force"});
        EXPECT_EQ(run.exitCode, 0) << run.err;
        return built;
    }

    static ToolRun set(const std::string& path, const std::string& assignment)
    {
        return runTool({"config", path, "--set", assignment});
    }

    testkit::TemporaryDirectory directory;
};

// The value of "#0" of a JSON configuration after reading it back.
std::string bytesGivenBack(const ToolRun& decoded, const std::string& path,
                           const testkit::TemporaryDirectory& directory)
{
    std::ofstream(directory.path("back.json")) << decoded.out;
    const ToolRun run =
        runTool({"config", path, "--values", directory.path("back.json"), "--format", "json"});
    EXPECT_EQ(run.exitCode, 0) << run.err;
    EXPECT_THAT(run.err, Not(HasSubstr("nearest value")));
    return json::parse(run.out).at("bytes");
}

TEST_F(PhysicalValues, aUnitThatIsADigitIsNotCutOff)
{
    const std::string path =
        module("  - {name: Limit, at: 0, type: UInt16, default: 7, unit: \"1\"}\n");
    EXPECT_THAT(set(path, "Limit=51").out, HasSubstr("0000  00 33\n"));
    EXPECT_THAT(set(path, "Limit=51 1").out, HasSubstr("0000  00 33\n"));
    const ToolRun decoded = runTool({"config", path, "--decode", "0033", "--format", "json"});
    EXPECT_EQ(bytesGivenBack(decoded, path, directory), "00 33");
}

TEST_F(PhysicalValues, everyValueOfSixtyFourBitsIsItself)
{
    const std::string path =
        module("  - {name: Q, at: 0, type: UInt64, default: 0, conversion: one}\n",
               "conversions:\n  one: {factor: 1.0}\n");
    EXPECT_THAT(set(path, "Q=1234567890123456789").out,
                HasSubstr("0000  11 22 10 f4 7d e9 81 15\n"));
    EXPECT_THAT(set(path, "Q=1234567890123456789").out, HasSubstr("  1234567890123456789  "));
    EXPECT_THAT(set(path, "Q=1234567890123456789").err, IsEmpty());
    EXPECT_THAT(set(path, "Q=18446744073709551615").out,
                HasSubstr("0000  ff ff ff ff ff ff ff ff\n"));
    const ToolRun beyond = set(path, "Q=18446744073709551616");
    EXPECT_EQ(beyond.exitCode, 2);
    EXPECT_THAT(beyond.err, HasSubstr("expected a number, 0 to 18446744073709551615"));
    const ToolRun decoded =
        runTool({"config", path, "--decode", "112210f47de98115", "--format", "json"});
    EXPECT_EQ(bytesGivenBack(decoded, path, directory), "11 22 10 f4 7d e9 81 15");
}

TEST_F(PhysicalValues, theRangeIsOneOfRawValues)
{
    const std::string path = module("  - {name: Q, at: 0, type: UInt32, default: 0, "
                                    "range: [0, 16777219], conversion: one}\n",
                                    "conversions:\n  one: {factor: 1.0}\n");
    const ToolRun refused = set(path, "Q=16777220");
    EXPECT_EQ(refused.exitCode, 2);
    EXPECT_THAT(refused.err, HasSubstr("expected a number, 0 to 16777219"));
    EXPECT_THAT(set(path, "Q=16777219").out, HasSubstr("0000  01 00 00 03\n"));
    EXPECT_THAT(runTool({"config", path, "--set", "Q=16777220", "--force"}).out,
                HasSubstr("0000  01 00 00 04\n"));
}

TEST_F(PhysicalValues, aValueThatTheModuleHoldsIsNotCalledRounded)
{
    const std::string path = "examples/modules/MX0304.bin";
    for (const char* value : {"9.9", "9.502", "-9.998", "0.001", "9.900001 V", "1e1"}) {
        const ToolRun run = set(path, "AI 1/Upper limit=" + std::string(value));
        EXPECT_EQ(run.exitCode, 0) << run.err;
        if (std::string(value) != "9.900001 V") {
            EXPECT_THAT(run.err, IsEmpty()) << value;
        }
    }
    const ToolRun run = set(path, "AI 1/Upper limit=9.9004");
    EXPECT_THAT(run.err, HasSubstr("is set to 9.9, the nearest value"));
    EXPECT_THAT(run.out, HasSubstr("  9.9 V  "));
}

TEST_F(PhysicalValues, jsonHasTheDigitsBesideTheLibrarysText)
{
    const ToolRun run = runTool({"config", "examples/modules/MX0304.bin", "--set",
                                 "AI 1/Upper limit=9.9", "--format", "json"});
    const json configuration = json::parse(run.out);
    for (const json& parameter : configuration.at("parameters")) {
        if (parameter.at("name") == "Upper limit" && parameter.at("channel") == 0) {
            EXPECT_EQ(parameter.at("value"), "9.900001");
            EXPECT_EQ(parameter.at("digits"), "9.9");
            EXPECT_EQ(parameter.at("shown"), "9.9 V");
            EXPECT_EQ(parameter.at("default"), "9.500000");
            EXPECT_EQ(parameter.at("default_digits"), "9.5");
            return;
        }
    }
    FAIL() << run.out;
}

// Q is 0x112210f47de98115; 16777219 (0x01000003) is not a binary32, its neighbours are 16777218 and
// 16777220.
TEST_F(PhysicalValues, everyFormThatIsReadBackGivesTheSameImage)
{
    const std::string path = module("  - {name: Q, at: 0, type: UInt64, default: 0, "
                                    "conversion: one}\n"
                                    "  - {name: R, at: 8, type: UInt32, default: 0, "
                                    "range: [0, 16777219], conversion: one}\n",
                                    "conversions:\n  one: {factor: 1.0}\n");
    const std::string image("\x11\x22\x10\xF4\x7D\xE9\x81\x15\x01\0\0\x03", 12);
    for (const std::string fieldbus : {"raw", "modbus"}) {
        for (const char* name : {"v.yaml", "v.csv", "v.json"}) {
            const std::string values = directory.path(fieldbus + name);
            runTool({"config", path, "--set", "Q=1234567890123456789", "--set", "R=16777219",
                     "--fieldbus", fieldbus, "-o", values});
            const ToolRun run = runTool({"config", path, "--values", values, "--format", "binary"});
            EXPECT_EQ(run.err, "") << values;
            EXPECT_EQ(run.out, image) << values;
        }
    }
}

// As binary32 both are 16777216.
TEST_F(PhysicalValues, aComparisonHasTheDigitsBesideTheLibrarysText)
{
    const std::string path =
        module("  - {name: R, at: 0, type: UInt32, default: 0, conversion: one}\n",
               "conversions:\n  one: {factor: 1.0}\n");
    const ToolRun run = runTool(
        {"config", path, "--set", "R=16777217", "--compare", "01000000", "--format", "json"});
    EXPECT_EQ(run.exitCode, 1) << run.err;
    const json deviation = json::parse(run.out).at("deviations").at(0);
    EXPECT_EQ(deviation.at("wanted"), "16777216.000000");
    EXPECT_EQ(deviation.at("read"), "16777216.000000");
    EXPECT_EQ(deviation.at("wanted_digits"), "16777217");
    EXPECT_EQ(deviation.at("read_digits"), "16777216");
}

TEST_F(PhysicalValues, whatLiesOutsideTheImageIsNotGivenBack)
{
    const std::string path = module("  - {name: Near, at: 0, type: UInt8, default: 3}\n"
                                    "  - {name: Far, at: 9, type: UInt8, conversion: half}\n",
                                    "conversions:\n  half: {factor: 0.5}\n"
                                    "parameterBlock: {bytes: \"03\"}\n");
    const ToolRun decoded = runTool({"config", path, "--decode", "05", "--format", "json"});
    EXPECT_EQ(json::parse(decoded.out).at("values").size(), 1U) << decoded.out;
    EXPECT_EQ(bytesGivenBack(decoded, path, directory), "05");
}

TEST_F(PhysicalValues, aBitFieldOutsideItsByteIsInNoRegister)
{
    const std::string path = module("  - {name: Flags, at: 0, type: Byte, bits: 8, bit: 4}\n",
                                    "parameterBlock: {bytes: \"01\"}\n");
    const ToolRun run = runTool({"config", path, "--fieldbus", "modbus"});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_THAT(run.err, HasSubstr("\"Flags\" of the module"));
    EXPECT_THAT(run.err, HasSubstr("its 8 bits from bit 4 leave their byte, bits 0 to 7"));
    EXPECT_EQ(run.out, "");
    const ToolRun decoded = runTool({"config", path, "--fieldbus", "modbus", "--decode", "0100"});
    EXPECT_EQ(decoded.exitCode, 3);
    EXPECT_THAT(decoded.err,
                HasSubstr("expected none: its 8 bits from bit 4 leave their byte, bits 0 to 7"));
}

} // namespace
