#include "ConfiguredModule.h"
#include "Failure.h"
#include "LogCapture.h"

#include <Poco/Exception.h>

#include <gmock/gmock.h>

namespace {

using devices::parser::FieldbusType;
using testing::HasSubstr;
using testkit::Bytes;
using testkit::failureOf;
using testkit::hexBytes;

// Runs `operation` and returns what it wrote to standard error.
template <class Operation>
std::string standardErrorOf(Operation&& operation)
{
    testing::internal::CaptureStderr();
    operation();
    return testing::internal::GetCapturedStderr();
}

TEST(RawConfiguration, withoutUserValuesIsTheDefaultBlock)
{
    ConfiguredModule module = exampleModule("MX0502.bin");
    const Bytes block = hexBytes("00 1194 fd 06 1194 fd");
    EXPECT_EQ(module.configuration(FieldbusType::Raw, true), block);
    EXPECT_EQ(module.configuration(static_cast<FieldbusType>(99), true), block);
    EXPECT_EQ(module.configuration(static_cast<FieldbusType>(-1), true), block);
}

TEST(RawConfiguration, isACopyOfTheBlock)
{
    ConfiguredModule module = exampleModule("MX0502.bin");
    const auto first = module.parser.getCalculatedRawConfig(FieldbusType::Raw, module.mxData,
                                                            module.device.get(), nullptr);
    (*first)[0] = 99;
    EXPECT_EQ(module.configuration(FieldbusType::Raw, true)[0], 0);
}

TEST(RawConfiguration, anEmptyCopyOfTheDeviceChangesNothing)
{
    ConfiguredModule module = exampleModule("MX0502.bin");
    EXPECT_EQ(module.configuration(FieldbusType::Raw), hexBytes("00 1194 fd 06 1194 fd"));
}

TEST(RawConfiguration, replacesTheDeviceOfTheParserButNotTheHosts)
{
    ConfiguredModule module = exampleModule("MX0502.bin");
    module.set("Sensor type", "2");
    const auto before = module.parser.dev;
    module.configuration(FieldbusType::Raw);
    EXPECT_NE(module.parser.dev, before);
    EXPECT_TRUE(module.parser.dev->attributes.empty());
    EXPECT_EQ(module.parameter("Sensor type").value, "0");
}

TEST(RawConfiguration, findsParametersByIdAlone)
{
    ConfiguredModule module = exampleModule("MX0502.bin");
    module.set("Wires", "-2");
    // The name differs; only the id counts.
    static_cast<datamodel::Parameter&>(*module.user.attributes[0]).name = "Sensor type";
    EXPECT_EQ(module.configuration(FieldbusType::Raw), hexBytes("00 1194 fe 06 1194 fd"));
}

TEST(RawConfiguration, theLastOfTwoValuesOfAParameterStays)
{
    ConfiguredModule module = exampleModule("MX0502.bin");
    module.set("Wires", "-2");
    module.set("Wires", "-4");
    EXPECT_EQ(module.configuration(FieldbusType::Raw), hexBytes("00 1194 fc 06 1194 fd"));
}

// So many values that the parser looks for their parameters in an index.
constexpr unsigned manyValues = 500;

TEST(RawConfiguration, manyValuesAreWrittenInTheirOrder)
{
    ConfiguredModule module = exampleModule("MX0502.bin");
    for (unsigned i = 0; i < manyValues; ++i) {
        module.set("Wires", i % 2 == 0 ? "-2" : "-4");
        module.set("Sensor type", std::to_string(i % 7), i % 2);
    }
    // The last values: Wires -4 = fc; the types 498 % 7 = 1 and 499 % 7 = 2.
    EXPECT_EQ(module.configuration(FieldbusType::Raw), hexBytes("01 1194 fc 02 1194 fd"));
}

TEST(RawConfiguration, anUnknownParameterAfterManyValuesIsRefused)
{
    ConfiguredModule module = exampleModule("MX0502.bin");
    for (unsigned i = 0; i < manyValues; ++i) {
        module.set("Wires", "-4");
    }
    module.user.attributes.back()->id = "0"; // a static property
    std::string failure;
    standardErrorOf([&] { failure = failureOf([&] { module.configuration(FieldbusType::Raw); }); });
    EXPECT_EQ(failure, "parameter not found: kv38.5a050502, 0");
}

TEST(RawConfiguration, theFirstOfTwoParametersWithOneIdIsSetAlsoAfterManyValues)
{
    ConfiguredModule module = exampleModule("MX0502.bin");
    module.parameter("Sensor type", 1).id = module.parameter("Sensor type", 0).id;
    for (unsigned i = 0; i < manyValues; ++i) {
        module.set("Sensor type", "2", 1);
    }
    EXPECT_EQ(module.configuration(FieldbusType::Raw), hexBytes("02 1194 fd 06 1194 fd"));
}

TEST(RawConfiguration, refusesAnotherDeviceType)
{
    ConfiguredModule module = exampleModule("MX0502.bin");
    module.user.deviceTypeId = "kv38.00000000";
    std::string failure;
    const std::string said = standardErrorOf(
        [&] { failure = failureOf([&] { module.configuration(FieldbusType::Raw); }); });
    EXPECT_EQ(failure, "deviceTypeId mismatch: kv38.5a050502, kv38.00000000");
    EXPECT_EQ(said, failure + "\n");
}

TEST(RawConfiguration, refusesAnUnknownParameter)
{
    ConfiguredModule module = exampleModule("MX0502.bin");
    module.set("Wires", "-4");
    module.user.attributes[0]->id = "0"; // a static property
    std::string failure;
    const std::string said = standardErrorOf(
        [&] { failure = failureOf([&] { module.configuration(FieldbusType::Raw); }); });
    EXPECT_EQ(failure, "parameter not found: kv38.5a050502, 0");
    EXPECT_EQ(said, failure + "\n");
}

TEST(RawConfiguration, refusesAValueThatCannotBeWritten)
{
    ConfiguredModule module = exampleModule("MX0502.bin");
    module.set("Sensor type", "256");
    EXPECT_THAT(failureOf([&] { module.configuration(FieldbusType::Raw); }), HasSubstr("\"256\""));
    EXPECT_EQ(module.configuration(FieldbusType::Raw, true), hexBytes("00 1194 fd 06 1194 fd"));
}

TEST(RawConfiguration, anOlderDeviceIsConfiguredAfterOthersWereParsed)
{
    ConfiguredModule module = exampleModule("MX0502.bin");
    std::vector<char> other;
    devices::parser::mx::loadFile(std::string(EXAMPLE_MODULES) + "/MX0304.bin", other);
    module.parser.parse(other, nullptr, 0, 0);
    module.set("Temperature limit", "-200");
    EXPECT_EQ(module.configuration(FieldbusType::Raw), hexBytes("00 f830 fd 06 1194 fd"));
}

TEST(RawConfiguration, valuesStayWithinTheImageWhenTheMxDataIsOfAnotherModule)
{
    ConfiguredModule module = exampleModule("MX0108.bin"); // 2 bytes
    devices::parser::mx::loadFile(std::string(EXAMPLE_MODULES) + "/MX0304.bin", module.mxData);
    const std::vector<std::uint8_t> farRecord =
        testkit::ParameterRecord{1, 1, 4 + 20}.bytes(); // byte 20 of the block
    module.parameter("Input filter").privateProps.record = farRecord.data();
    module.set("Input filter", "1");
    EXPECT_THAT(failureOf([&] { module.configuration(FieldbusType::Raw); }),
                HasSubstr("outside the raw image of 2"));
}

TEST(RawConfiguration, anEmptyBlockHasNoPlaceForAParameter)
{
    ConfiguredModule module = exampleModule("MX0502.bin");
    module.device->privateProps.defaultParameterBlock->clear();
    EXPECT_EQ(failureOf([&] { module.configuration(FieldbusType::Modbus, true); }),
              "Parameter out of bounds: Sensor type");
}

TEST(RawConfiguration, aMissingBlockIsANullPointer)
{
    ConfiguredModule module = exampleModule("MX0502.bin");
    module.device->privateProps.defaultParameterBlock.reset();
    EXPECT_THROW(module.configuration(FieldbusType::Raw, true), Poco::NullPointerException);
}

TEST(RawConfiguration, traceStartsWithItsName)
{
    ConfiguredModule module = exampleModule("MX0502.bin");
    const testkit::LogCapture log;
    module.configuration(FieldbusType::Raw);
    const auto lines = log.texts(Poco::Message::PRIO_TRACE);
    ASSERT_GE(lines.size(), 3U);
    EXPECT_EQ(lines[0], ">> getCalculatedRawConfig().");
    EXPECT_EQ(lines[1], ">> initializeDataStructs().");
    EXPECT_EQ(lines[2], ">> setupDefaultParams().");
}

TEST(RawConfigurationDeath, aNullDeviceIsAFailedAssertion)
{
    testkit::ParserAccess parser;
    EXPECT_DEATH(parser.getCalculatedRawConfig(FieldbusType::Raw, {}, nullptr, nullptr),
                 "vendor/mx/src/mxparser_kv38/.*Assertion `vanillaDev != nullptr' failed");
}

class EveryExample : public testing::TestWithParam<const char*>
{};

// Setting a parameter to the text that it shows leaves the image as it was; to its minimum, maximum
// or an option it changes no bit but its own.
TEST_P(EveryExample, settingAParameterChangesItsOwnBitsAlone)
{
    ConfiguredModule module = exampleModule(GetParam());
    const Bytes before = module.configuration(FieldbusType::Raw, true);
    for (auto* parameter : module.parser.getParameterListOrderdLikeKv38(module.device.get())) {
        std::vector<std::string> values = {parameter->value, parameter->valueRange->min,
                                           parameter->valueRange->max};
        for (const auto& option : parameter->options) {
            values.push_back(option->value);
        }
        const auto& place = parameter->privateProps;
        for (const std::string& value : values) {
            auto changed = std::make_shared<datamodel::Parameter>();
            changed->id = parameter->id;
            changed->value = value;
            module.user.attributes = {changed};
            Bytes after = module.configuration(FieldbusType::Raw);
            if (&value == &values.front()) {
                EXPECT_EQ(after, before) << parameter->name;
            }
            const unsigned mask =
                place.bitLength == 0 ? 0xFFU : ((1U << place.bitLength) - 1) << place.bitOffset;
            for (unsigned i = 0; i < place.dataSize; ++i) {
                auto& byte = after[place.byteOffset + i];
                byte = static_cast<std::uint8_t>((byte & ~mask) |
                                                 (before[place.byteOffset + i] & mask));
            }
            EXPECT_EQ(after, before) << parameter->name << " = " << value;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Modules, EveryExample,
                         testing::Values("MX0108.bin", "MX0116.bin", "MX0208.bin", "MX0304.bin",
                                         "MX0404.bin", "MX0502.bin", "MX0602.bin", "MX0701.bin",
                                         "MX0803.bin", "MX0901.bin"));

} // namespace
