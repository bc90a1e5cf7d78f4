#include <text/FileNamePart.h>

#include <gtest/gtest.h>

namespace {

TEST(FileNamePart, keepsLettersDigitsAndTwoMarks)
{
    EXPECT_EQ(text::fileNamePart("Az09-_"), "Az09-_");
    EXPECT_EQ(text::fileNamePart("../%\xE4"), "%2e%2e%2f%25%e4");
    EXPECT_EQ(text::fileNamePart(""), "");
}

TEST(FileNamePart, isCutBetweenCharacters)
{
    EXPECT_EQ(text::fileNamePart("abc", 3), "abc");
    EXPECT_EQ(text::fileNamePart("abcd", 3), "abc");
    EXPECT_EQ(text::fileNamePart("ab cd", 5), "ab%20");
    EXPECT_EQ(text::fileNamePart("ab cd", 4), "ab");
}

} // namespace
