#include <text/Beginning.h>

#include <gmock/gmock.h>

namespace {

TEST(BeginningOf, doesNotEndWithinACharacter)
{
    using text::beginningOf;
    EXPECT_EQ(beginningOf("abc", 3), "abc");
    EXPECT_EQ(beginningOf("abcd", 3), "abc");
    EXPECT_EQ(beginningOf("ab\u20ACd", 3), "ab");
    EXPECT_EQ(beginningOf("ab\u20ACd", 4), "ab");
    EXPECT_EQ(beginningOf("ab\u20ACd", 5), "ab\u20AC");
    EXPECT_EQ(beginningOf("\U0001F600", 3), "");
    // Continuation bytes without a lead byte are not UTF-8: they are cut anywhere.
    EXPECT_EQ(beginningOf(std::string(100, '\x80'), 50).size(), 46U);
}

TEST(Abbreviated, cutsWhatIsTooLongForAMessage)
{
    using text::abbreviated;
    EXPECT_EQ(abbreviated("\u20AC 5"), "\u20AC 5");
    EXPECT_EQ(abbreviated(std::string(300, 'a')), std::string(300, 'a'));
    EXPECT_EQ(abbreviated(std::string(301, 'a')), std::string(300, 'a') + " ...");
}

TEST(Shortened, keepsSixtyBytes)
{
    using text::shortened;
    EXPECT_EQ(shortened(std::string(60, 'a')), std::string(60, 'a'));
    EXPECT_EQ(shortened(std::string(61, 'a')), std::string(60, 'a') + "...");
    EXPECT_EQ(shortened(std::string(59, 'a') + "\u00B5s"), std::string(59, 'a') + "...");
    // A text of Windows-1252 that is all degree signs does not vanish.
    EXPECT_EQ(shortened(std::string(100, '\xB0')), std::string(56, '\xB0') + "...");
}

} // namespace
