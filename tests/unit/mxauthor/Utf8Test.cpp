// Bytes of texts that are not UTF-8: which, where, and how they are shown.

#include <mxauthor/Utf8.h>

#include <gmock/gmock.h>

namespace {

using mxauthor::buildFromText;
using mxauthor::findNonUtf8;

void expectAt(const std::string& text, std::size_t line, std::size_t column)
{
    const auto error = findNonUtf8(text);
    ASSERT_TRUE(error) << text;
    EXPECT_EQ(error->line, line);
    EXPECT_EQ(error->column, column);
}

TEST(Utf8, takesEveryCharacter)
{
    EXPECT_FALSE(findNonUtf8(""));
    EXPECT_FALSE(findNonUtf8(std::string("a\0\n\x7F", 4)));
    EXPECT_FALSE(findNonUtf8("\xC2\x80 \xDF\xBF \xE0\xA0\x80 \xEF\xBF\xBF \xED\x9F\xBF"));
    EXPECT_FALSE(findNonUtf8("\xF0\x90\x80\x80 \xF4\x8F\xBF\xBF"));
}

TEST(Utf8, findsTheByteAtItsLineAndCharacter)
{
    expectAt("\xFC", 1, 1);
    expectAt("a\n\xC3\xBC\xFC", 2, 2); // after one character of two bytes
    expectAt("name: T\xFCr\n", 1, 8);
}

TEST(Utf8, refusesWhatOnlyLooksLikeCharacters)
{
    expectAt("\xC3", 1, 1); // cut off
    expectAt("\xE2\x82", 1, 1);
    expectAt("\xF0\x90\x80", 1, 1);
    expectAt("\x80", 1, 1);     // no lead byte
    expectAt("\xC0\xAF", 1, 1); // longer than necessary
    expectAt("\xE0\x9F\xBF", 1, 1);
    expectAt("\xF0\x8F\xBF\xBF", 1, 1);
    expectAt("\xED\xA0\x80", 1, 1);     // half of a surrogate pair
    expectAt("\xF4\x90\x80\x80", 1, 1); // above U+10FFFF
    expectAt("\xF8\x88\x80\x80\x80", 1, 1);
}

TEST(Utf8, namesTheByteAndTheCharacterThatWasMeant)
{
    EXPECT_EQ(findNonUtf8("T\xFCr \xFC")->text,
              "the byte 0xfc is not UTF-8, which is expected here (in Windows-1252 it is "
              "\"\xC3\xBC\"): save the text as UTF-8; it has 2 such bytes");
    EXPECT_EQ(findNonUtf8("\x80")->text,
              "the byte 0x80 is not UTF-8, which is expected here (in Windows-1252 it is "
              "\"\xE2\x82\xAC\"): save the text as UTF-8");
    EXPECT_EQ(findNonUtf8(std::string("\xFF\xFEm\0", 4))->text,
              "this text is UTF-16, expected UTF-8: save it as UTF-8");
}

TEST(Utf8, aTextFormIsReadNoFurther)
{
    const std::string text = "# \xC2\xB5s\nmodule: {typ: \xFC}\n";
    const auto errors = buildFromText(text, "").errors;
    ASSERT_EQ(errors.size(), 1U);
    EXPECT_EQ(errors[0].line, 2U);
    EXPECT_EQ(errors[0].column, 15U);
    EXPECT_EQ(sourceExcerpt(text, errors[0]).line, "module: {typ: \xC3\xBC}");
    EXPECT_EQ(sourceExcerpt(text, errors[0]).caret, std::string(14, ' ') + "^");
}

} // namespace
