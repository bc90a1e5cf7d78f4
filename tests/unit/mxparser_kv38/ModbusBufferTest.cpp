#include "ConfiguredModule.h"
#include "FailedAssertion.h"
#include "Failure.h"
#include "LogCapture.h"

#include <gmock/gmock.h>

namespace {

using testing::Contains;
using testing::ElementsAre;
using testkit::Bytes;
using testkit::failureOf;
using testkit::ParserAccess;

// A device built by hand with the parameters and channels that the Modbus buffer needs.
struct HandMadeDevice
{
    ParserAccess::ParameterP& add(const std::string& name, std::uint8_t channel,
                                  std::uint8_t byteOffset, std::uint8_t dataSize)
    {
        auto parameter = std::make_shared<ParserAccess::ParameterP>();
        parameter->name = name;
        parameter->privateProps.channelNumber = channel;
        parameter->privateProps.byteOffset = byteOffset;
        parameter->privateProps.dataSize = dataSize;
        device.attributes.push_back(parameter);
        return *parameter;
    }

    void addChannel(std::uint8_t number)
    {
        auto channel = std::make_shared<ParserAccess::ChannelP>();
        channel->privateProps.channelNumber = number;
        device.attributes.push_back(channel);
    }

    std::vector<std::string> order()
    {
        std::vector<std::string> names;
        for (const auto* parameter : parser.getParameterListOrderdLikeKv38(&device)) {
            names.push_back(parameter->name);
        }
        return names;
    }

    Bytes registers(const Bytes& image)
    {
        std::vector<char> raw(image.begin(), image.end());
        const auto buffer = parser.createModbusParamBuffer(&device, &raw);
        return {buffer->begin(), buffer->end()};
    }

    ParserAccess parser;
    ParserAccess::DeviceP device;
};

TEST(ParameterOrder, moduleParametersComeFirstThoughTheyStandLast)
{
    HandMadeDevice module;
    module.addChannel(0);
    module.add("of channel", 0, 0, 1);
    module.add("of module", 255, 1, 1);
    EXPECT_THAT(module.order(), ElementsAre("of module", "of channel"));
}

TEST(ParameterOrder, channelsCountInTheOrderOfTheListNotByNumber)
{
    HandMadeDevice module;
    module.add("a of 1", 1, 0, 1);
    module.add("a of 7", 7, 0, 1);
    module.add("b of 7", 7, 0, 1);
    module.addChannel(7);
    module.addChannel(1);
    EXPECT_THAT(module.order(), ElementsAre("a of 7", "b of 7", "a of 1"));
}

TEST(ParameterOrder, twoChannelsOfANumberListTheirParametersTwice)
{
    HandMadeDevice module;
    module.addChannel(3);
    module.add("p", 3, 0, 1);
    module.addChannel(3);
    EXPECT_THAT(module.order(), ElementsAre("p", "p"));
}

TEST(ParameterOrder, aParameterWithoutItsChannelIsLeftOut)
{
    HandMadeDevice module;
    module.addChannel(0);
    module.add("lost", 9, 0, 1);
    EXPECT_THAT(module.order(), ElementsAre());
}

TEST(ParameterOrder, aChannelNumbered255ListsTheModuleParametersAgain)
{
    HandMadeDevice module;
    module.add("p", 255, 0, 1);
    module.addChannel(255);
    EXPECT_THAT(module.order(), ElementsAre("p", "p"));
}

TEST(ModbusBuffer, padsOddSizesToWholeRegisters)
{
    HandMadeDevice module;
    module.add("one", 255, 0, 1);
    module.add("two", 255, 1, 2);
    module.add("four", 255, 3, 4);
    module.add("none", 255, 7, 0);
    EXPECT_EQ(module.registers({1, 2, 3, 4, 5, 6, 7}), (Bytes{1, 0, 2, 3, 4, 5, 6, 7}));
}

TEST(ModbusBuffer, takesTheIndexOfTheOption)
{
    HandMadeDevice module;
    auto& parameter = module.add("choice", 255, 0, 1);
    parameter.hasOptionList = true;
    parameter.privateProps.optionValues = {10, 20, 30, 20};
    EXPECT_EQ(module.registers({30}), (Bytes{2, 0}));
    EXPECT_EQ(module.registers({20}), (Bytes{1, 0})); // the first of equal values
}

TEST(ModbusBuffer, comparesOnlyTheFirstByteWithTheOptions)
{
    HandMadeDevice module;
    auto& parameter = module.add("choice", 255, 0, 2);
    parameter.hasOptionList = true;
    parameter.privateProps.optionValues = {0, 7};
    EXPECT_EQ(module.registers({7, 99}), (Bytes{1, 0}));
}

TEST(ModbusBuffer, refusesAValueThatIsNoOption)
{
    HandMadeDevice module;
    auto& parameter = module.add("choice", 255, 0, 1);
    parameter.hasOptionList = true;
    EXPECT_EQ(failureOf([&] { module.registers({0}); }),
              "Parameter option list value not found: choice");
    parameter.privateProps.optionValues = {1};
    EXPECT_EQ(failureOf([&] { module.registers({0}); }),
              "Parameter option list value not found: choice");
}

TEST(ModbusBuffer, takesIndex255AndRefusesIndex256)
{
    HandMadeDevice module;
    auto& parameter = module.add("choice", 255, 0, 1);
    parameter.hasOptionList = true;
    parameter.privateProps.optionValues.assign(255, 1);
    parameter.privateProps.optionValues.push_back(2);
    EXPECT_EQ(module.registers({2}), (Bytes{255, 0}));
    parameter.privateProps.optionValues.insert(parameter.privateProps.optionValues.begin(), 1);
    EXPECT_EQ(failureOf([&] { module.registers({2}); }),
              "Parameter option list index out of bounds: choice");
}

TEST(ModbusBuffer, refusesAParameterOutsideTheImage)
{
    HandMadeDevice module;
    auto& parameter = module.add("far", 255, 0, 1);
    EXPECT_EQ(failureOf([&] { module.registers({}); }), "Parameter out of bounds: far");
    parameter.privateProps = {255, nullptr, 2, 254, 3, 4, {}};
    const testkit::LogCapture log("debug");
    EXPECT_EQ(failureOf([&] { module.registers(Bytes(255, 0)); }), "Parameter out of bounds: far");
    EXPECT_THAT(log.texts(Poco::Message::PRIO_DEBUG),
                ElementsAre("byte offset = 254, data size = 2, bit offset = 3, bit length = 4"));
    parameter.privateProps.bitOffset = 0;
    parameter.privateProps.bitLength = 0;
    EXPECT_EQ(module.registers(Bytes(256, 9)), (Bytes{9, 9}));
}

TEST(ModbusBuffer, tracesItsOperations)
{
    HandMadeDevice module;
    const testkit::LogCapture log;
    module.registers({});
    EXPECT_THAT(
        log.texts(Poco::Message::PRIO_TRACE),
        ElementsAre(">> createModbusParamBuffer().", ">> getParameterListOrderdLikeKv38()."));
}

TEST(ModbusBufferDeath, nullPointersAreFailedAssertions)
{
    ParserAccess parser;
    ParserAccess::DeviceP device;
    std::vector<char> image;
    const std::string directory = "vendor/mx/src/mxparser_kv38";
    EXPECT_DEATH(parser.createModbusParamBuffer(nullptr, &image),
                 directory + "/.*Assertion `dev != nullptr' failed");
    EXPECT_DEATH(parser.createModbusParamBuffer(&device, nullptr),
                 directory + "/.*Assertion `rawParamBuffer != nullptr' failed");
}

} // namespace
