#include "mxformat/RegisterOrder.h"

#include <gmock/gmock.h>

namespace {

using mxformat::registerOrder;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(RegisterOrder, isThatOfTheModuleThenOfEachChannel)
{
    EXPECT_THAT(registerOrder({1, 255, 0, 1, 255}, {1, 0}), ElementsAre(1, 4, 0, 3, 2));
}

TEST(RegisterOrder, holdsTheParametersOfANumberOncePerChannelThatHasIt)
{
    EXPECT_THAT(registerOrder({3, 3}, {3, 4, 3}), ElementsAre(0, 1, 0, 1));
    EXPECT_THAT(registerOrder({255}, {255}), ElementsAre(0, 0));
}

TEST(RegisterOrder, leavesOutWhatBelongsToNoChannel)
{
    EXPECT_THAT(registerOrder({7, 255}, {}), ElementsAre(1));
    EXPECT_THAT(registerOrder({}, {1}), IsEmpty());
}

} // namespace
