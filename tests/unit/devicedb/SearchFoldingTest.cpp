#include <SearchFolding.h>
#include <SearchParts.h>

#include <gmock/gmock.h>

namespace {

using devices::database::bytesOfPart;
using devices::database::foldedForSearch;
using devices::database::partsCovering;
using devices::database::partsOf;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(SearchFolding, LettersLoseCaseAndAccents)
{
    EXPECT_EQ(foldedForSearch("Z\u00c4HLER gr\u00f6\u00dfe"), "zahler grosse");
    EXPECT_EQ(foldedForSearch("\u00e0\u00c7\u00e9\u00f1\u00d8\u00fc\u00ff\u00e6\u00c6"), "aceno"
                                                                                         "uyaeae");
    EXPECT_EQ(foldedForSearch("\u010cesk\u00fd \u0141\u00f3d\u017a \u0131\u0130 \u0152"),
              "cesky lodz ii oe");
    EXPECT_EQ(foldedForSearch("a\u0308"), "a"); // the umlaut as two characters
}

TEST(SearchFolding, SignsStay)
{
    EXPECT_EQ(foldedForSearch("\u00b110 V, 4-20 mA / \u00b0C \u20ac"),
              "\u00b110 v, 4-20 ma / \u00b0c \u20ac");
    EXPECT_EQ(foldedForSearch("\u00f7\u00f0\u00fe"), "\u00f7\u00f0\u00fe");
}

TEST(SearchFolding, MicroAndOhmAreGreekLetters)
{
    EXPECT_EQ(foldedForSearch("5 \u00b5s"), "5 \u03bcs");
    EXPECT_EQ(foldedForSearch("\u039cS"), "\u03bcs");
    EXPECT_EQ(foldedForSearch("k\u2126"), "k\u03c9");
    EXPECT_EQ(foldedForSearch("K\u03a9"), "k\u03c9");
}

// A part of a text folds to a part of the folded text, however it is cut.
TEST(SearchFolding, IsThatOfEachCharacter)
{
    for (char32_t character = 1; character < 0x250; ++character) {
        std::string text;
        if (character < 0x80) {
            text = static_cast<char>(character);
        } else {
            text += static_cast<char>(0xC0U | character >> 6U);
            text += static_cast<char>(0x80U | (character & 0x3FU));
        }
        EXPECT_EQ(foldedForSearch("a" + text + "b"), "a" + foldedForSearch(text) + "b");
        EXPECT_EQ(foldedForSearch(foldedForSearch(text)), foldedForSearch(text));
    }
}

std::vector<std::string> texts(const std::string& of)
{
    std::vector<std::string> parts;
    for (const auto part : partsOf(of)) {
        parts.push_back(bytesOfPart(part));
    }
    return parts;
}

TEST(SearchParts, AreOneToThreeCharactersOfALine)
{
    EXPECT_THAT(texts("\u00b10v"), ElementsAre("\u00b1", "0", "\u00b10", "v", "0v", "\u00b10v"));
    EXPECT_THAT(texts("ab\nc"), ElementsAre("a", "b", "ab", "c"));
    EXPECT_THAT(texts(""), IsEmpty());
    EXPECT_THAT(texts("\U0001F600x"), ElementsAre("\U0001F600", "x", "\U0001F600x"));
}

TEST(SearchParts, OfAWordCoverIt)
{
    EXPECT_THAT(partsCovering(""), IsEmpty());
    EXPECT_THAT(partsCovering("a"), ElementsAre("a"));
    EXPECT_THAT(partsCovering("\u03bcs"), ElementsAre("\u03bcs"));
    EXPECT_THAT(partsCovering("abc"), ElementsAre("abc"));
    EXPECT_THAT(partsCovering("abcd"), ElementsAre("abc", "bcd"));
    EXPECT_THAT(partsCovering("abcde"), ElementsAre("abc", "cde"));
    EXPECT_THAT(partsCovering("abcdef"), ElementsAre("abc", "cde", "def"));
    EXPECT_THAT(partsCovering("abcdefg"), ElementsAre("abc", "cde", "efg"));
}

} // namespace
