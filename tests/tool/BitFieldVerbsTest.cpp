// One bit field through every verb: all verbs agree about its bits.

#include "TemporaryDirectory.h"
#include "TestDatabase.h"
#include "ToolProcess.h"

#include <Poco/Data/Statement.h>
#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <fstream>
#include <tuple>

namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using tooltest::runTool;
using tooltest::ToolRun;

constexpr const char* example = "examples/modules/MX0701.bin";

// The example whose parameter "Stop bits" is bit 4 of byte 1; 0 is the option "1", 1 is "2".
class BitFieldVerbs : public testing::Test
{
protected:
    // Writes it with this bit field in the record of the parameter, which has number 3 and name
    // 0xB1.
    std::string moduleWith(char bitLength, char bitOffset) const
    {
        std::string bytes = tooltest::readFile(std::string(PROJECT_BUILD "/") + example);
        const std::size_t record = bytes.find(std::string("\x03\0\xB1", 3));
        bytes.at(record + 26) = bitLength;
        bytes.at(record + 27) = bitOffset;
        std::ofstream(directory.path("MX0701.bin"), std::ios::binary) << bytes;
        return directory.path("MX0701.bin");
    }

    // What the verb shows in JSON of the parameter.
    static json stopBits(std::vector<std::string> call)
    {
        call.insert(call.end(), {"--format", "json"});
        const ToolRun run = runTool(call);
        EXPECT_EQ(run.exitCode, 0) << run.err;
        const json parameters = json::parse(run.out).at("parameters");
        return *std::find_if(parameters.begin(), parameters.end(),
                             [](const json& one) { return one.at("name") == "Stop bits"; });
    }

    // The width in the catalogue that the directory of the module gives.
    int widthInCatalogue() const
    {
        const testkit::TestDatabase database(testkit::Engine::Sqlite);
        const ToolRun run = runTool({"populate", directory.path(""), "--db", database.url()});
        EXPECT_EQ(run.exitCode, 0) << run.err;
        int width = -1;
        database.otherProgram() << "SELECT width_bits FROM parameters WHERE name = 'Stop bits'",
            Poco::Data::Keywords::into(width), Poco::Data::Keywords::now;
        return width;
    }

    testkit::TemporaryDirectory directory;
};

TEST_F(BitFieldVerbs, withoutALengthGoesUpToBit7)
{
    const std::string path = moduleWith(0, 4);
    const json shown = stopBits({"show", path});
    EXPECT_EQ(shown.at("value"), "0");
    EXPECT_EQ(shown.at("shown"), "1");
    EXPECT_EQ(shown.at("place").at("bit_offset"), 4);
    EXPECT_EQ(shown.at("place").at("bit_length"), 4);
    EXPECT_EQ(widthInCatalogue(), 4);
    EXPECT_THAT(runTool({"check", path}).out, Not(HasSubstr("bit-field")));
    EXPECT_THAT(runTool({"explain", path}).out,
                HasSubstr("default of parameter 3 \"Stop bits\": 0 (bits 4 to 7)"));
    EXPECT_THAT(runTool({"diff", example, path}).out,
                HasSubstr("becomes byte 1, 4 bits from bit 4"));
}

// Byte 1 has 1 of "Parity" in bits 0 and 1.
TEST_F(BitFieldVerbs, withoutALengthHasTheValueOfItsRegister)
{
    const std::string path = moduleWith(0, 4);
    for (const auto& [setting, text, option, image] :
         {std::tuple("Stop bits=#0", "1", "00 00", "01"),
          std::tuple("Stop bits=#1", "2", "01 00", "11")}) {
        const std::vector<std::string> call = {"config", path, "--set", setting};
        const json inImage = stopBits(call);
        EXPECT_EQ(inImage.at("shown"), text);
        EXPECT_EQ(inImage.at("hex"), image);
        auto ofRegisters = call;
        ofRegisters.insert(ofRegisters.end(), {"--fieldbus", "modbus"});
        const json inRegister = stopBits(ofRegisters);
        EXPECT_EQ(inRegister.at("shown"), text);
        EXPECT_EQ(inRegister.at("hex"), option);
        ofRegisters.insert(ofRegisters.end(), {"-o", directory.path("registers.json")});
        EXPECT_EQ(runTool(ofRegisters).exitCode, 0);
        EXPECT_EQ(stopBits({"config", path, "--fieldbus", "modbus", "--decode",
                            directory.path("registers.json")})
                      .at("shown"),
                  text);
    }
}

TEST_F(BitFieldVerbs, withoutALengthIsComparedWithItsOptionsInFull)
{
    const std::string path = moduleWith(0, 4);
    const std::string image = "03 31 00 fa ee dd ef 0b 82 16 7e eb"; // 3 in bits 4 to 7
    EXPECT_EQ(stopBits({"config", path, "--decode", image}).at("shown"), "3 (not in the list)");
    const ToolRun forced = runTool({"config", path, "--set", "Stop bits=16", "--force"});
    EXPECT_EQ(forced.exitCode, 2);
    EXPECT_THAT(forced.err, HasSubstr("expected 0 to 15, all that the parameter can hold"));
}

struct WrongPlace
{
    char bitLength;
    char bitOffset;
    const char* fault;
};

class BitFieldOutside : public BitFieldVerbs, public testing::WithParamInterface<WrongPlace>
{};

INSTANTIATE_TEST_SUITE_P(
    EachWay, BitFieldOutside,
    testing::Values(WrongPlace{3, 6, "its 3 bits from bit 6 leave their byte, bits 0 to 7"},
                    WrongPlace{9, 0, "its 9 bits from bit 0 leave their byte, bits 0 to 7"},
                    WrongPlace{0, 9, "its bit offset is 9, expected 0 to 7"}));

TEST_P(BitFieldOutside, hasNoValueForAnyVerb)
{
    const std::string path = moduleWith(GetParam().bitLength, GetParam().bitOffset);
    const std::string fault = GetParam().fault;
    EXPECT_EQ(stopBits({"show", path}).at("value"), "");
    EXPECT_EQ(widthInCatalogue(), 0);
    EXPECT_THAT(runTool({"check", path}).out, HasSubstr("[bit-field]"));
    EXPECT_THAT(runTool({"config", path}).err, HasSubstr("has no value: " + fault));
    const ToolRun set = runTool({"config", path, "--set", "Stop bits=2"});
    EXPECT_EQ(set.exitCode, 2);
    EXPECT_THAT(set.err, HasSubstr("is not accepted: the parameter has no value: " + fault));
    const ToolRun registers = runTool({"config", path, "--fieldbus", "modbus"});
    EXPECT_EQ(registers.exitCode, 3);
    EXPECT_THAT(registers.err, HasSubstr(fault));
    EXPECT_THAT(registers.out, IsEmpty());
}

} // namespace
