// Identifiers, static properties, sets and roles.

#include "DeviceView.h"
#include "ParserAccess.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testkit::ParserAccess;

class References : public testing::Test
{
protected:
    References() { parser.dev = std::make_shared<ParserAccess::DeviceP>(); }

    void addParameter(std::uint8_t channelNumber)
    {
        auto parameter = std::make_shared<ParserAccess::ParameterP>();
        parameter->privateProps.channelNumber = channelNumber;
        parser.assignIdAndAddAttribute(parameter);
    }

    void addChannel(std::uint8_t number, const std::string& dataType = "X")
    {
        auto channel = std::make_shared<ParserAccess::ChannelP>();
        channel->privateProps.channelNumber = number;
        channel->dataType = dataType;
        parser.assignIdAndAddAttribute(channel);
    }

    // Each set or role that was made: "ID NAME: MEMBERS".
    std::vector<std::string> sets() const
    {
        std::vector<std::string> all;
        for (const auto& attribute : parser.dev->attributes) {
            if (attribute->typeCode() != 27 && attribute->typeCode() != 28) {
                continue;
            }
            const auto& set = static_cast<const datamodel::Set&>(*attribute);
            std::string text = set.id + " " + set.name + ":";
            for (const std::string& member : set.members) {
                text += " " + member;
            }
            all.push_back(text);
        }
        return all;
    }

    ParserAccess parser;
};

TEST_F(References, identifiersCountUpFromNextObjectId)
{
    const auto first = std::make_shared<datamodel::StaticProperty>();
    EXPECT_EQ(parser.assignIdAndAddAttribute(first), 0U);
    parser.nextObjectId = 123;
    const auto second = std::make_shared<datamodel::StaticProperty>();
    EXPECT_EQ(parser.assignIdAndAddAttribute(second), 123U);
    EXPECT_EQ(first->id, "0");
    EXPECT_EQ(second->id, "123");
    EXPECT_EQ(parser.nextObjectId, 124U);
    EXPECT_THAT(parser.dev->attributes, ElementsAre(first, second));
}

TEST_F(References, aStaticPropertyHoldsCopiesOfNameAndValue)
{
    parser.addStaticProperty("name", "value");
    EXPECT_EQ(propertiesOf(*parser.dev), (NamesAndValues{{"name", "value"}}));
    EXPECT_EQ(parser.dev->attributes[0]->id, "0");
}

TEST_F(References, anEmptyDeviceGetsTheRoleAlone)
{
    parser.setupReferences();
    EXPECT_THAT(sets(), ElementsAre("0 default:"));
    EXPECT_EQ(parser.dev->attributes[0]->typeCode(), 27);
}

TEST_F(References, everySetIsMadeInItsOrder)
{
    parser.addStaticProperty("a", "");                                           // 0
    parser.assignIdAndAddAttribute(std::make_shared<datamodel::BinaryObject>()); // 1
    addParameter(255);                                                           // 2
    addParameter(1);                                                             // 3
    addParameter(0);                                                             // 4
    addParameter(1);                                                             // 5
    addChannel(0);                                                               // 6
    addChannel(1);                                                               // 7
    parser.setupReferences();
    EXPECT_THAT(sets(),
                ElementsAre("8 basicInformation: 0 1", "9 deviceParameter: 2",
                            "10 channelParams_6: 4", "11 channelParams_7: 3 5",
                            "12 parameter: 9 10 11", "13 channels: 6 7", "14 default: 8 12 13"));
}

TEST_F(References, moduleParametersAloneMakeNoChannelSet)
{
    addParameter(255);
    addParameter(255);
    parser.setupReferences();
    EXPECT_THAT(sets(), ElementsAre("2 deviceParameter: 0 1", "3 parameter: 2", "4 default: 3"));
}

TEST_F(References, aChannelWithoutParametersIsListedByItsSizeLetter)
{
    addChannel(0);
    addChannel(1, "");
    parser.setupReferences();
    EXPECT_THAT(sets(), ElementsAre("2 channels: 0", "3 default: 2"));
}

TEST_F(References, aChannelWithoutSizeLetterStillHasItsParameters)
{
    addChannel(1, "");
    addParameter(1);
    parser.setupReferences();
    EXPECT_THAT(sets(), ElementsAre("2 channelParams_0: 1", "3 parameter: 2", "4 default: 3"));
}

TEST_F(References, aParameterOfNoChannelIsInNoSet)
{
    addParameter(9);
    addChannel(1);
    parser.setupReferences();
    EXPECT_THAT(sets(), ElementsAre("2 channels: 1", "3 default: 2"));
}

TEST_F(References, twoChannelsOfANumberHaveTheSameParameters)
{
    addParameter(4);
    addChannel(4);
    addChannel(4);
    parser.setupReferences();
    EXPECT_THAT(sets(), ElementsAre("3 channelParams_1: 0", "4 channelParams_2: 0",
                                    "5 parameter: 3 4", "6 channels: 1 2", "7 default: 5 6"));
}

TEST_F(References, aChannelNumbered255MatchesTheModuleParameters)
{
    addParameter(255);
    addChannel(255);
    parser.setupReferences();
    EXPECT_THAT(sets(), ElementsAre("2 deviceParameter: 0", "3 channelParams_1: 0",
                                    "4 parameter: 2 3", "5 channels: 1", "6 default: 4 5"));
}

TEST_F(References, aSecondCallAddsASecondRole)
{
    addChannel(0);
    parser.setupReferences();
    parser.setupReferences();
    EXPECT_THAT(sets(),
                ElementsAre("1 channels: 0", "2 default: 1", "3 channels: 0", "4 default: 3"));
}

TEST(ReferencesDeath, aMissingDeviceIsAFailedAssertion)
{
    ParserAccess parser;
    const std::string text = "vendor/mx/src/mxparser_kv38/.*Assertion `this->dev' failed";
    EXPECT_DEATH(parser.addStaticProperty("a", "b"), text);
    EXPECT_DEATH(parser.setupReferences(), text);
}

} // namespace
