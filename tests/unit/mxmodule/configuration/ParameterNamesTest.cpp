#include "configuration/ParameterNames.h"

#include "InvalidInput.h"
#include "ParameterText.h"
#include "TestModule.h"

#include <gmock/gmock.h>

namespace {

using mxmodule::InvalidInput;
using mxmodule::parameterCalled;
using mxmodule::parametersCalled;
using mxmodule::splitAssignment;
using testing::AllOf;
using testing::HasSubstr;
using testing::Pair;

class ParameterNames : public testing::Test
{
protected:
    std::string messageFor(const std::string& name)
    {
        try {
            parameterCalled(name, device);
        } catch (const InvalidInput& invalid) {
            return invalid.what();
        }
        return "accepted";
    }

    std::pair<std::string, std::string> split(const std::string& words)
    {
        return splitAssignment(words, device, mxmodule::ValueCheck::Full);
    }

    TestModule module;
    mxmodule::DeviceReport device = module.report();
};

TEST_F(ParameterNames, aNameOfItsOwnIsEnough)
{
    EXPECT_EQ(&parameterCalled("Filter", device), &device.parameters[0]);
}

TEST_F(ParameterNames, theModuleCanBeNamedAsWell)
{
    EXPECT_EQ(&parameterCalled("module/Filter", device), &device.parameters[0]);
}

TEST_F(ParameterNames, channelsAreNamedByNameOrNumber)
{
    EXPECT_EQ(&parameterCalled("AI 2/Level", device), &device.parameters[2]);
    EXPECT_EQ(&parameterCalled("1/Level", device), &device.parameters[2]);
    EXPECT_EQ(&parameterCalled("0/Level", device), &device.parameters[1]);
}

TEST_F(ParameterNames, anIdentifierIsEnough)
{
    EXPECT_EQ(&parameterCalled("#" + device.parameters[2].id, device), &device.parameters[2]);
}

TEST_F(ParameterNames, namesMayHoldASlash)
{
    EXPECT_EQ(&parameterCalled("X/Y", device), &device.parameters[4]);
    EXPECT_EQ(&parameterCalled("module/X/Y", device), &device.parameters[4]);
    EXPECT_THAT(messageFor("AI 1/X/Y"), HasSubstr("No parameter is called \"AI 1/X/Y\""));
}

TEST_F(ParameterNames, severalOfANameAreListed)
{
    EXPECT_EQ(messageFor("Level"), "2 parameters are called \"Level\", expected one of "
                                   "\"AI 1/Level\", \"AI 2/Level\"");
}

TEST_F(ParameterNames, wherePlainNamesDoNotTellTheIdentifierIsOffered)
{
    device.parameters[2].channelNames = {"AI 1"};
    EXPECT_EQ(messageFor("AI 1/Level"), "2 parameters are called \"AI 1/Level\", expected one of "
                                        "\"#" +
                                            device.parameters[1].id + "\", \"#" +
                                            device.parameters[2].id + "\"");
}

TEST_F(ParameterNames, theNearestNamesAreOffered)
{
    EXPECT_EQ(messageFor("Filtr"), "No parameter is called \"Filtr\", did you mean \"Filter\"?");
    EXPECT_THAT(messageFor("AI 3/Level"),
                AllOf(HasSubstr("\"AI 1/Level\""), HasSubstr("\"AI 2/Level\"")));
    EXPECT_EQ(messageFor("Wavelength of light"), "No parameter is called \"Wavelength of light\"");
}

TEST_F(ParameterNames, theIdentifiersThatThereAreAreListed)
{
    device.parameters.resize(2);
    device.parameters[0].id = "30";
    device.parameters[1].id = "31";
    EXPECT_EQ(messageFor("#3"), "No parameter has the identifier #3, expected one of #30, #31");
}

TEST_F(ParameterNames, aModuleWithoutParametersSaysSo)
{
    device.parameters.clear();
    EXPECT_EQ(messageFor("Filter"), "No parameter \"Filter\": the module has no parameters");
    EXPECT_TRUE(parametersCalled("#1", device).empty());
}

TEST_F(ParameterNames, areGivenInUtf8)
{
    device.parameters[0].name = "Ma\xDF"; // Windows-1252
    EXPECT_EQ(&parameterCalled("Maß", device), &device.parameters[0]);
}

TEST_F(ParameterNames, channelsAreNamedAsTablesShowThem)
{
    EXPECT_EQ(&parameterCalled("1 AI 2/Level", device), &device.parameters[2]);
    EXPECT_EQ(&parameterCalled("0 AI 1/Level", device), &device.parameters[1]);
    device.parameters[2].channelNames = {"AI 2", "AO 2"};
    EXPECT_EQ(&parameterCalled("1 AI 2, AO 2/Level", device), &device.parameters[2]);
    EXPECT_EQ(&parameterCalled("1 AO 2/Level", device), &device.parameters[2]);
    EXPECT_THAT(messageFor("0 AI 2/Level"), HasSubstr("No parameter is called"));
}

TEST_F(ParameterNames, noHintIsAmbiguousAgain)
{
    EXPECT_EQ(messageFor("Levl"),
              "No parameter is called \"Levl\", did you mean \"AI 1/Level\" or \"AI 2/Level\"?");
    // A parameter of the module whose name is how a call names one of a channel.
    device.parameters[4].name = "AI 1/Level";
    EXPECT_EQ(messageFor("Level"), "2 parameters are called \"Level\", expected one of \"#" +
                                       device.parameters[1].id + "\", \"AI 2/Level\"");
    EXPECT_EQ(nameInCalls(device.parameters[4], device), "module/AI 1/Level");
}

TEST_F(ParameterNames, whatCannotBeTypedIsCalledByItsIdentifier)
{
    device.parameters[0].name = "Filter\n";
    EXPECT_EQ(nameInCalls(device.parameters[0], device), "#" + device.parameters[0].id);
    device.parameters[0].name = "#7";
    EXPECT_EQ(nameInCalls(device.parameters[0], device), "module/#7");
}

TEST_F(ParameterNames, anAssignmentIsSplitAfterAName)
{
    EXPECT_THAT(split("Filter=off"), Pair("Filter", "off"));
    EXPECT_THAT(split("A=B=5"), Pair("A=B", "5"));
    EXPECT_THAT(split("Filter=a=b"), Pair("Filter", "a=b"));
    EXPECT_THAT(split("Filter="), Pair("Filter", ""));
    EXPECT_THAT(split("unknown=a=b"), Pair("unknown", "a=b"));
    EXPECT_THROW(split("Filter"), InvalidInput);
}

TEST_F(ParameterNames, ofTwoNamesTheOneWhoseParameterAcceptsTheValueCounts)
{
    device.parameters[4].name = "A"; // 0 to 255, as "A=B"
    EXPECT_THAT(split("A=B=5"), Pair("A=B", "5"));
    EXPECT_THAT(split("A=5"), Pair("A", "5"));
}

TEST_F(ParameterNames, whatCanBeReadInTwoWaysIsRefusedWithBoth)
{
    device.parameters[0].name = "A"; // with options
    device.parameters[0].options[1].text = "B=5";
    const std::string list = device.parameters[0].id;
    const std::string number = device.parameters[3].id;
    try {
        split("A=B=5");
        ADD_FAILURE() << "accepted";
    } catch (const InvalidInput& invalid) {
        EXPECT_STREQ(invalid.what(), "\"A=B=5\" can be read in 2 ways: \"A\" set to \"B=5\", or "
                                     "\"A=B\" set to \"5\"");
        EXPECT_EQ(invalid.hint, "write one of \"#" + list + "=B=5\", \"#" + number + "=5\"");
    }
    EXPECT_THAT(split("#" + list + "=B=5"), Pair("#" + list, "B=5"));
    EXPECT_THAT(split("#" + number + "=5"), Pair("#" + number, "5"));
    EXPECT_EQ(nameInCalls(device.parameters[3], device), "#" + number);
}

// The bits of "A" cannot hold the number of its option: that meaning is not considered.
TEST_F(ParameterNames, aValueThatDoesNotFitIsNoReading)
{
    device.parameters[0].name = "A";
    device.parameters[0].options[1].text = "B=5"; // of the number 5
    device.parameters[0].field = {mxformat::statedPosition(0), 5, 2, 0};
    EXPECT_THAT(split("A=B=5"), Pair("A=B", "5"));
    EXPECT_THAT(splitAssignment("A=B=5", device, mxmodule::ValueCheck::NumberOnly),
                Pair("A=B", "5"));
}

TEST_F(ParameterNames, ofReadingsWithoutAnAcceptedValueEachIsTold)
{
    device.parameters[4].name = "A"; // 0 to 255, as "A=B"
    try {
        split("A=B=256");
        ADD_FAILURE() << "accepted";
    } catch (const InvalidInput& invalid) {
        EXPECT_STREQ(invalid.what(), "\"A=B=256\" can be read in 2 ways, no value is accepted: "
                                     "\"A\" set to \"B=256\", or \"A=B\" set to \"256\"");
        EXPECT_EQ(invalid.hint, "#" + device.parameters[4].id + " accepts 0 to 255; #" +
                                    device.parameters[3].id + " accepts -128 to 127");
    }
}

TEST_F(ParameterNames, anIdentifierWithoutItsCrossIsRecognised)
{
    const std::string id = device.parameters[1].id;
    try {
        parameterCalled(id, device);
        ADD_FAILURE() << "accepted";
    } catch (const InvalidInput& invalid) {
        EXPECT_EQ(invalid.what(),
                  "No parameter is called \"" + id + "\", did you mean \"#" + id + "\"?");
        EXPECT_EQ(invalid.hint,
                  "#" + id + " is parameter \"Level\" of channel 0 AI 1 (#" + id + ", byte 1)");
    }
}

TEST_F(ParameterNames, anIdentifierIsNeverTheBeginningOfAName)
{
    const std::string id = device.parameters[0].id;
    device.parameters[4].name = "#" + id + "=off";
    EXPECT_THAT(split("#" + id + "=off=1"), Pair("#" + id, "off=1"));
}

TEST_F(ParameterNames, placesAreStatedInBytesAndBits)
{
    EXPECT_EQ(mxmodule::described(device.parameters[5]), "parameter \"Low bits\" of the module (#" +
                                                             device.parameters[5].id +
                                                             ", byte 4 bits 0 to 2)");
    device.parameters[1].field = {mxformat::statedPosition(1), 6, 0, 0};
    EXPECT_EQ(mxmodule::described(device.parameters[1]),
              "parameter \"Level\" of channel 0 AI 1 (#" + device.parameters[1].id +
                  ", bytes 1 to 4)");
    device.parameters[5].record.bitLength = 1;
    EXPECT_THAT(mxmodule::described(device.parameters[5]), HasSubstr("byte 4 bit 0)"));
}

} // namespace
