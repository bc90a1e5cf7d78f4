#include <text/ControlCharacters.h>

#include <gmock/gmock.h>

namespace {

TEST(ControlCharacters, areThoseBelowTheBlankAndDelete)
{
    int count = 0;
    for (int value = 0; value < 256; ++value) {
        count += text::isControl(static_cast<char>(value)) ? 1 : 0;
    }
    EXPECT_EQ(count, 33);
    EXPECT_TRUE(text::isControl('\0'));
    EXPECT_TRUE(text::isControl('\x1F'));
    EXPECT_TRUE(text::isControl('\x7F'));
    EXPECT_FALSE(text::isControl(' '));
    EXPECT_FALSE(text::isControl('\x80'));
}

TEST(ControlCharacters, ofATextAreItsWhiteSpace)
{
    EXPECT_EQ(text::countOfControls("a\tb\r\n\x7F\xFF"), 0U);
    EXPECT_EQ(text::countOfControls(std::string_view("\0a\x1B", 3)), 2U);
}

} // namespace
