// What a module gives of MX0304, four analogue inputs, worked out by hand from its bytes: the block
// is 0x32 and per channel c, from byte 1 + 8 c, the sensor, 0x251c + c, 0xdae4 - c, 0x3c + c and
// 0x40 + 2 c. Identifiers: properties 0 to 17, picture 18, parameters 19 to 43, channels 44 to 47.
#include <mxmodule/Module.h>

#include "ExampleModules.h"
#include "MxBuffer.h"
#include "ShownFinding.h"
#include "TemporaryDirectory.h"

#include <Poco/AutoPtr.h>
#include <Poco/Channel.h>
#include <Poco/Logger.h>
#include <Poco/NullChannel.h>
#include <gmock/gmock.h>

#include <optional>

namespace {

using mxmodule::Module;
using mxmodule::ModuleOptions;
using mxmodule::Parameter;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

std::vector<char> charsOf(const std::string& hex)
{
    const testkit::Bytes bytes = testkit::hexBytes(hex);
    return {bytes.begin(), bytes.end()};
}

const std::vector<char>& blockOfAnalogueInputs()
{
    static const std::vector<char> block = charsOf("32 00251cdae4003c40 01251ddae3003d42"
                                                   "   02251edae2003e44 09251fdae1003f46");
    return block;
}

TEST(Module, knowsWhatItIs)
{
    const Module module = exampleModule("MX0304.bin");
    EXPECT_EQ(module.name(), "MX0304.bin");
    EXPECT_EQ(module.label(), "4 AI ±10 V / 0-20 mA");
    EXPECT_EQ(module.deviceTypeId(), "kv38.5a030304");
    EXPECT_EQ(module.defaultImage(), blockOfAnalogueInputs());
    const mxmodule::DataSizes sizes = module.sizes();
    EXPECT_EQ(sizes.input, 8U);
    EXPECT_EQ(sizes.output, 0U);
    EXPECT_EQ(sizes.parameters, 33U);
    EXPECT_EQ(sizes.diagnosis, 4U);
    EXPECT_EQ(sizes.offsets.input, 0U);
}

TEST(Module, givesItsProperties)
{
    const auto properties = exampleModule("MX0304.bin").properties();
    ASSERT_THAT(properties, SizeIs(18));
    EXPECT_EQ(properties[0].id, "0");
    EXPECT_EQ(properties[0].name, "moduleId");
    EXPECT_EQ(properties[0].value, "5a030304");
    EXPECT_EQ(properties[7].name, "brandLabelName");
    EXPECT_EQ(properties[7].value, "4 AI ±10 V / 0-20 mA");
}

TEST(Module, givesItsChannels)
{
    const auto channels = exampleModule("MX0304.bin").channels();
    ASSERT_THAT(channels, SizeIs(4));
    EXPECT_EQ(channels[3].id, "47");
    EXPECT_EQ(channels[3].number, 3);
    EXPECT_EQ(channels[3].name, "AI 4");
    EXPECT_EQ(channels[3].direction, "in");
    EXPECT_EQ(channels[3].symbol, "IW6");
    EXPECT_EQ(channels[3].kind, "W");
    EXPECT_EQ(channels[3].byteAddress, 6U);
    EXPECT_EQ(channels[3].bitOffset, 0);
    EXPECT_EQ(channels[3].bitLength, 16);
}

TEST(Module, givesAParameterOfTheModule)
{
    const auto parameters = exampleModule("MX0304.bin").parameters();
    ASSERT_THAT(parameters, SizeIs(25));
    const Parameter& suppression = parameters[0];
    EXPECT_EQ(suppression.id, "19");
    EXPECT_EQ(suppression.channel, std::nullopt);
    EXPECT_THAT(suppression.channelNames, ElementsAre());
    EXPECT_EQ(suppression.name, "Mains suppression");
    EXPECT_EQ(suppression.callName, "Mains suppression");
    EXPECT_EQ(suppression.type, "UInt8");
    EXPECT_EQ(suppression.stored, "50");
    EXPECT_EQ(suppression.shown, "50 Hz");
    EXPECT_EQ(suppression.unit, "Hz");
    EXPECT_EQ(suppression.minimum, "0");
    EXPECT_EQ(suppression.maximum, "60");
    EXPECT_FALSE(suppression.hasOptions);
    EXPECT_FALSE(suppression.isPhysical);
    EXPECT_TRUE(suppression.isAccepted);
}

// Factor 0.001: 0x251e is 9502, shown as 9.502, whose nearest binary32 is 9.50200081.
TEST(Module, givesAPhysicalParameter)
{
    const Parameter limit = exampleModule("MX0304.bin").parameters()[14];
    EXPECT_EQ(limit.id, "33");
    EXPECT_EQ(limit.channel, 2);
    EXPECT_THAT(limit.channelNames, ElementsAre("AI 3"));
    EXPECT_EQ(limit.callName, "AI 3/Upper limit");
    EXPECT_EQ(limit.type, "SInt16");
    EXPECT_EQ(limit.stored, "9502");
    EXPECT_EQ(limit.value, "9.502001");
    EXPECT_EQ(limit.digits, "9.502");
    EXPECT_EQ(limit.shown, "9.502 V");
    EXPECT_EQ(limit.minimum, "-10");
    EXPECT_EQ(limit.maximum, "10");
    EXPECT_TRUE(limit.isPhysical);
    EXPECT_EQ(limit.place.byte, 18U);
    EXPECT_EQ(limit.place.bytes, 2U);
    EXPECT_EQ(limit.place.bitLength, 0U);
}

TEST(Module, givesAParameterWithOptions)
{
    const Parameter sensor = exampleModule("MX0304.bin").parameters()[19];
    EXPECT_EQ(sensor.callName, "AI 4/Signal range");
    EXPECT_EQ(sensor.stored, "9");
    EXPECT_EQ(sensor.shown, "off");
    EXPECT_TRUE(sensor.hasOptions);
    ASSERT_THAT(sensor.options, SizeIs(5));
    EXPECT_EQ(sensor.options[0].text, "±10 V");
    EXPECT_FALSE(sensor.options[0].current);
    EXPECT_EQ(sensor.options[4].text, "off");
    EXPECT_EQ(sensor.options[4].value, "9");
    EXPECT_EQ(sensor.options[4].raw, 9);
    EXPECT_TRUE(sensor.options[4].current);
}

// 0x46 is 01000110: bit 6 is set, bits 1 to 3 are 3.
TEST(Module, givesBitFields)
{
    const auto parameters = exampleModule("MX0304.bin").parameters();
    const Parameter& wire = parameters[23];
    EXPECT_EQ(wire.name, "Wire break check");
    EXPECT_EQ(wire.stored, "1");
    EXPECT_EQ(wire.place.byte, 32U);
    EXPECT_EQ(wire.place.bitOffset, 6U);
    EXPECT_EQ(wire.place.bitLength, 1U);
    EXPECT_TRUE(wire.flagBit0);
    EXPECT_FALSE(wire.flagBit1);
    const Parameter& depth = parameters[24];
    EXPECT_EQ(depth.stored, "3");
    EXPECT_EQ(depth.place.bitOffset, 1U);
    EXPECT_EQ(depth.place.bitLength, 3U);
    EXPECT_FALSE(depth.flagBit0);
    EXPECT_TRUE(depth.flagBit1);
}

TEST(Module, givesSetsAndPictures)
{
    const Module module = exampleModule("MX0304.bin");
    const auto sets = module.sets();
    ASSERT_THAT(sets, SizeIs(9));
    EXPECT_EQ(sets[1].name, "deviceParameter");
    EXPECT_THAT(sets[1].members, ElementsAre("19"));
    EXPECT_FALSE(sets[1].isRole);
    EXPECT_EQ(sets[8].id, "56");
    EXPECT_EQ(sets[8].name, "default");
    EXPECT_TRUE(sets[8].isRole);
    EXPECT_THAT(sets[8].members, ElementsAre("48", "54", "55"));
    const auto objects = module.binaryObjects();
    ASSERT_THAT(objects, SizeIs(1));
    EXPECT_EQ(objects[0].id, "18");
    EXPECT_EQ(objects[0].name, "productImage");
    EXPECT_EQ(objects[0].mimeType, "image/svgz");
    EXPECT_EQ(objects[0].encoding, "base64");
    EXPECT_EQ(objects[0].data.substr(0, 4), "H4sI"); // 1f 8b 08: gzip
}

TEST(Module, findsParametersByName)
{
    const Module module = exampleModule("MX0304.bin");
    EXPECT_THAT(module.parametersCalled("Mains suppression"), ElementsAre(0));
    EXPECT_THAT(module.parametersCalled("Hysteresis"), ElementsAre(4, 10, 16, 22));
    EXPECT_THAT(module.parametersCalled("AI 2/Hysteresis"), ElementsAre(10));
    EXPECT_THAT(module.parametersCalled("#43"), ElementsAre(24));
    EXPECT_THAT(module.parametersCalled("Gain"), ElementsAre());
}

TEST(Module, hasItsDataWhereItIsPut)
{
    const Module here = exampleModule("MX0304.bin");
    const Module there = here.at({100, 200});
    EXPECT_EQ(there.channels()[1].symbol, "IW102");
    EXPECT_EQ(there.sizes().offsets.input, 100U);
    EXPECT_EQ(there.sizes().offsets.output, 200U);
    EXPECT_EQ(there.name(), "MX0304.bin");
    EXPECT_EQ(there.defaultImage(), blockOfAnalogueInputs());
    EXPECT_EQ(here.channels()[1].symbol, "IW2");
}

TEST(Module, hasAnotherParameterBlock)
{
    ModuleOptions options;
    options.parameterBlock = blockOfAnalogueInputs();
    options.parameterBlock->front() = 60;
    EXPECT_EQ(exampleModule("MX0304.bin", options).parameters()[0].shown, "60 Hz");
    options.parameterBlock = std::vector<char>(32);
    options.parameterBlockPlace = "block.bin";
    try {
        exampleModule("MX0304.bin", options);
        ADD_FAILURE() << "accepted";
    } catch (const mxmodule::Failure& failure) {
        EXPECT_EQ(shown(failure.reason()), "block.bin: error: Found 32 bytes, expected the 33 "
                                           "bytes of the module's parameter block\n");
    }
}

TEST(Module, sharesItsContentWithCopies)
{
    std::optional<Module> first = exampleModule("MX0304.bin");
    const Module copy = *first;
    EXPECT_EQ(&copy.defaultImage(), &first->defaultImage());
    const auto configuration = first->defaults(mxmodule::Fieldbus::Raw);
    const auto map = first->channelMap();
    first.reset();
    EXPECT_EQ(copy.parameters()[14].shown, "9.502 V");
    EXPECT_EQ(configuration.parameters()[14].shown, "9.502 V");
    EXPECT_EQ(map.channels()[3].symbol, "IW6");
}

TEST(Module, comesFromFilesAndFromTheirTextForm)
{
    const std::string bin = std::string(EXAMPLE_MODULES) + "/MX0304.bin";
    const std::string yaml = std::string(EXAMPLE_MODULES) + "/MX0304.yaml";
    EXPECT_EQ(Module::fromFile(bin).json(), exampleModule("MX0304.bin").json());
    EXPECT_EQ(Module::fromFile(yaml).json(), exampleModule("MX0304.bin").json());
    EXPECT_EQ(Module::fromFile(yaml).name(), yaml);
}

// The reason of the failure of bytes called "a.bin".
std::string reasonFor(const std::vector<char>& bytes)
{
    try {
        Module::fromBytes(bytes, "a.bin");
    } catch (const mxmodule::Failure& failure) {
        EXPECT_EQ(failure.reason().origin, mxmodule::Origin::Input);
        return shown(failure.reason());
    }
    return "accepted";
}

TEST(Module, isNotMadeOfOtherBytes)
{
    EXPECT_EQ(reasonFor({}), "a.bin: error: The file is empty, expected an mx file or its text "
                             "form\n");
    auto cut = exampleBytes("MX0304.bin");
    cut.resize(cut.size() / 2);
    EXPECT_THAT(reasonFor(cut), HasSubstr("hint: mxtool groups a.bin lists what the file holds\n"));
    auto identity = testkit::MxBuffer().group(0x0001, testkit::identityPayload(3, 7)).chars();
    EXPECT_EQ(reasonFor(identity), "a.bin: error: Parser::getGroupEntry(): No such group: 0020\n"
                                   "hint: mxtool groups a.bin lists what the file holds\n");
}

TEST(Module, failsWithEveryErrorOfAText)
{
    const std::string text = "module: {type: 3, id: x}\nchannels: [{name: A, in: Foo}]\n";
    try {
        Module::fromBytes({text.begin(), text.end()}, "a.yaml");
        ADD_FAILURE() << "accepted";
    } catch (const mxmodule::Failure& failure) {
        ASSERT_GE(failure.findings().size(), 3U);
        EXPECT_EQ(failure.findings()[0].place, "a.yaml:1:23");
        EXPECT_THAT(failure.findings()[0].excerpt, HasSubstr("id: x"));
        EXPECT_THAT(failure.reason().text, HasSubstr("A text with "));
    }
}

// The lines that the parser logs go to the observer of the call, and an exception of the observer
// ends the operation as it is.
class Listener : public mxmodule::Observer
{
public:
    explicit Listener(std::string wanted) : level(std::move(wanted)) {}
    void notice(const mxmodule::Finding& finding) override { lines.push_back(finding.text); }
    std::string logLevel() const override { return level; }

