#include <text/TextWidth.h>
#include <text/Utf8.h>

#include <gtest/gtest.h>

namespace {

using text::columnsOf;
using text::fitted;
using text::labelOf;
using text::shortened;

TEST(TextWidth, countsCharactersWideOnesTwiceAndCombiningOnesNot)
{
    EXPECT_EQ(columnsOf(""), 0U);
    EXPECT_EQ(columnsOf("\u00E4b"), 2U);
    EXPECT_EQ(columnsOf("\u6E29\u5EA6"), 4U);
    EXPECT_EQ(columnsOf("e\u0301"), 1U);
    EXPECT_EQ(columnsOf("\U0001F600"), 2U);
}

TEST(TextWidth, aFittingTextIsNotShortened)
{
    EXPECT_EQ(shortened("abcd", 4), "abcd");
    EXPECT_EQ(shortened("", 0), "");
}

TEST(TextWidth, aLongTextEndsInAnEllipsisWithinTheColumns)
{
    EXPECT_EQ(shortened("abcde", 4), "abc\u2026");
    EXPECT_EQ(shortened("abcde", 1), "\u2026");
    EXPECT_EQ(shortened("abcde", 0), "");
    EXPECT_EQ(shortened("\u00E4\u00F6\u00FC", 2), "\u00E4\u2026");
    EXPECT_EQ(shortened("\u6E29\u5EA6\u6E29", 4), "\u6E29\u2026");
}

TEST(TextWidth, aFittedTextTakesExactlyTheColumns)
{
    EXPECT_EQ(fitted("ab", 4), "ab  ");
    EXPECT_EQ(fitted("abcde", 4), "abc\u2026");
    EXPECT_EQ(fitted("\u6E29\u5EA6\u6E29", 4), "\u6E29\u2026 ");
}

TEST(TextWidth, aShortenedNameKeepsTheNumberAtItsEnd)
{
    EXPECT_EQ(text::shortenedName("Overload 1", 10), "Overload 1");
    EXPECT_EQ(text::shortenedName("Overload 12", 7), "Over\u202612");
    EXPECT_EQ(text::shortenedName("A 1234567", 7), "A 1234\u2026");
}

TEST(LabelOf, makesVisibleWhatIsNoText)
{
    EXPECT_EQ(labelOf("a\033b\n"), "a\\x1bb\\x0a");
    EXPECT_EQ(labelOf("a" + text::toUtf8(U'\u202E') + "b"), "a\\u202eb");
    EXPECT_EQ(labelOf("a\xEF\xBF\xBF"), "a\uFFFD");
    EXPECT_EQ(labelOf("20 \xB0"), "20 \u00B0");
}

TEST(LabelOf, isAtMostHundredColumns)
{
    EXPECT_EQ(labelOf(std::string(100, 'x')), std::string(100, 'x'));
    EXPECT_EQ(labelOf(std::string(60000, 'x')), std::string(99, 'x') + "\u2026");
}

TEST(LabelOf, aTextThatTakesNoColumnsIsMarkedAsCut)
{
    std::string text = "e";
    for (int i = 0; i < 1000; ++i) {
        text += "\u0301";
    }
    const std::string label = labelOf(text); // 1 byte, 499 characters of 2 bytes
    EXPECT_EQ(label.size(), 1U + 2 * 499 + 3);
    EXPECT_EQ(label.substr(label.size() - 3), "\u2026");
}

} // namespace
