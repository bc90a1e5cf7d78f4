// Bytes of mx texts as characters and back.

#include <text/Windows1252.h>

#include <gmock/gmock.h>

namespace {

using text::utf8ToWindows1252;
using text::windows1252ToUtf8;

TEST(CodePage, givesEveryByteACharacterOfItsOwn)
{
    for (int value = 0; value < 256; ++value) {
        const std::string byte(1, static_cast<char>(value));
        EXPECT_EQ(utf8ToWindows1252(windows1252ToUtf8(byte)).bytes, byte) << value;
    }
}

TEST(CodePage, isWindows1252)
{
    EXPECT_EQ(windows1252ToUtf8("\x80 \xB0\x43 \x99"), "\xE2\x82\xAC \xC2\xB0\x43 \xE2\x84\xA2");
    // One of the five bytes without a character is the control character of its number.
    EXPECT_EQ(windows1252ToUtf8("\x81"), "\xC2\x81");
}

TEST(CodePage, takesTheControlCharacterOfAByteForTheByte)
{
    EXPECT_EQ(utf8ToWindows1252("\xC2\x80").bytes, "\x80"); // as the euro sign
}

class Rejected : public testing::TestWithParam<std::string>
{};

TEST_P(Rejected, isNamed)
{
    EXPECT_EQ(utf8ToWindows1252("A" + GetParam() + "B").rejected, GetParam());
}

INSTANTIATE_TEST_SUITE_P(Characters, Rejected,
                         testing::Values("\xE6\xBC\xA2",     // CJK
                                         "\xC4\x80",         // Latin, but not in this code page
                                         "\xF0\x9F\x98\x80", // above U+FFFF
                                         "\xFF", "\x80",     // no UTF-8
                                         "\xC1\x81",         // "A" in two bytes
                                         "\xE0\x81\x81"));   // "A" in three bytes

} // namespace
