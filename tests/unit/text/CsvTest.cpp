#include <text/Csv.h>

#include <gtest/gtest.h>

namespace {

using text::csvLine;
using text::csvText;

TEST(Csv, plainFieldsStandAsTheyAre)
{
    EXPECT_EQ(csvLine({"a", "", "10 V", "-5", "-0.5"}), "a,,10 V,-5,-0.5\r\n");
}

TEST(Csv, separatorsAndQuotesAreQuoted)
{
    EXPECT_EQ(csvLine({"a,b", "say \"x\""}), "\"a,b\",\"say \"\"x\"\"\"\r\n");
}

TEST(Csv, noTextEndsALineOrActsOnATerminal)
{
    EXPECT_EQ(csvLine({"c\r\nd", "\033[2J"}), "c\\x0d\\x0ad,\\x1b[2J\r\n");
}

TEST(Csv, noTextBecomesAFormula)
{
    EXPECT_EQ(csvLine({"=1+1", "@x", "a=b"}), "'=1+1,'@x,a=b\r\n");
    EXPECT_EQ(csvLine({"+1=2", "-SUM(A1)", "-x!A1", "+cmd|'/c'", "-@SUM"}),
              "'+1=2,'-SUM(A1),'-x!A1,'+cmd|'/c','-@SUM\r\n");
    EXPECT_EQ(csvLine({"\uFF1D1", "\uFF20x", "\uFF0Dx\uFF08", "\t=1"}),
              "'\uFF1D1,'\uFF20x,'\uFF0Dx\uFF08,\\x09=1\r\n");
}

TEST(Csv, anApostropheBeforeAFormulaGetsAnother)
{
    EXPECT_EQ(csvLine({"'=x", "''=x", "'-f(x)", "'a", "'-Temp", "'", "''"}),
              "''=x,'''=x,''-f(x),'a,'-Temp,',''\r\n");
}

TEST(Csv, namesAndValuesThatBeginWithASignStay)
{
    EXPECT_EQ(csvLine({"-Temp", "+24 V", "-9.5 V", "-", "\uFF0BTemp"}),
              "-Temp,+24 V,-9.5 V,-,\uFF0BTemp\r\n");
}

TEST(Csv, theSeparatorIsChosen)
{
    EXPECT_EQ(csvLine({"a,b", "c;d", "e"}, ';'), "a,b;\"c;d\";e\r\n");
    EXPECT_EQ(csvLine({"a,b", "c\td"}, '\t'), "a,b\tc\\x09d\r\n");
}

TEST(Csv, aByteOrderMarkStandsOnceInFront)
{
    EXPECT_EQ(csvText({{"h", "i"}, {"\xE4", "1"}}, ';', true), "\xEF\xBB\xBFh;i\r\n\xC3\xA4;1\r\n");
    EXPECT_EQ(csvText({{"h"}}), "h\r\n");
}

TEST(Csv, textsComeOutAsUtf8)
{
    EXPECT_EQ(csvLine({"\xB0"
                       "C"}),
              "\xC2\xB0"
              "C\r\n");
}

} // namespace
