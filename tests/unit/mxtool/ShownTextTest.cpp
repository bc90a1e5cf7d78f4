#include "ShownText.h"

#include <gtest/gtest.h>

namespace {

using mxtool::forTerminal;
using mxtool::toUtf8;

TEST(ShownText, validUtf8StaysAsItIs)
{
    for (const char* text : {"", "plain",
                             "\xC2\xB1"
                             "10 V",
                             "\xE2\x80\xA6", "\xF0\x9F\x98\x80"}) {
        EXPECT_EQ(toUtf8(text), text);
    }
}

TEST(ShownText, otherBytesAreReadAsWindows1252)
{
    EXPECT_EQ(toUtf8("\xB1"
                     "10 V"),
              "\xC2\xB1"
              "10 V");
    EXPECT_EQ(toUtf8("\x80"), "\xE2\x82\xAC"); // euro sign, U+20AC
    EXPECT_EQ(toUtf8("\x85"), "\xE2\x80\xA6"); // ellipsis, U+2026
    EXPECT_EQ(toUtf8("\x9F"), "\xC5\xB8");     // Y with diaeresis, U+0178
    EXPECT_EQ(toUtf8("\xFF"), "\xC3\xBF");     // y with diaeresis, U+00FF
    EXPECT_EQ(toUtf8("\x81"), "\xC2\x81");     // unassigned: the control character of that number
}

TEST(ShownText, malformedUtf8IsNotTakenForUtf8)
{
    // A lone lead byte, an overlong slash, a surrogate, a number beyond U+10FFFF, a cut sequence.
    for (const char* text : {"\xC2", "\xC0\xAF", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xE2\x82"}) {
        EXPECT_NE(toUtf8(text), text);
    }
    EXPECT_EQ(toUtf8("\xC0\xAF"), "\xC3\x80\xC2\xAF");
}

TEST(ShownText, everySingleByteGivesValidUtf8)
{
    for (int byte = 0; byte < 256; ++byte) {
        const std::string text = toUtf8(std::string(1, static_cast<char>(byte)));
        EXPECT_EQ(toUtf8(text), text) << byte; // what is valid stays as it is
    }
}

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
    EXPECT_EQ(mxtool::harmlessJson("{\n\"a\": \"\x7F\u009B\u202E\u00B5\\u001b\"\n}"),
              "{\n\"a\": \"\\u007f\\u009b\\u202e\u00B5\\u001b\"\n}");
}

TEST(CodePoints, areThoseOfTheText)
{
    EXPECT_EQ(mxtool::codePoints("a\u00E4\u20AC\U0001F600"), U"a\u00E4\u20AC\U0001F600");
    EXPECT_EQ(mxtool::codePoints("\x80"), U"\u20AC"); // Windows-1252
    EXPECT_EQ(mxtool::codePoints(""), U"");
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

TEST(BeginningOf, doesNotEndWithinACharacter)
{
    using mxtool::beginningOf;
    EXPECT_EQ(beginningOf("abc", 3), "abc");
    EXPECT_EQ(beginningOf("abcd", 3), "abc");
    EXPECT_EQ(beginningOf("ab\u20ACd", 3), "ab");
    EXPECT_EQ(beginningOf("ab\u20ACd", 4), "ab");
    EXPECT_EQ(beginningOf("ab\u20ACd", 5), "ab\u20AC");
    EXPECT_EQ(beginningOf("\U0001F600", 3), "");
    // Continuation bytes without a lead byte are no UTF-8: they are cut anywhere.
    EXPECT_EQ(beginningOf(std::string(100, '\x80'), 50).size(), 46U);
}

} // namespace
