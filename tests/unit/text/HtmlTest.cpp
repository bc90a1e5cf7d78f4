#include <text/Html.h>

#include <gtest/gtest.h>

namespace {

TEST(Html, TextIsNeverMarkupNorInvisible)
{
    EXPECT_EQ(text::htmlText("<b a=\"1\">&"), "&lt;b a=&quot;1&quot;&gt;&amp;");
    EXPECT_EQ(text::htmlText("a\nb\x1B"), "a\\x0ab\\x1b");
    EXPECT_EQ(text::htmlText("\u202Ered\u2069"), "\\u202ered\\u2069");
    EXPECT_EQ(text::htmlText("\xB0"
                             "C"),
              "\u00B0C"); // Windows-1252
}

TEST(Html, ElementsAndLinks)
{
    EXPECT_EQ(text::htmlElement("td", "1", " id=\"a\""), "<td id=\"a\">1</td>");
    EXPECT_EQ(text::htmlLink("p-1", "1"), "<a href=\"#p-1\">1</a>");
}

TEST(Html, Facts)
{
    EXPECT_EQ(text::htmlFacts({{"A", {"1"}}, {"B", {""}}, {"C", {"2", " class=\"c\""}}}),
              "<dl class=\"facts\"><dt>A</dt><dd>1</dd><dt>C</dt><dd class=\"c\">2</dd></dl>\n");
}

TEST(Html, TableOfTexts)
{
    text::HtmlTable table({"A", "B"});
    EXPECT_TRUE(table.empty());
    table.add({"1", "<"}, "bad");
    EXPECT_FALSE(table.empty());
    EXPECT_EQ(table.html(), "<table>\n<thead><tr><th scope=\"col\">A</th><th scope=\"col\">B</th>"
                            "</tr></thead>\n<tbody>\n"
                            "<tr class=\"bad\"><td data-name=\"A\">1</td>"
                            "<td data-name=\"B\">&lt;</td></tr>\n</tbody>\n</table>\n");
}

TEST(Html, TableOfNamedRowsInGroups)
{
    text::HtmlTable table({"A", "B"}, "Caption");
    table.beginGroup("First");
    table.addNamed({{"1"}, {"2", " id=\"x\""}}, " class=\"r\"");
    table.beginGroup("Second");
    EXPECT_EQ(table.html(" class=\"t\""),
              "<table class=\"t\">\n<caption>Caption</caption>\n"
              "<thead><tr><th scope=\"col\">A</th><th scope=\"col\">B</th></tr></thead>\n<tbody>\n"
              "<tr class=\"group\"><th colspan=\"2\" scope=\"rowgroup\">First</th></tr>\n"
              "<tr class=\"r\"><th scope=\"row\" data-name=\"A\">1</th>"
              "<td data-name=\"B\" id=\"x\">2</td></tr>\n</tbody>\n<tbody>\n"
              "<tr class=\"group\"><th colspan=\"2\" scope=\"rowgroup\">Second</th></tr>\n"
              "</tbody>\n</table>\n");
}

} // namespace
