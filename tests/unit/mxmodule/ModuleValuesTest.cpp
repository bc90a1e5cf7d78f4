// Values set and read through mxmodule::Module. The registers of MX0304: Mains suppression, then
// per channel c the position of the sensor's option, 0x251c + c, 0xdae4 - c, 0x3c + c, the wire
// break check 1 and the filter depth c, each in a register of its own with the value's bytes first.
#include "ExampleModules.h"
#include "MxBuffer.h"
#include "ShownFinding.h"

#include <mxmodule/Module.h>
#include <mxmodule/WantedValues.h>

#include <gmock/gmock.h>

#include <fstream>
#include <sstream>

namespace {

using mxmodule::Assignment;
using mxmodule::ComposeOptions;
using mxmodule::Composition;
using mxmodule::Fieldbus;
using mxmodule::Finding;
using mxmodule::Module;
using mxmodule::Origin;
using mxmodule::Severity;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const std::vector<std::uint16_t> analogueRegisters = {
    0x3200,                                          //
    0x0000, 0x251C, 0xDAE4, 0x003C, 0x0100, 0x0000,  //
    0x0100, 0x251D, 0xDAE3, 0x003D, 0x0100, 0x0100,  //
    0x0200, 0x251E, 0xDAE2, 0x003E, 0x0100, 0x0200,  //
    0x0400, 0x251F, 0xDAE1, 0x003F, 0x0100, 0x0300}; // the option "off" is the fifth

std::vector<char> bytesOf(const std::vector<std::uint16_t>& registers)
{
    std::vector<char> bytes;
    for (const std::uint16_t one : registers) {
        bytes.push_back(static_cast<char>(one >> 8U));
        bytes.push_back(static_cast<char>(one & 0xFFU));
    }
    return bytes;
}

class ModuleValues : public testing::Test
{
protected:
    Module module = exampleModule("MX0304.bin");
};

TEST_F(ModuleValues, areWrittenIntoImageAndRegisters)
{
    // -9.4 V is -9400, 0xdb48; 4-20 mA has the number 3 and is the fourth option.
    const Composition composition =
        module.compose({{"AI 1/Lower limit", "-9.4 V"}, {"AI 4/Signal range", "4-20 mA"}});
    EXPECT_TRUE(composition.ok());
    EXPECT_THAT(composition.findings, IsEmpty());
    std::vector<char> image = module.defaultImage();
    image[4] = '\xDB';
    image[5] = '\x48';
    image[25] = 3;
    EXPECT_EQ(composition.image, image);
    auto registers = analogueRegisters;
    registers[3] = 0xDB48;
    registers[19] = 0x0300;
    EXPECT_EQ(composition.registers, registers);
    EXPECT_FALSE(composition.noRegisters);
    EXPECT_EQ(module.registers(image), registers);
}

TEST_F(ModuleValues, areRefusedTogetherWithTheirPlaces)
{
    Assignment ofFile{"AI 1/Signal range", "4-20mA", "v.yaml:3:7", Origin::Input, ""};
    const Composition composition = module.compose(
        {ofFile, {"AI 1/Upper limit", "11", "--set AI 1/Upper limit=11"}, {"AI 1/Gain", "1"}});
    EXPECT_FALSE(composition.ok());
    EXPECT_THAT(composition.image, IsEmpty());
    EXPECT_THAT(composition.registers, IsEmpty());
    ASSERT_EQ(composition.findings.size(), 3U);
    const Finding& option = composition.findings[0];
    EXPECT_EQ(option.place, "v.yaml:3:7");
    EXPECT_EQ(option.origin, Origin::Input);
    EXPECT_THAT(option.text, HasSubstr("value \"4-20mA\" is not accepted: no such option"));
    EXPECT_THAT(option.accepted, ElementsAre("±10 V", "0-10 V", "0-20 mA", "4-20 mA", "off"));
    const Finding& range = composition.findings[1];
    EXPECT_EQ(range.place, "--set AI 1/Upper limit=11");
    EXPECT_EQ(range.origin, Origin::Request);
    EXPECT_THAT(range.accepted, ElementsAre("-10 to 10 V"));
    const Finding& name = composition.findings[2];
    EXPECT_EQ(name.place, "AI 1/Gain"); // without a place its name
    EXPECT_THAT(name.text, HasSubstr("No parameter is called \"AI 1/Gain\""));
}

TEST_F(ModuleValues, listTheNamesThatAreAccepted)
{
    const auto accepted = [this](const std::string& name) {
        return module.compose({{name, "1"}}).findings.front().accepted;
    };
    EXPECT_THAT(accepted("Hysteresis"), ElementsAre("AI 1/Hysteresis", "AI 2/Hysteresis",
                                                    "AI 3/Hysteresis", "AI 4/Hysteresis"));
    EXPECT_THAT(accepted("Mains supression"), ElementsAre("Mains suppression"));
    EXPECT_THAT(accepted("19"), ElementsAre("#19"));
    EXPECT_THAT(accepted("#1").size(), 25U);
    EXPECT_THAT(accepted("Wavelength of light"), IsEmpty());
}

TEST_F(ModuleValues, mayBeForced)
{
    ComposeOptions options;
    options.check = mxmodule::ValueCheck::NumberOnly;
    const Composition composition = module.compose({{"AI 1/Signal range", "77"}}, options);
    EXPECT_TRUE(composition.ok());
    EXPECT_EQ(composition.image[1], 77);
    EXPECT_EQ(composition.findings.front().severity, Severity::Warning);
    // 77 is no option: the registers hold positions of options.
    EXPECT_THAT(composition.registers, IsEmpty());
    ASSERT_TRUE(composition.noRegisters);
    EXPECT_THAT(composition.noRegisters->text, HasSubstr("its value 77 is none of its options"));
    EXPECT_THROW(module.registers(composition.image), mxmodule::Failure);
    // The image is one of the module: its file says what has no register.
    try {
        module.configuration(composition.image, Fieldbus::Modbus, "here");
        ADD_FAILURE() << "accepted";
    } catch (const mxmodule::Failure& failure) {
        EXPECT_EQ(failure.reason().place, module.name());
    }
}

TEST_F(ModuleValues, areWrittenIntoTheGivenImage)
{
    ComposeOptions options;
    options.image = module.defaultImage();
    options.image->at(32) = 0; // the wire break check and filter depth of AI 4
    const Composition composition = module.compose({{"AI 4/Filter depth", "7"}}, options);
    EXPECT_EQ(composition.image[32], 0x0E);
    EXPECT_EQ(composition.image[1], 0);
}

TEST_F(ModuleValues, needAnImageOfTheRightSize)
{
    ComposeOptions options;
    options.image = std::vector<char>(32);
    options.imagePlace = "image.bin";
    const Composition composition = module.compose({}, options);
    EXPECT_FALSE(composition.ok());
    ASSERT_EQ(composition.findings.size(), 1U);
    EXPECT_EQ(shown(composition.findings[0]), "image.bin: error: Found 32 bytes, expected the 33 "
                                              "bytes of the module's parameter image\n");
    EXPECT_THROW(module.registers({}), mxmodule::Failure);
    EXPECT_THROW(module.configuration({}, Fieldbus::Raw), mxmodule::Failure);
}

TEST_F(ModuleValues, areDecoded)
{
    const auto raw = module.decode(module.defaultImage(), Fieldbus::Raw);
    EXPECT_EQ(raw.parameters()[14].shown, "9.502 V");
    EXPECT_THAT(raw.registers(), IsEmpty());
    const auto modbus = module.decode(bytesOf(analogueRegisters), Fieldbus::Modbus);
    EXPECT_EQ(modbus.image(), module.defaultImage());
    EXPECT_EQ(modbus.registers(), analogueRegisters);
    EXPECT_EQ(modbus.bytes(), bytesOf(analogueRegisters));
    EXPECT_FALSE(modbus.isChanged(0));
    EXPECT_THROW(static_cast<void>(modbus.isChanged(25)), std::out_of_range);
    auto changed = analogueRegisters;
    changed[0] = 0x3C00; // 60 Hz
    const auto other = module.decode(bytesOf(changed), Fieldbus::Modbus);
    EXPECT_TRUE(other.isChanged(0));
    EXPECT_EQ(other.parameters()[0].shown, "60 Hz");
    EXPECT_EQ(other.defaults()[0].shown, "50 Hz");
    EXPECT_EQ(other.places()[1].parameter, 1U);
    EXPECT_EQ(other.places()[1].begin, 2U);
    EXPECT_EQ(other.places()[1].size, 2U);
}

TEST_F(ModuleValues, ofOtherBytesAreNotDecoded)
{
    const auto failureOf = [this](const std::vector<char>& bytes, Fieldbus fieldbus) {
        try {
            module.decode(bytes, fieldbus, "here");
        } catch (const mxmodule::Failure& failure) {
            return shown(failure.reason());
        }
        return std::string("accepted");
    };
    EXPECT_EQ(failureOf(bytesOf(analogueRegisters), Fieldbus::Raw),
              "here: error: Found 50 bytes, expected the 33 bytes of the module's parameter image\n"
              "hint: they may be the module's Modbus registers\n");
    auto wrong = analogueRegisters;
    wrong[1] = 0x0500;
    EXPECT_THAT(
        failureOf(bytesOf(wrong), Fieldbus::Modbus),
        HasSubstr("here: error: parameter \"Signal range\" of channel 0 AI 1 (#20, byte 1): "
                  "found 05 00 in byte 2 of the registers, expected 00 00 to 04 00"));
}

TEST_F(ModuleValues, areComparedWithThoseOfTheSameKind)
{
    const auto wanted = module.defaults(Fieldbus::Raw);
    auto image = module.defaultImage();
    image[0] = 60;
    const mxmodule::Comparison comparison(wanted, module.decode(image, Fieldbus::Raw), "read");
    EXPECT_FALSE(comparison.isSame());
    ASSERT_EQ(comparison.deviations().size(), 1U);
    EXPECT_EQ(comparison.deviations()[0].parameter, 0U);
    const auto refusal = [&wanted](const mxmodule::Configuration& read) {
        try {
            const mxmodule::Comparison refused(wanted, read, "read");
        } catch (const mxmodule::Failure& failure) {
            return shown(failure.reason());
        }
        return std::string("accepted");
    };
    EXPECT_EQ(refusal(module.defaults(Fieldbus::Modbus)),
              "read: error: Found a configuration of kv38.5a030304 with 25 parameters in 50 bytes "
              "of registers, expected one of kv38.5a030304 with 25 parameters in 33 bytes\n");
    EXPECT_THAT(refusal(exampleModule("MX0701.bin").defaults(Fieldbus::Raw)),
                HasSubstr("a configuration of kv38.5a070701"));
}

TEST_F(ModuleValues, haveAChannelMap)
{
    const auto map = exampleModule("MX0602.bin").at({10, 20}).channelMap();
    EXPECT_EQ(map.input().firstByte, 10U);
    EXPECT_EQ(map.input().size, 22U);
    EXPECT_EQ(map.output().firstByte, 20U);
    EXPECT_EQ(map.output().size, 10U);
    ASSERT_FALSE(map.input().free.empty());
    // Bit 0 of byte 10 is "Gate 1 open", "State 1" its next byte's bits 0 to 2.
    EXPECT_EQ(map.channels()[0].symbol, "IX10_0");
    EXPECT_EQ(map.channels()[0].firstBit, 80U);
    EXPECT_EQ(map.channels()[0].bits, 1U);
    EXPECT_EQ(map.withoutSymbol().size(), 2U);
    EXPECT_THAT(map.svg(), HasSubstr("<svg"));
}

TEST(ModuleWithoutParameters, hasAnEmptyImage)
{
    const Module module = Module::fromBytes(testkit::minimalModule().chars(), "a.bin");
    EXPECT_THAT(module.defaultImage(), IsEmpty());
    EXPECT_THAT(module.parameters(), IsEmpty());
    const Composition composition = module.compose({});
    EXPECT_TRUE(composition.ok());
    EXPECT_THAT(composition.image, IsEmpty());
    EXPECT_THAT(composition.registers, IsEmpty());
    EXPECT_FALSE(composition.noRegisters);
    EXPECT_FALSE(module.compose({{"Filter", "1"}}).ok());
    EXPECT_THAT(module.defaults(Fieldbus::Modbus).bytes(), IsEmpty());
    EXPECT_THAT(module.decode({}, Fieldbus::Modbus).image(), IsEmpty());
    EXPECT_THAT(module.channelMap().channels(), IsEmpty());
}

std::string golden(const std::string& name)
{
    std::ifstream file(std::string(GOLDEN_OUTPUTS) + "/" + name, std::ios::binary);
    std::stringstream text;
    text << file.rdbuf();
    return text.str();
}

Module goldenModule(const std::string& number)
{
    return Module::fromBytes(exampleBytes("MX" + number + ".bin"),
                             "examples/modules/MX" + number + ".bin");
}

// The recorded outputs of mxtool.
TEST(ModuleJson, isWhatTheProgramPrints)
{
    for (const char* number : {"0304", "0502", "0602"}) {
        EXPECT_EQ(goldenModule(number).json(), golden(std::string("show-") + number + ".json"));
    }
    EXPECT_EQ(goldenModule("0602").channelMap().json(), golden("channels-0602.json"));
    const Module serial = goldenModule("0701");
    const auto odd = serial.configuration(serial.compose({{"Parity", "odd"}}).image, Fieldbus::Raw);
    EXPECT_EQ(odd.json(), golden("config-0701.json"));
    const auto read = serial.imageOfWords("05010001eeddef0b82167eeb", Fieldbus::Raw, "--compare");
    const mxmodule::Comparison comparison(odd, serial.configuration(read.image, Fieldbus::Raw),
                                          "--compare");
    EXPECT_EQ(comparison.json(), golden("config-0701-compare.json"));
}

} // namespace
