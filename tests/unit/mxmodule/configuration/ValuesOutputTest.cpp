#include "configuration/ConfigurationOutput.h"

#include "TestModule.h"
#include "configuration/ParameterNames.h"

#include <mxmodule/Assignment.h>

#include <gmock/gmock.h>

namespace {

using mxmodule::ConfiguredImage;
using mxmodule::Fieldbus;
using testing::HasSubstr;
using testing::Not;

std::vector<char> chars(const std::string& hex)
{
    const testkit::Bytes bytes = testkit::hexBytes(hex);
    return {bytes.begin(), bytes.end()};
}

class ValuesOutput : public testing::Test
{
protected:
    ConfiguredImage configuration(const std::string& image)
    {
        return configurationOf(*module, chars(image), Fieldbus::Raw);
    }

    TestModule module;
};

TEST_F(ValuesOutput, namesRangesOptionsAndDefaults)
{
    const std::string text = configurationValues(configuration("05 0a 0c 05 07 65 00 00"));
    EXPECT_THAT(text, HasSubstr("\n# off = #0 | slow = #5 | 5 = #2 | same = #3 | same = #4 | "
                                "9 = #7; default off\nFilter: slow\n"));
    EXPECT_THAT(text, HasSubstr("\nAI 2:\n  # 10 to 20 mA; default 11 mA\n  Level: 12 mA\n"));
    EXPECT_THAT(text, HasSubstr("\nGain: 50.5 V\n"));
}

TEST_F(ValuesOutput, optionsWhoseTextSaysTooLittleAreNumbers)
{
    EXPECT_THAT(configurationValues(configuration("02 0a 0b 05 07 64 00 00")),
                HasSubstr("\nFilter: \"#2\"\n")); // "5" is the number of another one
    EXPECT_THAT(configurationValues(configuration("03 0a 0b 05 07 64 00 00")),
                HasSubstr("\nFilter: \"#3\"\n")); // two are called "same"
    EXPECT_THAT(configurationValues(configuration("07 0a 0b 05 07 64 00 00")),
                HasSubstr("\nFilter: 9\n"));
    EXPECT_THAT(configurationValues(configuration("4d 0a 0b 05 07 64 00 00")),
                HasSubstr("; default off; takes --force\nFilter: \"#77\"\n"));
}

TEST_F(ValuesOutput, mayNameOnlyWhatDiffers)
{
    const std::string text =
        configurationValues(configuration("05 0a 0b 05 07 64 00 00"), mxmodule::Listing::Changed);
    EXPECT_THAT(text, HasSubstr("Filter: slow\n"));
    EXPECT_THAT(text, Not(HasSubstr("Level")));
    EXPECT_THAT(text, Not(HasSubstr("AI 1")));
}

TEST_F(ValuesOutput, anyTextComesBack)
{
    for (const char* name :
         {"- a",    "#x",  "a: b", "a #b", "yes",  "No",    "~",   "",    "\"", "\\", "-",
          "?",      "[a]", "{a}",  "\x01", "a\nb", "M\xE4", " a ", "1.5", "@x", "%x", "a/b",
          "schema", "a=b", "*a",   "&a",   "!a",   "|",     ">",   "'",   "---"}) {
        ConfiguredImage renamed = configuration("05 0a 0b 05 07 64 00 00");
        renamed.device.parameters[0].name = name;
        renamed.device.parameters[2].channelNames = {name};
        const auto values = mxmodule::readValues(configurationValues(renamed), "v.yaml");
        std::vector<std::string> ids;
        for (const auto& one : values.assignments) {
            ids.push_back(parameterCalled(one.name, renamed.device).id);
        }
        std::vector<std::string> expected;
        for (const auto& parameter : renamed.device.parameters) {
            if (!parameter.value.empty()) {
                expected.push_back(parameter.id);
            }
        }
        EXPECT_THAT(ids, testing::UnorderedElementsAreArray(expected)) << name;
    }
}

} // namespace
