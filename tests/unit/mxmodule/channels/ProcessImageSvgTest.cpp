#include "channels/ChannelMapOutput.h"

#include "ChannelTables.h"

#include <gmock/gmock.h>
#include <text/TextWidth.h>
#include <text/Utf8.h>

#include <Poco/DOM/AutoPtr.h>
#include <Poco/DOM/DOMParser.h>
#include <Poco/DOM/Document.h>
#include <Poco/DOM/Element.h>
#include <Poco/DOM/NodeList.h>

namespace {

using mxmodule::ChannelTable;
using mxmodule::makeProcessImage;
using testing::Contains;
using testing::HasSubstr;

std::string svgOf(const ChannelTable& map)
{
    return mxmodule::processImageSvg(makeProcessImage(map));
}

// A text of the picture with its bounding box, in tenths of a pixel.
struct Text
{
    std::string text;
    long left;
    long right;
    long top;
    long bottom;
};

long number(const Poco::XML::Element& element, const char* attribute)
{
    return std::stol(element.getAttribute(attribute));
}

// The letters of a monospaced font of 11 pixels are 6.6 to 6.7 pixels wide.
Text boxOf(const Poco::XML::Element& element)
{
    const std::string text = element.innerText();
    const long width = 67 * static_cast<long>(text::columnsOf(text));
    long left = 10 * number(element, "x");
    const std::string anchor = element.getAttribute("text-anchor");
    if (anchor == "end") {
        left -= width;
    } else if (anchor == "middle") {
        left -= width / 2;
    }
    const long baseline = 10 * number(element, "y");
    return {text, left, left + width, baseline - 90, baseline + 30};
}

struct Picture
{
    explicit Picture(const std::string& svg)
    {
        Poco::XML::DOMParser parser; // throws if it is not XML
        const Poco::XML::AutoPtr<Poco::XML::Document> document = parser.parseString(svg);
        const auto* root = document->documentElement();
        width = 10 * number(*root, "width");
        height = 10 * number(*root, "height");
        const Poco::XML::AutoPtr<Poco::XML::NodeList> elements = root->getElementsByTagName("text");
        for (unsigned long i = 0; i < elements->length(); ++i) {
            texts.push_back(boxOf(static_cast<const Poco::XML::Element&>(*elements->item(i))));
        }
    }

    std::vector<std::string> words() const
    {
        std::vector<std::string> all;
        for (const Text& text : texts) {
            all.push_back(text.text);
        }
        return all;
    }

    long width;
    long height;
    std::vector<Text> texts;
};

bool overlap(const Text& a, const Text& b)
{
    return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

void expectReadable(const Picture& picture)
{
    for (std::size_t i = 0; i < picture.texts.size(); ++i) {
        const Text& text = picture.texts[i];
        EXPECT_GE(text.left, 0) << text.text;
        EXPECT_LE(text.right, picture.width) << text.text;
        EXPECT_LE(text.bottom, picture.height) << text.text;
        for (std::size_t other = 0; other < i; ++other) {
            EXPECT_FALSE(overlap(text, picture.texts[other]))
                << text.text << " over " << picture.texts[other].text;
        }
    }
}

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
    expectReadable(picture);
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
    expectReadable(picture);
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
    expectReadable(picture);
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
    expectReadable(Picture(svg));
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
    expectReadable(picture);
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
    expectReadable(Picture(svg));
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
