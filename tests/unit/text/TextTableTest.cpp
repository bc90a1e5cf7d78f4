#include <text/TextTable.h>

#include <gtest/gtest.h>

namespace {

using text::TextTable;

TEST(TextTable, alignsColumnsTwoBlanksApart)
{
    TextTable table({"A", "Name"});
    table.add({"1", "x"});
    table.add({"100", "y"});
    EXPECT_EQ(table.text(), "A    Name\n1    x\n100  y\n");
}

TEST(TextTable, countsCharactersNotBytes)
{
    TextTable table({"Unit", "V"});
    table.add({"\xB5"
               "A/ms",
               "1"}); // 5 characters, 6 bytes as UTF-8
    EXPECT_EQ(table.text(), "Unit   V\n\xC2\xB5"
                            "A/ms  1\n");
}

TEST(TextTable, doesNotMakeEveryRowAsWideAsOneLongCell)
{
    TextTable table({"A", "B"});
    table.add({std::string(30000, 'x'), "y"});
    table.add({"1", "z"});
    const std::string blanks(201, ' '); // 200 columns and the gap, without the first character
    EXPECT_EQ(table.text(),
              "A" + blanks + "B\n" + std::string(30000, 'x') + "  y\n1" + blanks + "z\n");
}

TEST(TextTable, knowsWhetherItHasRows)
{
    TextTable table({"A"});
    EXPECT_TRUE(table.empty());
    table.add({""});
    EXPECT_FALSE(table.empty());
}

} // namespace
