#include "channels/ChannelMapOutput.h"

#include "ChannelTables.h"

#include <SvgPicture.h>
#include <gmock/gmock.h>
#include <text/Utf8.h>

namespace {

using mxmodule::ChannelTable;
using mxmodule::makeProcessImage;
using testing::Contains;
using testing::HasSubstr;

std::string svgOf(const ChannelTable& map)
{
    return mxmodule::processImageSvg(makeProcessImage(map));
}

// The letters of a monospaced font of 11 pixels are 6.6 to 6.7 pixels wide.
struct Picture : SvgPicture
{
    explicit Picture(const std::string& svg) : SvgPicture(svg, 67) {}
};

ChannelTable bitModule(unsigned channels)
{
    ChannelTable map = emptyMap((channels + 7) / 8);
    for (unsigned i = 0; i < channels; ++i) {
        map.channels.push_back(bitChannel(fmt::format("Limit switch {}", i), 'I', i / 8,
                                          static_cast<std::uint8_t>(i % 8)));
    }
    return map;
}

class SvgOfBits : public testing::TestWithParam<unsigned>
{};

TEST_P(SvgOfBits, showsEveryChannelAndNoTextLiesOverAnother)
{
    const Picture picture(svgOf(bitModule(GetParam())));
    picture.expectReadable();
    for (unsigned i = 0; i < GetParam(); ++i) {
        EXPECT_THAT(picture.words(), Contains(fmt::format("Limit switch {}", i)));
        EXPECT_THAT(picture.words(), Contains(fmt::format("IX{}_{}", i / 8, i % 8)));
    }
}

INSTANTIATE_TEST_SUITE_P(Channels, SvgOfBits, testing::Values(0U, 1U, 16U, 64U, 200U));

TEST(ProcessImageSvg, aValueOf64BitsIsEightLabelledRows)
{
    ChannelTable map = emptyMap(16, 8);
    map.channels = {wholeChannel("Energy", 'I', 'L', 0, 64), wholeChannel("Work", 'I', 'L', 8, 64),
                    wholeChannel("Target", 'Q', 'L', 0, 64)};
    const Picture picture(svgOf(map));
    picture.expectReadable();
    EXPECT_THAT(picture.words(), Contains("Energy  IL0"));
    EXPECT_THAT(picture.words(), Contains("Energy +7"));
    EXPECT_THAT(picture.words(), Contains("Work +7"));
    EXPECT_THAT(picture.words(), Contains("Target +7"));
}

TEST(ProcessImageSvg, channelsThatShareBitsAreBothLabelledAndMarked)
{
    ChannelTable map = emptyMap(10);
    map.channels = {fieldChannel("Energy", 'I', 0, 3, 64), fieldChannel("Work", 'I', 1, 3, 64),
                    bitChannel("Alarm", 'I', 2, 0)};
    const std::string svg = svgOf(map);
    const Picture picture(svg);
    picture.expectReadable();
    for (const char* label : {"Energy +1", "Energy +7", "Work  IB1#3,255", "Work +7", "Alarm"}) {
        EXPECT_THAT(picture.words(), Contains(label));
    }
    // Bits 11 to 66, and bit 16 a third time.
    EXPECT_THAT(svg, HasSubstr("56 bits of several channels"));
    // Two bars in each of the bytes 1 to 8, and two in the key.
    std::size_t bars = 0;
    for (std::size_t pos = svg.find("\"overlap\""); pos != std::string::npos;
         pos = svg.find("\"overlap\"", pos + 1)) {
        ++bars;
    }
    EXPECT_EQ(bars, 18U);
}

TEST(ProcessImageSvg, marksGapsAndBytesOutsideTheData)
{
    ChannelTable map = emptyMap(1);
    map.channels = {bitChannel("A", 'I', 0, 0), bitChannel("B", 'I', 1, 0)};
    const std::string svg = svgOf(map);
    Picture(svg).expectReadable();
    EXPECT_THAT(svg, HasSubstr("Inputs: 1 byte from byte 0, 7 bits without a channel"));
    EXPECT_THAT(svg, HasSubstr(" class=\"alarm\" text-anchor=\"end\">1</text>"));
}

TEST(ProcessImageSvg, longNamesAreShortenedInTheCellsAndInTheList)
{
    ChannelTable map = emptyMap(1);
    map.label = std::string(400, 'L');
    map.channels = {bitChannel(std::string(300, 'W') + "7", 'I', 0, 0),
                    bitChannel("\u6E29\u5EA6\u6E29\u5EA6\u6E29\u5EA6\u6E29\u5EA6", 'I', 0, 1)};
    const Picture picture(svgOf(map));
    picture.expectReadable();
    EXPECT_THAT(picture.words(), Contains(std::string(59, 'W') + "\u2026"));
}

TEST(ProcessImageSvg, whateverANameHoldsItIsXml)
{
    ChannelTable map = emptyMap(32);
    for (unsigned byte = 0; byte < 256; ++byte) {
        map.channels.push_back(bitChannel(std::string("n") + static_cast<char>(byte), 'I', byte / 8,
                                          static_cast<std::uint8_t>(byte % 8)));
    }
    map.channels.push_back(
        bitChannel("</text><script>&\"'\xEF\xBF\xBF" + text::toUtf8(U'\u202E'), 'I', 0, 0));
    const std::string svg = svgOf(map);
    EXPECT_THAT(svg, HasSubstr("&lt;/text&gt;&lt;script&gt;&amp;"));
    Picture(svg).expectReadable();
}

TEST(ProcessImageSvg, theSizeFollowsTheChannelsNotTheirAddressesOrData)
{
    ChannelTable map = emptyMap(1);
    const std::size_t small = svgOf(map).size();
    map.input.size = 4000000000;
    map.channels = {bitChannel("A", 'I', 3999999999, 0)};
    EXPECT_LT(svgOf(map).size(), small + 3000);
}

TEST(ProcessImageSvg, isTheSameForTheSameImage)
{
    EXPECT_EQ(svgOf(bitModule(30)), svgOf(bitModule(30)));
}

} // namespace
