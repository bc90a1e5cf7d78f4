#include <text/ShownText.h>
#include <text/Utf8.h>

#include <gtest/gtest.h>

namespace {

using text::forTerminal;
using text::toUtf8;

TEST(ShownText, controlCharactersAreEscapedForTheTerminal)
{
    EXPECT_EQ(forTerminal("a\033[31mb"), "a\\x1b[31mb");
    EXPECT_EQ(forTerminal(std::string("\0\r\n\t\x7F", 5)), "\\x00\\x0d\\x0a\\x09\\x7f");
    EXPECT_EQ(forTerminal("\xC2\x9B"), "\\x9b"); // the one-byte introducer of terminal sequences
    EXPECT_EQ(forTerminal("\xC2\xB5"), "\xC2\xB5");
}

TEST(ShownText, whatTurnsTheLineIsEscapedForTheTerminal)
{
    EXPECT_EQ(forTerminal("a\u202Eb\u2066c\u2028d\u061Ce\u200F"),
              "a\\u202eb\\u2066c\\u2028d\\u061ce\\u200f");
    EXPECT_EQ(forTerminal("\u2027\u202F\u2065\u206A"), "\u2027\u202F\u2065\u206A");
}

TEST(HarmlessJson, hasWhatJsonLeavesAsItIsEscaped)
{
    EXPECT_EQ(text::harmlessJson("{\n\"a\": \"\x7F\u009B\u202E\u00B5\\u001b\"\n}"),
              "{\n\"a\": \"\\u007f\\u009b\\u202e\u00B5\\u001b\"\n}");
}

TEST(CodePoints, areThoseOfTheText)
{
    EXPECT_EQ(text::codePoints("a\u00E4\u20AC\U0001F600"), U"a\u00E4\u20AC\U0001F600");
    EXPECT_EQ(text::codePoints("\x80"), U"\u20AC"); // Windows-1252
    EXPECT_EQ(text::codePoints(""), U"");
}

TEST(CodePoints, becomeTheSameTextAgain)
{
    std::string text;
    for (const char32_t point :
         {U'\x7F', U'\u0080', U'\u07FF', U'\u0800', U'\uFFFF', U'\U00010000', U'\U0010FFFF'}) {
        text += toUtf8(point);
    }
    EXPECT_EQ(text, "\x7F\u0080\u07FF\u0800\uFFFF\U00010000\U0010FFFF");
}

} // namespace
