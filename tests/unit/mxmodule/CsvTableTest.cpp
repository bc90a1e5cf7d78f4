#include "CsvTable.h"

#include "ShownFinding.h"

#include <mxmodule/Finding.h>
#include <text/Csv.h>

#include <gmock/gmock.h>

#include <array>
#include <random>

namespace {

using mxmodule::CsvTable;
using mxmodule::readCsv;
using testing::ElementsAre;

std::string failureOf(const std::string& content)
{
    try {
        readCsv(content, "v.csv");
    } catch (const mxmodule::Failure& failure) {
        return shown(failure.reason());
    }
    return "accepted";
}

TEST(CsvTable, isNamedByItsFirstLine)
{
    const CsvTable table = readCsv("Name, VALUE\r\na,1\r\n\"b \"\"x\"\", c\",2", "v.csv");
    EXPECT_THAT(table.columns, ElementsAre("name", "value"));
    ASSERT_EQ(table.rows.size(), 2U);
    EXPECT_THAT(table.rows[0].cells, ElementsAre("a", "1"));
    EXPECT_THAT(table.rows[1].cells, ElementsAre("b \"x\", c", "2"));
    EXPECT_EQ(table.rows[1].line, 3U);
    EXPECT_EQ(table.column("value"), 1U);
    EXPECT_EQ(table.column("unit"), std::nullopt);
}

TEST(CsvTable, isSeparatedAsItsFirstLineIs)
{
    EXPECT_THAT(readCsv("a;b\n1,5;2\n", "v.csv").rows[0].cells, ElementsAre("1,5", "2"));
    EXPECT_THAT(readCsv("a\tb\n1;5\t2\n", "v.csv").rows[0].cells, ElementsAre("1;5", "2"));
}

TEST(CsvTable, isUtf8WithAMarkOrWindows1252)
{
    const CsvTable marked = readCsv("\xEF\xBB\xBFname\nMa\xC3\x9F\n", "v.csv");
    EXPECT_THAT(marked.columns, ElementsAre("name"));
    EXPECT_THAT(marked.rows[0].cells, ElementsAre("Maß"));
    EXPECT_THAT(readCsv("name\nMa\xDF\n", "v.csv").rows[0].cells, ElementsAre("Maß"));
}

TEST(CsvTable, emptyLinesAreLeftOutAndShortOnesFilled)
{
    const CsvTable table = readCsv("a,b,c\n\n,,\nx\n", "v.csv");
    ASSERT_EQ(table.rows.size(), 1U);
    EXPECT_THAT(table.rows[0].cells, ElementsAre("x", "", ""));
    EXPECT_EQ(table.rows[0].line, 4U);
    EXPECT_TRUE(readCsv("", "v.csv").columns.empty());
}

TEST(CsvTable, readsWhatIsWritten)
{
    const std::vector<text::CsvRow> rows = {
        {"h", "i", "j"}, {"=1+1", "-Temp", "a;b \"c\""}, {"'quoted'", "-f(x)", ""}};
    for (const char separator : {',', ';', '\t'}) {
        const CsvTable table = readCsv(text::csvText(rows, separator, true), "v.csv");
        EXPECT_EQ(table.columns, rows[0]);
        ASSERT_EQ(table.rows.size(), 2U);
        EXPECT_EQ(table.rows[0].cells, rows[1]);
        EXPECT_EQ(table.rows[1].cells, rows[2]);
    }
}

// Any text that has no control character: those are written as \xNN.
TEST(CsvTable, readsEveryTextAsItWasWritten)
{
    constexpr std::array<const char*, 22> parts = {
        "'", "=", "@", "+",  "-",   "(", "!",      "|",      ",",      ";",      "\"",
        " ", "a", "1", "\\", "x0d", "#", "\uFF1D", "\uFF20", "\uFF0B", "\uFF08", "\u00FC"};
    std::mt19937 random(14);
    for (int i = 0; i < 20000; ++i) {
        text::CsvRow row = {"", "x", ""};
        for (auto length = random() % 7; length > 0; --length) {
            row.front() += parts[random() % parts.size()];
            row.back() += parts[random() % parts.size()];
        }
        const char separator = std::array{',', ';', '\t'}[random() % 3];
        const CsvTable table =
            readCsv(text::csvText({{"h", "i", "j"}, row}, separator, false), "v.csv");
        ASSERT_EQ(table.rows.size(), 1U);
        ASSERT_EQ(table.rows[0].cells, row);
    }
}

TEST(CsvTable, failuresNameTheLine)
{
    EXPECT_EQ(failureOf("a,b\n1,2,3\n"),
              "v.csv:2: error: Found 3 cells, expected the 2 that the first line names\n"
              "hint: numbers have a decimal point: 9.5, not 9,5; a cell that holds a comma is in "
              "quotes\n");
    EXPECT_EQ(failureOf("a;b\n1;2;3\n"),
              "v.csv:2: error: Found 3 cells, expected the 2 that the first line names\n");
    EXPECT_EQ(failureOf("name,value,Value\na,1,2\n"),
              "v.csv:1: error: Found two columns \"value\", expected one\n");
    EXPECT_EQ(failureOf(std::string(100, ',') + "\na\n"),
              "v.csv:1: error: Found 101 columns, expected at most 100\n");
    std::string rows;
    for (int i = 0; i < 65537; ++i) {
        rows += "1\n";
    }
    EXPECT_EQ(failureOf("a\n" + rows),
              "v.csv:65538: error: Found 65537 rows, expected at most 65536\n");
    EXPECT_EQ(failureOf("a\n\"x\ny\n"), "v.csv:2: error: A quoted cell has no closing \"\n");
    EXPECT_EQ(failureOf("a\n\"x\"y\n"),
              "v.csv:2: error: Found \"y\" after the closing \" of a cell, expected the end of the "
              "cell\n");
}

} // namespace
