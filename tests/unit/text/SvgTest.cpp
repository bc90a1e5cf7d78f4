#include <text/Svg.h>

#include <gtest/gtest.h>

namespace {

TEST(Svg, escapesWhatXmlReserves)
{
    EXPECT_EQ(text::xmlEscaped("a<b> & \"c\""), "a&lt;b&gt; &amp; \"c\"");
    EXPECT_EQ(text::svgText(3, 14, "<1>", " class=\"x\""),
              "<text x=\"3\" y=\"14\" class=\"x\">&lt;1&gt;</text>\n");
}

TEST(Svg, replacesWhatXmlDoesNotHave)
{
    EXPECT_EQ(text::xmlAllowed("a\uFFFD<\uFFFE\uFFFF\U0001F600"), "a\uFFFD<\uFFFD\uFFFD\U0001F600");
    EXPECT_EQ(text::xmlEscaped("\uFFFE<"), "\uFFFD&lt;");
}

TEST(Svg, statesPlacesAndSizes)
{
    EXPECT_EQ(text::svgRectangle(1, 2, 3, 4, "fill=\"#fff\""),
              "<rect x=\"1\" y=\"2\" width=\"3\" height=\"4\" fill=\"#fff\"/>\n");
    EXPECT_EQ(text::svgLine(1, 2, 3, 4, "edge"), "<path class=\"edge\" d=\"M1 2L3 4\"/>\n");
    EXPECT_EQ(text::svgBegin(640, 480), "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"640\" "
                                        "height=\"480\" viewBox=\"0 0 640 480\">\n");
}

} // namespace
