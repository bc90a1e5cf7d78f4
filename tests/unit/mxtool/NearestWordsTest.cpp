#include "NearestWords.h"

#include <gmock/gmock.h>

namespace {

using mxtool::didYouMean;
using mxtool::nearestWords;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(NearestWords, areThoseOfFewestChanges)
{
    // 1, 2 and 2 changes; the others are farther than a third of the word.
    EXPECT_THAT(nearestWords("filtr", {"filet", "filter", "film", "wires", "flow"}),
                ElementsAre("filter", "filet", "film"));
}

TEST(NearestWords, disregardUpperAndLowerCase)
{
    EXPECT_THAT(nearestWords("EVEN", {"odd one", "even"}), ElementsAre("even"));
}

TEST(NearestWords, includeThoseThatBeginSo)
{
    EXPECT_THAT(nearestWords("Upper", {"Upper limit of the range", "Lower limit"}),
                ElementsAre("Upper limit of the range"));
}

TEST(NearestWords, areThreeAtMostAndEachOnce)
{
    EXPECT_THAT(nearestWords("a1", {"a2", "a2", "a3", "a4", "a5"}), ElementsAre("a2", "a3", "a4"));
}

TEST(NearestWords, mayBeNone)
{
    EXPECT_THAT(nearestWords("temperature", {"wires", ""}), IsEmpty());
    EXPECT_THAT(nearestWords("x", {}), IsEmpty());
    EXPECT_EQ(didYouMean("temperature", {"wires"}), "");
}

TEST(NearestWords, makeAQuestion)
{
    EXPECT_EQ(didYouMean("of", {"off", "on"}), ", did you mean \"off\" or \"on\"?");
}

} // namespace
