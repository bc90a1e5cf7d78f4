#include "Csv.h"

#include <gtest/gtest.h>

namespace {

using mxtool::csvLine;

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
    EXPECT_EQ(csvLine({"=1+1", "+A1", "-A1", "@x", "a=b"}), "'=1+1,'+A1,'-A1,'@x,a=b\r\n");
    EXPECT_EQ(csvLine({"\uFF1D1", "\uFF20x", "\t=1"}), "'\uFF1D1,'\uFF20x,\\x09=1\r\n");
}

TEST(Csv, textsComeOutAsUtf8)
{
    EXPECT_EQ(csvLine({"\xB0"
                       "C"}),
              "\xC2\xB0"
              "C\r\n");
}

} // namespace
