#include "images/StatedOutputs.h"

#include "channels/MadePlan.h"
#include "coupler/CouplerFixture.h"

#include <gtest/gtest.h>

namespace mxonline {

namespace {

// Two output channels of 6 bits each that have bits 4 and 5 of the image in common.
mxstation::Plan overlappingOutputs()
{
    mxstation::Plan plan = madePlan(0, 2);
    addField(plan, 0, 6).isInput = false;
    addField(plan, 4, 6).isInput = false;
    return plan;
}

TEST(StatedOutputs, MayAgreeOnTheBitsThatTheyShare)
{
    const mxstation::Plan plan = overlappingOutputs();
    // 11'0101 and 00'0011: bits 4 and 5 are 1 in both.
    const StatedOutputs stated =
        statedOutputs(plan, ChannelNames(plan), {{"C1", "0x35"}, {"C2", "0x03"}});
    EXPECT_EQ(stated.bits, (std::vector<ValueBits>{{0x35}, {0x03}}));
}

TEST(StatedOutputs, MustNotChangeEachOther)
{
    const mxstation::Plan plan = overlappingOutputs();
    EXPECT_EQ(failureOf([&] {
                  statedOutputs(plan, ChannelNames(plan), {{"C1", "0x35"}, {"C2", "0x02"}});
              }),
              "channel \"C1\" of module 1 \"M\" shares bits with another stated channel, which "
              "sets them differently");
}

} // namespace

} // namespace mxonline
