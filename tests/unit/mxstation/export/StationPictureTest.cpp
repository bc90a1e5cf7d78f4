#include "../StationFixture.h"
#include "Plans.h"
#include "export/PictureRows.h"
#include "export/Provenance.h"

#include <mxstation/StationPicture.h>

#include <SvgPicture.h>
#include <gmock/gmock.h>
#include <text/Utf8.h>

#include <algorithm>

namespace {

using mxstation::pictureBlocks;
using mxstation::Plan;
using mxstation::stationSvg;
using testing::Contains;
using testing::HasSubstr;
using testing::Not;

// The letters of a monospaced font of 10 pixels are 6.0 to 6.1 pixels wide.
SvgPicture stationPicture(const Plan& plan)
{
    return {stationSvg(plan), 61};
}

// A row of modules of eight kinds, in turn.
Plan planOfRow(std::size_t modules)
{
    const std::vector<std::string> kinds = {"MX0602", "MX0304", "MX0116", "MX0208",
                                            "MX0404", "MX0601", "MX0502", "MX0222"};
    std::string source = "layout: aligned\nmodules:\n";
    for (std::size_t i = 0; i < modules; ++i) {
        source += "  - " + kinds[i % kinds.size()] + ".bin\n";
    }
    return planWith(source);
}

std::string kindOf(const SvgPicture& picture, const std::string& words)
{
    const auto found = std::find_if(picture.texts.begin(), picture.texts.end(),
                                    [&words](const SvgText& text) { return text.text == words; });
    return found == picture.texts.end() ? "missing" : found->kind;
}

class PictureOfRow : public testing::TestWithParam<std::size_t>
{};

TEST_P(PictureOfRow, showsEveryModuleAndNoTextLiesOverAnother)
{
    const Plan plan = planOfRow(GetParam());
    ASSERT_EQ(plan.modules.size(), GetParam());
    const SvgPicture picture = stationPicture(plan);
    picture.expectReadable();
    for (const auto& module : plan.modules) {
        EXPECT_THAT(picture.words(), Contains(fmt::format("{}  {}", module.position, module.name)));
    }
}

TEST_P(PictureOfRow, isNotMuchHigherThanWide)
{
    const SvgPicture picture = stationPicture(planOfRow(GetParam()));
    EXPECT_LT(picture.width, 50000);
    EXPECT_LT(picture.height, 30000);
    EXPECT_LT(picture.height, 2 * picture.width);
}

INSTANTIATE_TEST_SUITE_P(Modules, PictureOfRow, testing::Values(1U, 8U, 64U));

TEST(StationPicture, showsWhichBitsAChannelHas)
{
    const Plan plan = planWith("modules: [{module: MX0304.bin, name: Levels, channels: "
                               "{AI 2: {alias: LT_102, comment: tank 2}}}, MX0208.bin]\n");
    const SvgPicture picture = stationPicture(plan);
    EXPECT_THAT(picture.words(), Contains("Input image: 9 bytes, bytes 0 to 8"));
    EXPECT_THAT(picture.words(), Contains("Output image: 1 byte, byte 0"));
    EXPECT_THAT(picture.words(), Contains("AI 1 \u00B7 IW0"));
    EXPECT_THAT(picture.words(), Contains("AI 1 +1"));
    EXPECT_THAT(picture.words(), Contains("LT_102 \u00B7 IW2 \u00B7 AI 2"));
    EXPECT_THAT(picture.words(), Contains("MX0304 \u00B7 bytes 0 to 7"));
    EXPECT_THAT(picture.words(), Contains("DO 8"));
    EXPECT_THAT(stationSvg(plan), HasSubstr("<title>Levels/AI 2: IW2, LT_102, tank 2</title>"));
}

TEST(StationPicture, showsGapsWithTheirReasons)
{
    const SvgPicture picture = stationPicture(planWith("layout: aligned\n"
                                                       "modules:\n"
                                                       "  - MX0108.bin\n"
                                                       "  - MX0602.bin\n"
                                                       "  - reserve: {in: 5, name: flow meter}\n"));
    for (const char* words :
         {"bytes 1 to 7: padding", "bytes 19 to 21: no channel", "bytes 30 to 31: padding",
          "bytes 32 to 36: reserved: flow meter", "byte 37: status"}) {
        EXPECT_THAT(picture.words(), Contains(words));
    }
}

// At input byte 1 the last channel of MX0602 is in bytes 18 to 25, its data in bytes 1 to 22.
TEST(StationPicture, marksChannelsOutsideTheirModule)
{
    const Plan plan = planWith("modules: [MX0108.bin, MX0602.bin, MX0304.bin]\n");
    const SvgPicture picture = stationPicture(plan);
    picture.expectReadable();
    EXPECT_EQ(kindOf(picture, "Count 2 +4"), "faint");
    for (const char* words : {"Count 2 +5", "Count 2 +6", "Count 2 +7"}) {
        EXPECT_EQ(kindOf(picture, words), "alarm");
    }
    EXPECT_EQ(kindOf(picture, "AI 1 \u00B7 IW23"), "");
}

TEST(StationPicture, marksChannelsOutsideTheImage)
{
    const SvgPicture picture = stationPicture(planOf({wholeAt("A", 'I', 'W', 40)}));
    EXPECT_EQ(kindOf(picture, "40"), "alarm");
    EXPECT_EQ(kindOf(picture, "A \u00B7 IW40"), "alarm");
}

TEST(StationPicture, drawsAtMostFourChannelsOfABit)
{
    std::vector<mxstation::Channel> channels;
    for (int i = 0; i < 9; ++i) {
        channels.push_back(bitsAt(fmt::format("C{}", i), 'I', 40, 0, 1));
    }
    const SvgPicture picture = stationPicture(planOf(channels));
    picture.expectReadable();
    EXPECT_THAT(picture.words(), Contains("C3"));
    EXPECT_THAT(picture.words(), Not(Contains("C4")));
    EXPECT_EQ(kindOf(picture, "+5"), "alarm");
}

TEST(StationPicture, whateverATextHoldsItIsXml)
{
    std::vector<mxstation::Channel> channels;
    for (unsigned byte = 0; byte < 256; ++byte) {
        channels.push_back(bitsAt(std::string("n") + static_cast<char>(byte), 'I', 40 + byte / 8,
                                  static_cast<std::uint8_t>(byte % 8), 1));
    }
    const std::string hostile = "</text><script>&\"'\x01\xFF" + text::toUtf8(U'\u202E') + "\uFFFE";
    channels.push_back(withNote(bitsAt(hostile, 'Q', 0, 0, 1), hostile, hostile));
    Plan plan = planOf(channels);
    plan.station = hostile;
    const std::string svg = stationSvg(plan);
    EXPECT_THAT(svg, HasSubstr("Station &lt;/text&gt;&lt;script&gt;&amp;"));
    SvgPicture(svg, 61).expectReadable();
}

TEST(StationPicture, theSizeFollowsTheModulesNotTheirAddresses)
{
    const std::string small = stationSvg(planWith("modules: [MX0304.bin]\n"));
    const std::string large = stationSvg(planWith(
        "modules: [{reserve: {in: 2000000000}}, MX0304.bin, {reserve: {in: 1000000000}}]\n"));
    EXPECT_LT(large.size(), small.size() + 2000);
}

TEST(StationPicture, statesWhatItWasMadeOf)
{
    const Plan plan = planWith("modules: [MX0304.bin]\n");
    const mxstation::Provenance provenance(plan);
    const std::string svg = stationSvg(plan);
    for (const std::string& part :
         {mxstation::Provenance::version(), provenance.stationSum(), provenance.moduleSum(1)}) {
        EXPECT_THAT(svg.substr(svg.find("<desc>"), svg.find("</desc>") - svg.find("<desc>")),
                    HasSubstr(part));
    }
    EXPECT_EQ(svg, stationSvg(plan));
}

TEST(StationPicture, ofAStationThatCannotBePlannedIsRejected)
{
    EXPECT_THROW(stationSvg(planWith("modules: [missing.bin]\n")), mxmodule::Failure);
}

// A block's rows as "FIRST+COUNT", an "x" after those with channels.
std::string rowsOfBlock(const mxstation::PictureBlock& block)
{
    std::string rows;
    for (const auto& row : block.rows) {
        rows += fmt::format("{}+{}{} ", row.firstByte, row.count, row.pieces.empty() ? "" : "x");
    }
    return rows;
}

// MX0602 has channels in bytes 0, 2 to 6, 8 to 10 and 14 to 21 of its input data.
TEST(StationPicture, bytesWithoutChannelsShareARowIfTheyAreThree)
{
    const Plan plan = planWith("modules: [MX0602.bin, {reserve: {in: 2}}]\n");
    const auto blocks = pictureBlocks(plan, true);
    ASSERT_EQ(blocks.size(), 2U);
    EXPECT_EQ(rowsOfBlock(blocks[0]), "0+1x 1+1 2+1x 3+1x 4+1x 5+1x 6+1x 7+1 8+1x 9+1x 10+1x "
                                      "11+3 14+1x 15+1x 16+1x 17+1x 18+1x 19+1x 20+1x 21+1x ");
    EXPECT_EQ(rowsOfBlock(blocks[1]), "22+2 ");
}

} // namespace
