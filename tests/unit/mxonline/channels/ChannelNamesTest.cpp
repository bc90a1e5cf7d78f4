// Names in a station with the modules 1 "Tank" (Level, Level high, Pump) and 2 "3" (Level, Level),
// 3 "Tank 2".
#include "channels/MadePlan.h"

#include "channels/ChannelNames.h"

#include <gmock/gmock.h>

namespace mxonline {

namespace {

using mxmodule::Failure;
using testing::ElementsAre;

mxstation::Channel& addNamed(mxstation::Plan& plan, std::size_t module, const std::string& name,
                             const std::string& alias = "")
{
    mxstation::Channel& channel = addField(plan, 80 + plan.channels.size(), 1);
    channel.module = module;
    channel.moduleName = module == 1 ? "Tank" : module == 2 ? "3" : "Tank 2";
    channel.name = name;
    channel.alias = alias;
    return channel;
}

// Numbers and identifiers are those of the row: 1 to 7.
mxstation::Plan planOfNames()
{
    mxstation::Plan plan = madePlan(2, 0);
    addNamed(plan, 1, "Level", "LT_101");
    addNamed(plan, 1, "Level high");
    addNamed(plan, 1, "Pump", "Level"); // an alias as the name of another channel
    addNamed(plan, 2, "Level");
    addNamed(plan, 2, "Level");
    addNamed(plan, 3, "Valve A/B");
    addNamed(plan, 3, "Far").firstBit = 8000;
    return plan;
}

class ChannelNamesOf : public testing::Test
{
protected:
    mxstation::Plan plan = planOfNames();
    ChannelNames names{plan};

    std::string reasonFor(const std::string& name) const
    {
        try {
            return "found " + std::to_string(names.find(name));
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.reason().origin, mxmodule::Origin::Request);
            return failure.reason().text;
        }
    }
};

TEST_F(ChannelNamesOf, FindsAliasModuleAndChannelOrChannelAlone)
{
    EXPECT_EQ(names.find("LT_101"), 0U);
    EXPECT_EQ(names.find("Tank/Level"), 0U);
    EXPECT_EQ(names.find("1/Level"), 0U);
    EXPECT_EQ(names.find("Level high"), 1U);
    EXPECT_EQ(names.find("Pump"), 2U);
    EXPECT_EQ(names.find("Tank/3"), 2U);
    EXPECT_EQ(names.find("1/3 Pump"), 2U);
    EXPECT_EQ(names.find("2/#5"), 4U);
    EXPECT_EQ(names.find("Tank 2/Valve A/B"), 5U);
    EXPECT_EQ(names.find("Valve A/B"), 5U);
}

TEST_F(ChannelNamesOf, TakesAnAliasBeforeTheNameOfAnother)
{
    EXPECT_EQ(names.find("Level"), 2U);
}

TEST_F(ChannelNamesOf, RejectsANameOfSeveral)
{
    EXPECT_EQ(reasonFor("2/Level"), "\"2/Level\" fits 2 channels: 3/#4, 3/#5");
    EXPECT_EQ(reasonFor("3/Level"), "\"3/Level\" fits 2 channels: 3/#4, 3/#5");
}

TEST_F(ChannelNamesOf, RejectsUnknownNamesWithTheNearest)
{
    EXPECT_EQ(reasonFor("LT_102"), "the station has no channel \"LT_102\", did you mean "
                                   "\"LT_101\"?");
    EXPECT_EQ(reasonFor("tank/pump"), "the station has no channel \"tank/pump\", did you mean "
                                      "\"Tank/Pump\"?");
    EXPECT_EQ(reasonFor("Tank"),
              "the station has no channel \"Tank\", did you mean \"Tank/Level\" or "
              "\"Tank/Level high\" or \"Tank/Pump\"?");
    EXPECT_EQ(reasonFor(""), "the station has no channel \"\"");
    EXPECT_EQ(reasonFor("/Level"), "the station has no channel \"/Level\", did you mean "
                                   "\"Level\" or \"3/Level\"?");
}

TEST_F(ChannelNamesOf, RejectsAChannelWithoutAValue)
{
    EXPECT_EQ(
        reasonFor("Far"),
        "the channel \"Far\" of module 3 \"Tank 2\" is outside the input image: it has no value");
}

TEST_F(ChannelNamesOf, SelectsChannelsAndWholeModulesInTheOrderOfThePlan)
{
    EXPECT_THAT(names.select({}), ElementsAre(0, 1, 2, 3, 4, 5));
    EXPECT_THAT(names.select({"Pump", "LT_101", "Tank/Pump"}), ElementsAre(0, 2));
    EXPECT_THAT(names.select({"Tank 2", "Tank"}), ElementsAre(0, 1, 2, 5));
    EXPECT_THAT(names.select({"2"}), ElementsAre(3, 4));
    EXPECT_THAT(names.select({"3"}), ElementsAre(3, 4, 5)); // a name and a position
}

TEST_F(ChannelNamesOf, SelectsNothingWithAnyErrorAndReportsAll)
{
    try {
        static_cast<void>(names.select({"Tanc", "Pump", "2/Level"}));
        FAIL();
    } catch (const Failure& failure) {
        ASSERT_EQ(failure.findings().size(), 2U);
        EXPECT_EQ(failure.findings()[0].text, "the station has no channel or module with channels "
                                              "\"Tanc\", did you mean \"Tank\"?");
        EXPECT_EQ(failure.findings()[1].text, "\"2/Level\" fits 2 channels: 3/#4, 3/#5");
    }
}

TEST_F(ChannelNamesOf, NamesEachChannelSoThatItIsFound)
{
    EXPECT_EQ(names.nameOf(0), "LT_101");
    EXPECT_EQ(names.nameOf(1), "Tank/Level high");
    EXPECT_EQ(names.nameOf(2), "Level");
    EXPECT_EQ(names.nameOf(4), "3/#5");
    for (std::size_t i = 0; i < 6; ++i) {
        EXPECT_EQ(names.find(names.nameOf(i)), i);
    }
}

} // namespace

} // namespace mxonline