    std::vector<std::string> lines;

private:
    std::string level;
};

class Impatient : public mxmodule::Observer
{
public:
    void notice(const mxmodule::Finding& /*finding*/) override
    {
        throw std::runtime_error("enough");
    }
    std::string logLevel() const override { return "trace"; }
};

TEST(Module, tellsItsObserverWhatTheParserLogs)
{
    Listener all("trace");
    ModuleOptions options;
    options.observer = &all;
    const Module module = exampleModule("MX0602.bin", options);
    EXPECT_THAT(all.lines, testing::Contains(">> parse()."));
    Listener warnings("warning");
    module.channelMap(&warnings);
    EXPECT_THAT(warnings.lines, ElementsAre(HasSubstr("no IEC symbol assigned"),
                                            HasSubstr("no IEC symbol assigned")));
    Listener none("none");
    module.channelMap(&none);
    EXPECT_THAT(none.lines, ElementsAre());
}

TEST(Module, endsWithTheExceptionOfItsObserver)
{
    Impatient impatient;
    ModuleOptions options;
    options.observer = &impatient;
    try {
        exampleModule("MX0304.bin", options);
        ADD_FAILURE() << "accepted";
    } catch (const mxmodule::Failure& failure) {
        ADD_FAILURE() << failure.what();
    } catch (const std::runtime_error& failure) {
        EXPECT_STREQ(failure.what(), "enough");
    }
    EXPECT_EQ(exampleModule("MX0304.bin").label(), "4 AI ±10 V / 0-20 mA");
}

// Also after a failure the observer has the lines, and the host its logger as it was.
TEST(Module, tellsItsObserverLinesBeforeAFailure)
{
    Poco::Logger& logger = Poco::Logger::get("mxparser-kv38");
    const Poco::AutoPtr<Poco::Channel> channel(new Poco::NullChannel);
    const Poco::AutoPtr<Poco::Channel> before(logger.getChannel(), true);
    const int level = logger.getLevel();
    logger.setChannel(channel);
    logger.setLevel(Poco::Message::PRIO_CRITICAL);
    Listener all("trace");
    ModuleOptions options;
    options.observer = &all;
    auto cut = exampleBytes("MX0304.bin");
    cut.resize(cut.size() - 4);
    EXPECT_THROW(Module::fromBytes(cut, "cut.bin", options), mxmodule::Failure);
    EXPECT_THAT(all.lines, testing::Contains(">> parse()."));
    EXPECT_EQ(logger.getChannel().get(), channel.get());
    EXPECT_EQ(logger.getLevel(), Poco::Message::PRIO_CRITICAL);
    logger.setChannel(before);
    logger.setLevel(level);
}

TEST(Module, namesALogLevelThatDoesNotExist)
{
    Listener loud("loud");
    ModuleOptions options;
    options.observer = &loud;
    EXPECT_THROW(exampleModule("MX0304.bin", options), mxmodule::Failure);
}

} // namespace
