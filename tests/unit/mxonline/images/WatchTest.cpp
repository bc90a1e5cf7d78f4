#include "images/ImageStation.h"

#include <mxonline/Watch.h>

#include <gmock/gmock.h>

namespace mxonline {

namespace {

using testing::ElementsAre;

using Texts = std::vector<std::string>;

// As "NAME VALUE", with "*" where it changed.
Texts shown(const Watch& watch, const Sample& sample)
{
    Texts lines;
    for (std::size_t i = 0; i < sample.values.size(); ++i) {
        lines.push_back(watch.channels()[i].name + " " + sample.values[i].text +
                        (sample.isChanged[i] ? " *" : ""));
    }
    return lines;
}

// AI 1 is 0xFFFE, AI 2 0x0003; overload 1 of the pumps is on, 2 off.
void putInputs(RegisterPeer& peer)
{
    putRow(peer);
    peer.put(100, {0x01FF, 0xFE00, 0x0300, 0x0000, 0x0000});
    peer.put(200, {0x8012, 0x3400, 0x0000, 0x0000, 0x0000});
}

TEST(Watch, ReadsTheValuesOfBothImages)
{
    RegisterPeer peer;
    putInputs(peer);
    Coupler coupler(onlinePlan(imageStation()), peer.target());
    Watch watch(coupler, {"LT_101", "Levels/AI 2", "P_101_fault", "Overload 2", "P_101", "DO 8",
                          "Valves/AO 1"});
    EXPECT_THAT(shown(watch, watch.sample()),
                ElementsAre("P_101 0", "Pumps/DO 8 1", "P_101_fault 1", "Pumps/Overload 2 0",
                            "LT_101 -2", "Levels/AI 2 3", "Valves/AO 1 4660"));
}

TEST(Watch, TakesTheFirstByteFromTheLowByteWhereTheMapSaysSo)
{
    RegisterPeer peer;
    putRow(peer);
    peer.put(500, {0x025A, 0x0802, 0x035A, 0x0403, 0x045A, 0x0404});
    peer.put(100, {0xFF01, 0x00FE});
    Coupler coupler(onlinePlan(imageStation("bytes: little, ")), peer.target());
    Watch watch(coupler, {"LT_101", "P_101_fault"});
    EXPECT_THAT(shown(watch, watch.sample()), ElementsAre("P_101_fault 1", "LT_101 -2"));
}

TEST(Watch, MarksWhatDiffersFromTheSampleBefore)
{
    RegisterPeer peer;
    putInputs(peer);
    Coupler coupler(onlinePlan(imageStation()), peer.target());
    Watch watch(coupler, {"LT_101", "Levels/AI 2"});
    EXPECT_FALSE(watch.sample().hasChanges());
    peer.put(101, {0xFD00});
    const Sample changed = watch.sample();
    EXPECT_TRUE(changed.hasChanges());
    EXPECT_THAT(shown(watch, changed), ElementsAre("LT_101 -3 *", "Levels/AI 2 3"));
    EXPECT_FALSE(watch.sample().hasChanges());
}

// Identity once; then a request for each image, of the registers of the channels alone.
TEST(Watch, SendsOneRequestForEachImage)
{
    RegisterPeer peer;
    putInputs(peer);
    Coupler coupler(onlinePlan(imageStation()), peer.target());
    Watch all(coupler);
    EXPECT_EQ(all.requestCount(), 2U);
    EXPECT_EQ(all.channels().size(), 8U + 6U + 4U + 4U);
    all.sample();
    all.sample();
    Watch inputsAlone(coupler, {"Levels/AI 4"});
    inputsAlone.sample();
    EXPECT_THAT(peer.requests(), ElementsAre("3 500 6", "4 100 5", "3 200 5", "4 100 5", "3 200 5",
                                             "3 500 6", "4 103 2"));
}

// Four registers a request: bytes 0 to 6 are registers 100 to 103, AI 4 in bytes 7 and 8 needs 103
// and 104, and is not divided.
TEST(Watch, NeverDividesAValue)
{
    RegisterPeer peer;
    putInputs(peer);
    Coupler coupler(onlinePlan(imageStation("most_read: 4, ")), peer.target());
    Watch watch(coupler, {"Levels"});
    watch.sample();
    EXPECT_THAT(peer.requests(), ElementsAre("3 500 4", "3 504 2", "4 100 4", "4 103 2"));
}

TEST(Watch, ReadsNothingFromAnotherRow)
{
    RegisterPeer peer;
    putInputs(peer);
    peer.put(503, {0x0302});
    Coupler coupler(onlinePlan(imageStation()), peer.target());
    Watch watch(coupler);
    EXPECT_EQ(failureOf([&watch] { watch.sample(); }),
              "module 2 \"Levels\" is 5a030304 in the station, the coupler has 5a030302");
    EXPECT_THAT(peer.requests(), ElementsAre("3 500 6"));
}

TEST(Watch, GoesOnAfterAFault)
{
    RegisterPeer peer;
    putInputs(peer);
    Coupler coupler(onlinePlan(imageStation()), peer.target());
    Watch watch(coupler, {"LT_101"});
    watch.sample();
    peer.answersUntilSilence = 0;
    EXPECT_NE(failureOf([&watch] { watch.sample(); }), "no failure");
    peer.answersUntilSilence = -1;
    peer.put(101, {0x0500});
    EXPECT_THAT(shown(watch, watch.sample()), ElementsAre("LT_101 -251 *"));
}

TEST(Watch, IdentifiesTheModulesAgainAfterAFault)
{
    RegisterPeer peer;
    putInputs(peer);
    Coupler coupler(onlinePlan(imageStation()), peer.target());
    Watch watch(coupler, {"LT_101"});
    watch.sample();
    peer.answersUntilSilence = 0;
    EXPECT_NE(failureOf([&watch] { watch.sample(); }), "no failure");
    peer.answersUntilSilence = -1;
    peer.put(503, {0x0302});
    for (int again = 0; again < 2; ++again) {
        EXPECT_EQ(failureOf([&watch] { watch.sample(); }),
                  "module 2 \"Levels\" is 5a030304 in the station, the coupler has 5a030302");
    }
}

TEST(Watch, SendsNothingForAnUnknownName)
{
    RegisterPeer peer;
    Coupler coupler(onlinePlan(imageStation()), peer.target());
    EXPECT_EQ(failureOf([&coupler] { Watch(coupler, {"LT_102"}); }),
              "the station has no channel or module with channels \"LT_102\", did you mean "
              "\"LT_101\"?");
    EXPECT_TRUE(peer.requests().empty());
}

} // namespace

} // namespace mxonline
