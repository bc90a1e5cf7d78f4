#include <mxformat/Decimal.h>

#include <gtest/gtest.h>

namespace {

using mxformat::Decimal;
using mxformat::WholeNumber;

Decimal number(const std::string& text)
{
    return Decimal::ofText(text).value();
}

TEST(DecimalTest, readsEveryForm)
{
    for (const char* text :
         {"12.5", "12.500000", "+12.5", "1.25e1", "1.25E+1", "125e-1", "012.5"}) {
        EXPECT_EQ(number(text).text(), "12.5") << text;
    }
    EXPECT_EQ(number(".5").text(), "0.5");
    EXPECT_EQ(number("5.").text(), "5");
    EXPECT_EQ(number("-0.0").text(), "0");
    EXPECT_EQ(number("-18446744073709551616.25").text(), "-18446744073709551616.25");
    EXPECT_EQ(number("1e20").text(), "100000000000000000000");
    EXPECT_EQ(number("1e-20").text(), "0.00000000000000000001");
}

TEST(DecimalTest, refusesWhatIsNoNumber)
{
    for (const char* text :
         {"",      " ",  "-",   "+",  ".",    "--1", "+-1", " 1",   "1 ",   "1,5",
          "1.5.5", "1e", "1e+", "e1", "0x1F", "inf", "nan", "1.5f", "1e5.", "\xB2"}) {
        EXPECT_FALSE(Decimal::ofText(text).has_value()) << text;
    }
    EXPECT_FALSE(Decimal::ofText(std::string_view("1\0", 2)).has_value());
}

TEST(DecimalTest, takesAFloatAsItIsOrAsItIsWritten)
{
    EXPECT_EQ(Decimal(0.1F).text(), "0.100000001490116119384765625");
    EXPECT_EQ(Decimal::shortestOf(0.1F).text(), "0.1");
    EXPECT_EQ(Decimal(-2.5F).text(), "-2.5");
    EXPECT_EQ(Decimal(16777216.0F).text(), "16777216");
    EXPECT_EQ(Decimal(3.402823466e38F).text(), "340282346638528859811704183484516925440");
    EXPECT_EQ(Decimal(1.401298464e-45F).text().size(), 151U); // 2^-149 has 149 decimals
}

TEST(DecimalTest, computes)
{
    EXPECT_EQ((number("0.999999999") + number("0.000000001")).text(), "1");
    EXPECT_EQ((number("1") - number("1e-100")).text(), "0." + std::string(100, '9'));
    EXPECT_EQ((number("-2") + number("5.5")).text(), "3.5");
    EXPECT_EQ((number("2") - number("2")).text(), "0");
    EXPECT_EQ((number("-0.001") * WholeNumber(true, 32768)).text(), "32.768");
    EXPECT_EQ((number("1.5") * WholeNumber(false, 18446744073709551615U)).text(),
              "27670116110564327422.5");
    EXPECT_EQ((number("3") * WholeNumber()).text(), "0");
}

TEST(DecimalTest, compares)
{
    EXPECT_LT(number("-2"), number("-1.9"));
    EXPECT_LT(number("-1"), number("0"));
    EXPECT_LT(number("9.9999"), number("10"));
    EXPECT_FALSE(number("1.0") < number("1"));
    EXPECT_EQ(number("-0"), number("0"));
}

TEST(DecimalTest, numbersWithoutEndCompareAsTheyAre)
{
    EXPECT_LT(number("0"), number("1e-400"));
    EXPECT_LT(number("1e-400"), number("1e-160"));
    EXPECT_LT(number("0.5"), number("0.5" + std::string(500, '0') + "1"));
    EXPECT_LT(number("1e60"), number("1e400"));
    EXPECT_LT(number("-1e99999999999999999999"), number("-1e60"));
    EXPECT_EQ(number("0e99999999999999999999"), number("0"));
    EXPECT_EQ(number(std::string(300, '0') + "7"), number("7"));
}

TEST(DecimalTest, roundsAwayFromZeroHalfWay)
{
    EXPECT_EQ(number("0.25").rounded(1).text(), "0.3");
    EXPECT_EQ(number("-0.25").rounded(1).text(), "-0.3");
    EXPECT_EQ(number("0.2499999999").rounded(1).text(), "0.2");
    EXPECT_EQ(number("0.5").rounded(0).text(), "1");
    EXPECT_EQ(number("-0.4").rounded(0).text(), "0");
    EXPECT_EQ(number("999999999.9999999999").rounded(9).text(), "1000000000");
    EXPECT_EQ(number("0.1234567895").rounded(9).text(), "0.12345679");
    EXPECT_EQ(number("0.125").rounded(200).text(), "0.125");
}

} // namespace
