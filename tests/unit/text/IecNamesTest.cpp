#include <text/IecNames.h>

#include <gtest/gtest.h>

namespace {

using text::iecCommentText;
using text::iecIdentifier;
using text::IecNames;

TEST(IecIdentifier, keepsLettersDigitsAndSingleUnderscores)
{
    EXPECT_EQ(iecIdentifier("DI 1"), "DI_1");
    EXPECT_EQ(iecIdentifier("L1  cos--phi"), "L1_cos_phi");
    EXPECT_EQ(iecIdentifier("__a__b__"), "a_b");
    EXPECT_EQ(iecIdentifier("(Motor)"), "Motor");
    EXPECT_EQ(iecIdentifier("a\tb\nc"), "a_b_c");
}

TEST(IecIdentifier, neverBeginsWithADigit)
{
    EXPECT_EQ(iecIdentifier("24 V ok"), "Ch_24_V_ok");
    EXPECT_EQ(iecIdentifier("_0"), "Ch_0");
}

TEST(IecIdentifier, isNoWordOfTheLanguage)
{
    EXPECT_EQ(iecIdentifier("And"), "Ch_And");
    EXPECT_EQ(iecIdentifier("end var"), "Ch_end_var");
    EXPECT_EQ(iecIdentifier("BOOL"), "Ch_BOOL");
    EXPECT_EQ(iecIdentifier("Boolean"), "Boolean");
}

TEST(IecIdentifier, writesUmlautsAndSignsWithPlainLetters)
{
    EXPECT_EQ(iecIdentifier("T\u00FCr \u00D6ffner gro\u00DF"), "Tuer_Oeffner_gross");
    EXPECT_EQ(iecIdentifier("T\xFCr"), "Tuer"); // Windows-1252
    EXPECT_EQ(iecIdentifier("caf\u00E9"), "cafe");
    EXPECT_EQ(iecIdentifier("\u00B5A"), "uA");
    EXPECT_EQ(iecIdentifier("m\u00B3 20 \u00B0C"), "m3_20_degC");
    EXPECT_EQ(iecIdentifier("3\u00D74"), "Ch_3_4");
}

TEST(IecIdentifier, isEmptyWhenNothingCanBeKept)
{
    EXPECT_EQ(iecIdentifier(""), "");
    EXPECT_EQ(iecIdentifier("--"), "");
    EXPECT_EQ(iecIdentifier("\u6E29\u5EA6"), "");
}

TEST(IecIdentifier, isAtMostHundredCharacters)
{
    EXPECT_EQ(iecIdentifier(std::string(60000, 'x')), std::string(97, 'x'));
    EXPECT_EQ(iecIdentifier(std::string(60000, '1')), "Ch_" + std::string(97, '1'));
    EXPECT_EQ(iecIdentifier(std::string(96, 'x') + " y"), std::string(96, 'x'));
}

TEST(IecNames, differWhateverTheCase)
{
    IecNames names;
    EXPECT_EQ(names.unique("Door"), "Door");
    EXPECT_EQ(names.unique("DOOR"), "DOOR_2");
    EXPECT_EQ(names.unique("door"), "door_3");
    EXPECT_EQ(names.unique("Gate"), "Gate");
}

TEST(IecNames, aNumberThatIsTakenIsSkipped)
{
    IecNames names;
    EXPECT_EQ(names.unique("DI_2"), "DI_2");
    EXPECT_EQ(names.unique("DI"), "DI");
    EXPECT_EQ(names.unique("DI"), "DI_3");
    EXPECT_EQ(names.unique("DI_2"), "DI_2_2");
}

TEST(IecNames, tenThousandOfTheSameNameAreNumbered)
{
    IecNames names;
    for (int i = 1; i < 10000; ++i) {
        names.unique("x");
    }
    EXPECT_EQ(names.unique("x"), "x_10000");
}

TEST(IecCommentText, neitherEndsNorOpensAComment)
{
    EXPECT_EQ(iecCommentText("a *) b"), "a * ) b");
    EXPECT_EQ(iecCommentText("a (* b"), "a ( * b");
    EXPECT_EQ(iecCommentText("(*)"), "( * )");
    EXPECT_EQ(iecCommentText("**))"), "** ))");
    EXPECT_EQ(iecCommentText("a\nb"), "a\\x0ab");
}

} // namespace
