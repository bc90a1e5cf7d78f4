#include "Csv.h"

#include <gtest/gtest.h>

namespace {

using mxtool::csvLine;

TEST(Csv, plainFieldsStandAsTheyAre)
{
    EXPECT_EQ(csvLine({"a", "", "10 V", "-5", "-0.5"}), "a,,10 V,-5,-0.5\r\n");
}

TEST(Csv, separatorsQuotesAndLineEndsAreQuoted)
{
    EXPECT_EQ(csvLine({"a,b", "say \"x\"", "c\r\nd"}), "\"a,b\",\"say \"\"x\"\"\",\"c\r\nd\"\r\n");
}

TEST(Csv, noTextBecomesAFormula)
{
    EXPECT_EQ(csvLine({"=1+1", "+A1", "-A1", "@x", "a=b"}), "'=1+1,'+A1,'-A1,'@x,a=b\r\n");
}

TEST(Csv, textsComeOutAsUtf8)
{
    EXPECT_EQ(csvLine({"\xB0"
                       "C"}),
              "\xC2\xB0"
              "C\r\n");
}

} // namespace
