#include <mxstation/Layout.h>

#include <gmock/gmock.h>

#include <vector>

namespace {

using mxstation::ByteOrder;
using mxstation::ImageLayout;
using mxstation::ImageOrder;
using mxstation::Layout;

// What a row of the table in docs/station.md states of both images.
ImageLayout image(std::uint32_t before, ImageOrder order, std::uint32_t align,
                  std::uint32_t padModule, std::uint32_t behind, std::uint32_t padImage)
{
    ImageLayout stated;
    stated.statusBefore = before;
    stated.order = order;
    stated.alignment = align;
    stated.modulePadding = padModule;
    stated.statusBehind = behind;
    stated.imagePadding = padImage;
    return stated;
}

void expectImage(const ImageLayout& found, const ImageLayout& stated)
{
    EXPECT_EQ(found.start, 0U);
    EXPECT_EQ(found.statusBefore, stated.statusBefore);
    EXPECT_EQ(found.order, stated.order);
    EXPECT_EQ(found.alignment, stated.alignment);
    EXPECT_EQ(found.modulePadding, stated.modulePadding);
    EXPECT_EQ(found.statusBehind, stated.statusBehind);
    EXPECT_EQ(found.imagePadding, stated.imagePadding);
    EXPECT_FALSE(found.mostBytes);
}

TEST(NamedLayouts, haveTheRulesOfTheDocument)
{
    struct Stated
    {
        const char* name;
        ImageLayout image;
        std::uint32_t mostModules;
        ByteOrder byteOrder;
    };
    const std::vector<Stated> expected{
        {"plain", image(0, ImageOrder::Row, 1, 1, 0, 1), 64, ByteOrder::Big},
        {"words", image(0, ImageOrder::Row, 2, 2, 0, 1), 64, ByteOrder::Big},
        {"bytes-first", image(2, ImageOrder::BytesFirst, 1, 1, 0, 2), 64, ByteOrder::Big},
        {"aligned", image(0, ImageOrder::Row, 8, 1, 1, 1), 250, ByteOrder::Little}};
    const auto& layouts = mxstation::namedLayouts();
    ASSERT_EQ(layouts.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        SCOPED_TRACE(expected[i].name);
        const Layout& found = layouts[i].layout;
        EXPECT_EQ(found.name, expected[i].name);
        expectImage(found.input, expected[i].image);
        expectImage(found.output, expected[i].image);
        EXPECT_EQ(found.mostModules, expected[i].mostModules);
        EXPECT_EQ(found.byteOrder, expected[i].byteOrder);
    }
}

TEST(NamedLayouts, beginWithTheDefault)
{
    const Layout unstated;
    EXPECT_EQ(unstated.name, "plain");
    expectImage(unstated.input, image(0, ImageOrder::Row, 1, 1, 0, 1));
    expectImage(unstated.output, image(0, ImageOrder::Row, 1, 1, 0, 1));
    EXPECT_EQ(unstated.mostModules, 64U);
    EXPECT_EQ(unstated.byteOrder, ByteOrder::Big);
}

} // namespace
