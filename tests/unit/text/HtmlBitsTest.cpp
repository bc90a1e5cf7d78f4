#include <text/HtmlBits.h>

#include <gtest/gtest.h>

namespace {

using text::HtmlBits;
using text::HtmlBitTable;
using text::HtmlByte;

// The rows of `table`.
std::string rowsOf(const HtmlBitTable& table)
{
    const std::string html = table.html();
    const std::string begin = "<tbody>\n";
    const std::size_t first = html.find(begin) + begin.size();
    return html.substr(first, html.find("</tbody>", first) - first);
}

std::string rowOf(const HtmlByte& byte)
{
    HtmlBitTable table("Caption", "p-");
    table.add(byte);
    return rowsOf(table);
}

TEST(HtmlBits, WholeByte)
{
    EXPECT_EQ(
        rowOf({3, {}, {{7, 0, "A", "c1"}}}),
        "<tr id=\"p-3\"><th scope=\"row\">3</th><td class=\"c1\" colspan=\"8\">A</td></tr>\n");
}

TEST(HtmlBits, FreeBitsAroundRuns)
{
    EXPECT_EQ(
        rowOf({0, {}, {{6, 6, "A", "c"}, {3, 1, "B", "c"}}}),
        "<tr id=\"p-0\"><th scope=\"row\">0</th><td class=\"none\">–</td><td class=\"c\">A</td>"
        "<td class=\"none\" colspan=\"2\">–</td><td class=\"c\" colspan=\"3\">B</td>"
        "<td class=\"none\">–</td></tr>\n");
    EXPECT_EQ(rowOf({0, {}, {}}), "<tr id=\"p-0\"><th scope=\"row\">0</th>"
                                  "<td class=\"none\" colspan=\"8\">–</td></tr>\n");
}

TEST(HtmlBits, SharedBitsHaveALaneEach)
{
    // Bits 7 to 4 and 5 to 4; bits 3 to 0 are free in both.
    EXPECT_EQ(rowOf({1, {"ff"}, {{7, 4, "A", "c"}, {5, 4, "B", "c", 1}}, 2}),
              "<tr id=\"p-1\"><th scope=\"row\" rowspan=\"2\">1</th>"
              "<td class=\"value\" rowspan=\"2\">ff</td>"
              "<td class=\"c\" colspan=\"4\">A</td><td class=\"none\" colspan=\"4\">–</td></tr>\n"
              "<tr><td class=\"other\" colspan=\"2\"></td><td class=\"c\" colspan=\"2\">B</td>"
              "<td class=\"other\" colspan=\"4\"></td></tr>\n");
    // The second lane has bits that the first has not: they are not free.
    EXPECT_EQ(rowOf({1, {}, {{7, 7, "A", "c"}, {7, 0, "B", "c", 1}}, 2}),
              "<tr id=\"p-1\"><th scope=\"row\" rowspan=\"2\">1</th><td class=\"c\">A</td>"
              "<td class=\"other\" colspan=\"7\"></td></tr>\n"
              "<tr><td class=\"c\" colspan=\"8\">B</td></tr>\n");
}

TEST(HtmlBits, LinksLeadToRowsThatExist)
{
    HtmlBitTable table("Caption", "in-", {"Hex"});
    table.addRun(4, 3, "no channel");
    table.add({7});
    EXPECT_EQ(table.link(4), "<a href=\"#in-4\">4</a>");
    EXPECT_EQ(table.link(5), "5");
    EXPECT_EQ(table.link(6, 2), "6–<a href=\"#in-7\">7</a>");
    EXPECT_EQ(table.link(7, 1), "<a href=\"#in-7\">7</a>");
    EXPECT_EQ(rowsOf(table).find("<tr id=\"in-4\"><th scope=\"row\">4–6</th>"
                                 "<td class=\"none\" colspan=\"9\">no channel</td></tr>\n"),
              0U);
}

} // namespace
