#include <text/NearestWords.h>

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using text::didYouMean;
using text::nearestWords;

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

TEST(NearestWords, disregardHowARareCharacterIsTyped)
{
    const std::vector<std::string> ranges = {"0-10 V", "\u00B110 V", "10 \u00B5s", "10 \u03BCs"};
    for (const char* typed : {"+-10 V", "+/-10 V", "\u00B110 v"}) {
        EXPECT_THAT(nearestWords(typed, ranges), ElementsAre("\u00B110 V")) << typed;
    }
    EXPECT_THAT(nearestWords("10 us", ranges), ElementsAre("10 \u00B5s", "10 \u03BCs"));
    EXPECT_EQ(nearestWords("+-10V", ranges).front(), "\u00B110 V"); // one blank, the others two
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
