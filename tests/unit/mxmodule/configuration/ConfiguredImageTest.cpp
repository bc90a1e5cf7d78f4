#include "configuration/ConfiguredImage.h"

#include "TestModule.h"
#include "configuration/Composition.h"
#include "configuration/ConfigurationOutput.h"
#include "configuration/DecodedImage.h"

#include <mxmodule/Assignment.h>
#include <mxmodule/WantedValues.h>

#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

#include <random>

namespace {

using mxmodule::configurationOf;
using mxmodule::ConfiguredImage;
using mxmodule::Fieldbus;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testkit::Bytes;
using testkit::hexBytes;

std::vector<char> chars(const std::string& hex)
{
    const Bytes bytes = hexBytes(hex);
    return {bytes.begin(), bytes.end()};
}

std::vector<std::string> notes(const ConfiguredImage& configuration)
{
    std::vector<std::string> lines;
    for (const auto& note : notesOf(configuration, "here")) {
        lines.push_back(note.place + ": " + note.text);
    }
    return lines;
}

TEST(Configuration, namesTheValuesOfAnImage)
{
    TestModule module;
    const ConfiguredImage configuration =
        configurationOf(*module, chars("05 0a 0b 05 07 65 00 00"), Fieldbus::Raw);
    ASSERT_NE(configuration.device.parameters[0].currentOption(), nullptr);
    EXPECT_EQ(configuration.device.parameters[0].currentOption()->text, "slow");
    EXPECT_EQ(configuration.device.parameters[8].value, "50.500000"); // 101 * 0.5
    EXPECT_EQ(configuration.defaults->parameters[8].value, "50.000000");
    EXPECT_TRUE(configuration.isChanged(0));
    EXPECT_FALSE(configuration.isChanged(1));
    EXPECT_TRUE(configuration.isChanged(8));
    EXPECT_EQ(configuration.bytes, configuration.image);
}

TEST(Configuration, sortsTheParametersByByteAndBit)
{
    TestModule module;
    const ConfiguredImage configuration =
        configurationOf(*module, module.report().parameterBlock, Fieldbus::Raw);
    std::vector<std::size_t> order;
    for (const auto& place : configuration.places) {
        order.push_back(place.parameter);
    }
    EXPECT_THAT(order, ElementsAre(0, 1, 2, 3, 5, 6, 8, 4, 7));
}

TEST(Configuration, notesBitsOfNoParameter)
{
    TestModule module;
    const ConfiguredImage configuration =
        configurationOf(*module, chars("00 0a 0b 05 07 64 00 31"), Fieldbus::Raw);
    EXPECT_THAT(notes(configuration),
                ElementsAre("here: The image differs from the default in bits of no parameter: "
                            "byte 7 is 0x31 (default 0x00)",
                            HasSubstr("parameter \"Far\" of the module")));
}

TEST(Configuration, namesEveryParameterThatTheRegistersCannotHold)
{
    TestModule module;
    try {
        configurationOf(*module, chars("4d 0a 0b 05 07 64 00 00"), Fieldbus::Modbus);
        FAIL();
    } catch (const mxmodule::Failure& failure) {
        const std::string text = failure.what();
        EXPECT_THAT(text, testing::StartsWith("Parameter option list value not found: Filter; "));
        EXPECT_THAT(text, HasSubstr("byte 0): its value 77 is none of its options off = 0 | slow"));
        EXPECT_THAT(text, HasSubstr("byte 9): it lies outside the parameter image of 8 bytes"));
        EXPECT_THAT(text, Not(HasSubstr("Level")));
    }
}

TEST(ConfigurationText, marksWhatDiffersFromTheDefault)
{
    TestModule module;
    const std::string text = configurationText(
        configurationOf(*module, chars("05 0a 0b 05 07 64 00 00"), Fieldbus::Raw));
    EXPECT_THAT(text, HasSubstr("  0000  05 0a 0b 05 07 64 00 00\n"));
    EXPECT_THAT(text, HasSubstr("0           05     module        Filter      slow   off\n"));
    EXPECT_THAT(text, HasSubstr("1           0a     0 AI 1        Level       10 mA\n"));
    EXPECT_THAT(text, HasSubstr("4     0-2   07     module        Low bits    7\n"));
    EXPECT_THAT(text, HasSubstr("1 of 9 parameters differ from the default\n"));
}

TEST(ConfigurationJson, givesTheValuesAsACallTakesThem)
{
    TestModule module;
    const auto json = nlohmann::json::parse(configurationJson(
        configurationOf(*module, chars("02 0a 0b 05 07 64 00 00"), Fieldbus::Raw)));
    EXPECT_EQ(json["schema"].dump(), R"({"name":"mxtool.config","version":1})");
    EXPECT_EQ(json["image"], json["bytes"]);
    const std::string filter = module.report().parameters[0].id;
    EXPECT_EQ(json["values"]["#" + filter], "#2");
    EXPECT_EQ(json["parameters"][0]["shown"], "5");
    EXPECT_EQ(json["parameters"][0]["default_shown"], "off");
    EXPECT_EQ(json["parameters"][0]["changed"], true);
}

// Decoding and composing again gives the same image, whatever it holds.
class EveryExampleImage : public testing::TestWithParam<const char*>
{
protected:
    std::vector<char> decodedAndComposed(const std::vector<char>& image)
    {
        const ConfiguredImage decoded = configurationOf(module, image, Fieldbus::Raw);
        const mxmodule::Values values =
            mxmodule::readValues(configurationJson(decoded), "decoded.json");
        const auto composition =
            compose(module, *values.image, values.assignments, mxmodule::ValueCheck::Full);
        EXPECT_THAT(composition.findings, IsEmpty());
        return composition.image;
    }

