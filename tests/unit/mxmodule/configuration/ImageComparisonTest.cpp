#include "configuration/ConfiguredImage.h"

#include "HexBytes.h"
#include "TestModule.h"
#include "configuration/ConfigurationOutput.h"

#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

namespace {

using mxmodule::Fieldbus;
using mxmodule::ImageComparison;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// The image of the module is 00 0a 0b 05 07 64 00 00: Filter, Level of AI 1, Level of AI 2, A=B,
// Low bits (0 to 2) and Whole byte, Gain, X/Y, nothing.
class Compared : public testing::Test
{
protected:
    ImageComparison of(const std::string& wanted, const std::string& read)
    {
        return compared(configurationOf(*module, mxmodule::bytesOfHex(wanted), Fieldbus::Raw),
                        configurationOf(*module, mxmodule::bytesOfHex(read), Fieldbus::Raw));
    }

    static std::vector<std::string> namesOf(const ImageComparison& comparison)
    {
        std::vector<std::string> names;
        for (const auto& place : comparison.deviations) {
            names.push_back(comparison.wanted.device.parameters[place.parameter].name);
        }
        return names;
    }

    TestModule module;
};

TEST_F(Compared, whatIsTheSameDeviatesNowhere)
{
    const ImageComparison same = of("05 0a 0b 05 07 64 00 00", "05 0a 0b 05 07 64 00 00");
    EXPECT_TRUE(same.isSame());
    EXPECT_THAT(comparisonText(same), HasSubstr("0 of 9 parameters deviate"));
}

TEST_F(Compared, parametersDeviateInTheirBits)
{
    const ImageComparison comparison = of("05 0a 0b 05 07 64 00 00", "05 0a 0c 05 0f 64 00 00");
    EXPECT_FALSE(comparison.isSame());
    EXPECT_THAT(namesOf(comparison), ElementsAre("Level", "Whole byte"));
    EXPECT_THAT(comparison.strayBytes, IsEmpty());
    const std::string text = comparisonText(comparison);
    EXPECT_THAT(text, HasSubstr("2           1 AI 2        Level       11 mA"));
    EXPECT_THAT(text, HasSubstr("2 of 9 parameters deviate from the wanted values\n"));
}

TEST_F(Compared, bitsOfNoParameterCount)
{
    const ImageComparison comparison = of("05 0a 0b 05 07 64 00 00", "05 0a 0b 05 07 64 00 31");
    EXPECT_FALSE(comparison.isSame());
    EXPECT_THAT(namesOf(comparison), IsEmpty());
    EXPECT_THAT(comparison.strayBytes, ElementsAre(7));
    ASSERT_EQ(notesOf(comparison, "here").size(), 1U);
    EXPECT_EQ(notesOf(comparison, "here").front().text,
              "Bits of no parameter differ: byte 7 is 0x31, wanted 0x00");
}

TEST_F(Compared, isJsonAndCsv)
{
    const ImageComparison comparison = of("05 0a 0b 05 07 64 00 00", "00 0a 0b 05 07 64 00 31");
    const auto json = nlohmann::json::parse(comparisonJson(comparison));
    EXPECT_EQ(json["schema"]["name"], "mxtool.config-comparison");
    EXPECT_EQ(json["same"], false);
    ASSERT_EQ(json["deviations"].size(), 1U);
    EXPECT_EQ(json["deviations"][0]["wanted_shown"], "slow");
    EXPECT_EQ(json["deviations"][0]["read_shown"], "off");
    EXPECT_EQ(json["deviations"][0]["register"], nullptr);
    EXPECT_EQ(json["stray_bytes"][0]["byte"], 7);
    EXPECT_THAT(comparisonCsv(comparison), HasSubstr(",Filter,slow,off,0,1,0,0,05,00,kv38."));
}

} // namespace
