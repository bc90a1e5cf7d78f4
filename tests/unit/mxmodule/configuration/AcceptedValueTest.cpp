#include "configuration/AcceptedValue.h"

#include "InvalidInput.h"
#include "TestModule.h"

#include <gmock/gmock.h>

namespace {

using mxmodule::DeviceReport;
using mxmodule::ValueCheck;
using testing::AllOf;
using testing::HasSubstr;

class AcceptedValue : public testing::Test
{
protected:
    // The value that is set, or the reason why none is.
    static std::string outcome(const DeviceReport::Parameter& parameter, const std::string& value,
                               ValueCheck check = ValueCheck::Full)
    {
        try {
            return acceptedValue(parameter, value, check);
        } catch (const mxmodule::InvalidInput& invalid) {
            return std::string("refused: ") + invalid.what();
        }
    }

    TestModule module;
    DeviceReport device = module.report();
    DeviceReport::Parameter& filter = device.parameters[0];
    DeviceReport::Parameter& level = device.parameters[1];
    DeviceReport::Parameter& gain = device.parameters[8];
};

TEST_F(AcceptedValue, ofAnOptionListIsTheTextOrTheNumber)
{
    EXPECT_EQ(outcome(filter, "off"), "0");
    EXPECT_EQ(outcome(filter, "slow"), "5");
    EXPECT_EQ(outcome(filter, "0"), "0");
    EXPECT_EQ(outcome(filter, "2"), "2");
}

TEST_F(AcceptedValue, aTextThatIsAnotherOptionsNumberIsRefused)
{
    EXPECT_THAT(outcome(filter, "5"),
                AllOf(HasSubstr("it is the text of option 2 and the number of another one"),
                      HasSubstr("write #2 or #5")));
}

TEST_F(AcceptedValue, aTextThatIsNobodysNumberIsTheText)
{
    EXPECT_EQ(outcome(filter, "9"), "7");
}

TEST_F(AcceptedValue, aTextThatIsItsOwnNumberHasOneMeaning)
{
    filter.options[2].text = "2";
    EXPECT_EQ(outcome(filter, "2"), "2");
}

TEST_F(AcceptedValue, aLongTextIsRefusedByItsBeginning)
{
    const std::string digits(100000, '1');
    EXPECT_THAT(outcome(filter, digits), HasSubstr("value \"" + digits.substr(0, 300) + " ...\""));
    EXPECT_THAT(outcome(level, digits), HasSubstr("value \"" + digits.substr(0, 300) + " ...\""));
}

TEST_F(AcceptedValue, aCrossIsAlwaysTheNumber)
{
    EXPECT_EQ(outcome(filter, "#5"), "5");
    EXPECT_EQ(outcome(filter, "#2"), "2");
    EXPECT_THAT(outcome(filter, "#9"), HasSubstr("no such option"));
}

// An option is selected by its text if that can mean nothing else, otherwise by "#" and its number.
TEST_F(AcceptedValue, ofEachOptionIsItsCallText)
{
    const auto texts = mxmodule::callTexts(filter);
    ASSERT_EQ(texts.size(), filter.options.size());
    for (std::size_t i = 0; i < texts.size(); ++i) {
        EXPECT_EQ(outcome(filter, texts[i]), filter.options[i].value) << texts[i];
    }
    EXPECT_EQ(texts[0], "off");
    EXPECT_EQ(texts[2], "#2"); // its text is the number of another option
}

TEST_F(AcceptedValue, aTextOfTwoOptionsIsRefused)
{
    EXPECT_THAT(outcome(filter, "same"), HasSubstr("several options have this text"));
    EXPECT_EQ(outcome(filter, "#4"), "4");
}

TEST_F(AcceptedValue, theNearestOptionsAreNamedAndAllAreListed)
{
    EXPECT_THAT(outcome(filter, "slwo"),
                AllOf(HasSubstr("value \"slwo\" is not accepted: no such option, did you mean "
                                "\"slow\"? Accepted: [off = 0] | slow = 5 | 5 = 2"),
                      HasSubstr("parameter \"Filter\" of the module")));
}

TEST_F(AcceptedValue, anUnlistedNumberNeedsForce)
{
    EXPECT_THAT(outcome(filter, "77"), HasSubstr("no such option"));
    EXPECT_EQ(outcome(filter, "77", ValueCheck::NumberOnly), "77");
    EXPECT_THAT(outcome(filter, "quick", ValueCheck::NumberOnly), HasSubstr("no such option"));
    EXPECT_THAT(outcome(filter, "5", ValueCheck::NumberOnly), HasSubstr("write #2 or #5"));
}

TEST_F(AcceptedValue, theUnlistedNumberThatStandsThereIsAccepted)
{
    filter.value = "88";
    EXPECT_EQ(outcome(filter, "88"), "88");
    EXPECT_EQ(outcome(filter, "#88"), "88");
}

TEST_F(AcceptedValue, liesInTheRange)
{
    EXPECT_EQ(outcome(level, "10"), "10");
    EXPECT_EQ(outcome(level, "20"), "20");
    EXPECT_THAT(outcome(level, "9"), HasSubstr("value \"9\" is not accepted: expected a whole "
                                               "number, 10 to 20 mA"));
    EXPECT_THAT(outcome(level, "21"), HasSubstr("10 to 20"));
    EXPECT_EQ(outcome(level, "21", ValueCheck::NumberOnly), "21");
}

TEST_F(AcceptedValue, mayHaveItsUnit)
{
    EXPECT_EQ(outcome(level, "15 mA"), "15");
    EXPECT_EQ(outcome(level, "15mA"), "15");
    EXPECT_THAT(outcome(level, "15 V"), HasSubstr("expected a whole number"));
    EXPECT_THAT(outcome(level, "mA"), HasSubstr("expected a whole number"));
}

TEST_F(AcceptedValue, ofAnIntegerHasNoFraction)
{
    for (const char* text : {"15.0", "1e1", "", " 15", "0x0f", "fifteen", "nan", "+"}) {
        EXPECT_THAT(outcome(level, text), HasSubstr("refused")) << text;
        EXPECT_THAT(outcome(level, text, ValueCheck::NumberOnly), HasSubstr("refused")) << text;
    }
    EXPECT_EQ(outcome(level, "+15"), "+15");
}

TEST_F(AcceptedValue, ofAConvertedParameterIsPhysical)
{
    // Factor 0.5: raw 0 to 255 is 0 to 127.5.
    EXPECT_EQ(outcome(gain, "127.5"), "127.5");
    EXPECT_EQ(outcome(gain, "1e1 V"), "1e1");
    EXPECT_EQ(outcome(gain, "127.7"), "127.7"); // nearest to raw 255, with a note
    EXPECT_THAT(outcome(gain, "127.8"), HasSubstr("expected a number, 0 to 127.5 V"));
    EXPECT_THAT(outcome(gain, "inf", ValueCheck::NumberOnly), HasSubstr("expected a number"));
}

TEST_F(AcceptedValue, mayBeThePresentOneThatIsNoNumber)
{
    gain.value = "inf"; // what a scale leads to that is too large for a float
    EXPECT_EQ(outcome(gain, "inf"), "inf");
    EXPECT_EQ(outcome(gain, "inf V"), "inf");
    EXPECT_THAT(outcome(gain, "nan"), HasSubstr("expected a number"));
    EXPECT_THAT(outcome(gain, "inf", ValueCheck::NumberOnly), HasSubstr("expected a number"));
    gain.unit = "f"; // ends the text as well
    EXPECT_EQ(outcome(gain, "inf"), "inf");
}

TEST_F(AcceptedValue, saysWhatMakesANumberNone)
{
    for (const char* text : {"5,3", "5,3 V", "-5,3V"}) {
        EXPECT_THAT(outcome(gain, text), HasSubstr("0 to 127.5 V, with a decimal point: ")) << text;
    }
    EXPECT_THAT(outcome(gain, "-5,3 V"), testing::EndsWith("with a decimal point: -5.3"));
    for (const char* text : {"5.3 mV", "53 kV", "5 v", "5 Ohm"}) {
        EXPECT_THAT(outcome(gain, text), HasSubstr("0 to 127.5 V, in V or without a unit")) << text;
    }
    for (const char* text : {"500", "500 V", "", "0x10", "V", "five V", "5,3,1"}) {
        EXPECT_THAT(outcome(gain, text), testing::Not(HasSubstr("127.5 V,"))) << text;
    }
}

TEST_F(AcceptedValue, bigNumbersAreComparedExactly)
{
    level.field = {mxformat::statedPosition(0), 8, 0, 0};
    level.rawMin = {true, 9223372036854775808U};
    level.rawMax = {false, 18446744073709551614U};
    EXPECT_EQ(outcome(level, "18446744073709551614"), "18446744073709551614");
    EXPECT_THAT(outcome(level, "18446744073709551615"), HasSubstr("refused"));
    EXPECT_THAT(outcome(level, "-9223372036854775809"), HasSubstr("refused"));
}

TEST_F(AcceptedValue, fitsIntoTheBits)
{
    filter.field = {mxformat::statedPosition(0), 5, 2, 0};
    EXPECT_THAT(
        outcome(filter, "slow"),
        HasSubstr("value \"slow\" is not accepted: its number 5 does not fit, expected 0 to "
                  "3, all that the parameter can hold"));
    EXPECT_THAT(outcome(filter, "#5", ValueCheck::NumberOnly), HasSubstr("does not fit"));
    EXPECT_EQ(outcome(filter, "#2"), "2");
    level.rawMax = {false, 300}; // a range beyond the byte
    EXPECT_THAT(outcome(level, "256"), HasSubstr("it does not fit, expected 0 to 255"));
    EXPECT_EQ(outcome(level, "255"), "255");
    EXPECT_THAT(outcome(gain, "127.8", ValueCheck::NumberOnly), HasSubstr("expected 0 to 127.5"));
}

TEST_F(AcceptedValue, aParameterWithoutBitsHasNone)
{
    filter.record.bitOffset = 8;
    filter.field = {mxformat::statedPosition(0), 5, 0, 8};
    for (const auto check : {ValueCheck::Full, ValueCheck::NumberOnly}) {
        EXPECT_THAT(outcome(filter, "slow", check),
                    HasSubstr("value \"slow\" is not accepted: the parameter has no value: its bit "
                              "offset is 8, expected 0 to 7"));
    }
}

TEST_F(AcceptedValue, aBareNumberIsOneWhateverTheUnit)
{
    level.unit = "1";
    EXPECT_EQ(outcome(level, "11"), "11");
    EXPECT_EQ(outcome(level, "12 1"), "12");
    level.unit = "1/s";
    EXPECT_EQ(outcome(level, "12 1/s"), "12");
    EXPECT_THAT(outcome(level, "121/s"), HasSubstr("refused"));
    level.unit = "mA";
    EXPECT_EQ(outcome(level, "12mA"), "12");
    gain.unit = "e1";
    EXPECT_EQ(outcome(gain, "1e1"), "1e1");
    EXPECT_EQ(outcome(gain, "7 e1"), "7");
}

TEST_F(AcceptedValue, theRangeIsOneOfRawValues)
{
    // 16777219 and 16777220 are one binary32.
    gain.scale = {1, 0};
    gain.rawMin = {};
    gain.rawMax = {false, 16777219};
    gain.field = {mxformat::statedPosition(0), 6, 0, 0}; // UInt32
    EXPECT_EQ(outcome(gain, "16777219"), "16777219");
    EXPECT_THAT(outcome(gain, "16777220"), HasSubstr("expected a number, 0 to 16777219 V"));
    EXPECT_EQ(outcome(gain, "16777220", ValueCheck::NumberOnly), "16777220");
    // The parameter has its greatest value, of which 576435.76 would be the text if the factor
    // were decimal; the nearest raw value is one more.
    gain.scale = {0.01F, 0.1F};
    gain.rawMax = {false, 57643566};
    gain.raw = gain.rawMax;
    EXPECT_THAT(outcome(gain, "576435.76"), HasSubstr("is not accepted"));
    EXPECT_EQ(outcome(gain, "576435.75"), "576435.75");
}

} // namespace