    // The device's image with one random value that it accepts in each parameter.
    std::vector<char> randomAccepted(std::mt19937& random)
    {
        const auto& device = module.report();
        std::vector<mxmodule::Assignment> assignments;
        for (const auto& parameter : device.parameters) {
            std::string value = random() % 2 == 0 ? parameter.min : parameter.max;
            if (parameter.hasOptionList) {
                value = "#" + parameter.options[random() % parameter.options.size()].value;
            }
            assignments.push_back({"#" + parameter.id, value});
        }
        return compose(module, device.parameterBlock, assignments, mxmodule::ValueCheck::Full)
            .image;
    }

    // The default image with the values of a file.
    std::vector<char> composedOf(const std::string& content, const std::string& file)
    {
        mxmodule::WantedValues wanted(mxmodule::Module{moduleFile});
        wanted.add(mxmodule::readValues(content, file), file);
        return compose(module, module.report().parameterBlock, wanted.assignments(),
                       mxmodule::ValueCheck::Full)
            .image;
    }

    mxmodule::ModuleFile moduleFile =
        mxmodule::ModuleFile::read(std::string(EXAMPLE_MODULES) + "/" + GetParam());
    mxmodule::TranslatedModule module{moduleFile, {}, {}, "", nullptr};
};

TEST_P(EveryExampleImage, isTheSameDecodedAndComposedAgain)
{
    const std::vector<char> standard = module.report().parameterBlock;
    EXPECT_EQ(decodedAndComposed(standard), standard);
    std::mt19937 random(38);
    for (int i = 0; i < 12; ++i) {
        std::vector<char> image = standard;
        for (char& byte : image) {
            byte = static_cast<char>(random());
        }
        EXPECT_EQ(decodedAndComposed(image), image);
    }
}

TEST_P(EveryExampleImage, isMadeOfItsValuesAlone)
{
    std::mt19937 random(38);
    for (int i = 0; i < 8; ++i) {
        const std::vector<char> image = randomAccepted(random);
        const ConfiguredImage decoded = configurationOf(module, image, Fieldbus::Raw);
        const mxmodule::Values values =
            mxmodule::readValues(configurationJson(decoded), "decoded.json");
        const auto composed = compose(module, module.report().parameterBlock, values.assignments,
                                      mxmodule::ValueCheck::Full);
        EXPECT_THAT(composed.findings, IsEmpty());
        EXPECT_EQ(composed.image, image);
        EXPECT_EQ(composedOf(configurationValues(decoded), "decoded.yaml"), image);
        EXPECT_EQ(composedOf(configurationCsv(decoded), "decoded.csv"), image);
    }
}

TEST_P(EveryExampleImage, comesBackFromItsModbusRegisters)
{
    std::mt19937 random(38);
    for (int i = 0; i < 8; ++i) {
        const std::vector<char> image = randomAccepted(random);
        const ConfiguredImage asModbus = configurationOf(module, image, Fieldbus::Modbus);
        EXPECT_EQ(imageOfRegisters(asModbus.bytes, asModbus.places, *asModbus.defaults,
                                   asModbus.defaults->parameterBlock),
                  image);
    }
}

INSTANTIATE_TEST_SUITE_P(Modules, EveryExampleImage,
                         testing::Values("MX0001.bin", "MX0108.bin", "MX0116.bin", "MX0208.bin",
                                         "MX0304.bin", "MX0404.bin", "MX0502.bin", "MX0602.bin",
                                         "MX0701.bin", "MX0803.bin", "MX0901.bin"));

} // namespace
