#include <text/Utf8.h>

#include <gmock/gmock.h>

namespace {

using text::repairedUtf8;

TEST(Utf8, hasCharactersOfOneToFourBytes)
{
    EXPECT_EQ(text::codePoints("a\u00B5\u20AC\U0001F600"), U"a\u00B5\u20AC\U0001F600");
    EXPECT_EQ(text::codePoints("\xB5\x81"), U"\u00B5\u0081"); // Windows-1252
    EXPECT_EQ(text::characterCount("a\u00B5\u20AC\U0001F600"), 4U);
    EXPECT_EQ(text::toUtf8(char32_t{0x1F600}), "\U0001F600");
}

TEST(Utf8, findsTheNextByteThatIsNone)
{
    EXPECT_EQ(text::nextNonUtf8("\u00B5s \xFC", 0), 4U);
    EXPECT_EQ(text::nextNonUtf8("\u00B5s", 1), 1U);
    EXPECT_EQ(text::nextNonUtf8("\u00B5s", 0), 3U);
}

TEST(Utf8, badBytesDoNotChangeTheCharactersAroundThem)
{
    EXPECT_EQ(repairedUtf8("\xC2\xB5s T\xFCr \xC2\xB0\x43"), "\xC2\xB5s T\xC3\xBCr \xC2\xB0\x43");
    EXPECT_EQ(repairedUtf8("\xC3"), "\xC3\x83");
    EXPECT_EQ(repairedUtf8(""), "");
}

TEST(Utf16, isKnownByItsMark)
{
    EXPECT_TRUE(text::isUtf16("\xFF\xFEm"));
    EXPECT_TRUE(text::isUtf16("\xFE\xFF"));
    EXPECT_FALSE(text::isUtf16("\xFF"));
    EXPECT_FALSE(text::isUtf16("m\xFF\xFE"));
}

} // namespace
