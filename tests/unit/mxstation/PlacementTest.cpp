// Where modules lie, worked out by hand from their data in bytes: MX0108 1 in; MX0116 2 in; MX0208
// 1 in, 1 out, of which the upper two bits in have no channel; MX0304 8 in; MX0404 8 out; MX0602 22
// in, 10 out.

#include "StationFixture.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(Placement, followsTheRowInThePlainLayout)
{
    const auto plan =
        planWith("modules: [MX0108.bin, MX0208.bin, MX0304.bin, MX0404.bin, MX0116.bin]");
    EXPECT_THAT(shownFindings(plan.findings), IsEmpty());
    EXPECT_THAT(shownModules(plan), ElementsAre("MX0108 in 0+1 out 0+0", "MX0208 in 1+1 out 0+1",
                                                "MX0304 in 2+8 out 1+0", "MX0404 in 10+0 out 1+8",
                                                "MX0116 in 10+2 out 9+0"));
    EXPECT_EQ(plan.input.offset, 0U);
    EXPECT_EQ(plan.input.size, 12U);
    EXPECT_EQ(plan.output.size, 9U);
    EXPECT_THAT(shownGaps(plan), ElementsAre("in no channel 1.6+2"));
}

TEST(Placement, fillsNoGapBeforeAPinOrAReservedPlace)
{
    const auto plan = planWith("modules:\n"
                               "  - MX0116.bin\n"
                               "  - MX0304.bin\n"
                               "  - reserve: {in: 4, name: spare}\n"
                               "  - {module: MX0208.bin, at: {in: 32}}\n"
                               "  - MX0108.bin\n");
    EXPECT_THAT(shownFindings(plan.findings), IsEmpty());
    EXPECT_THAT(shownModules(plan),
                ElementsAre("MX0116 in 0+2 out 0+0", "MX0304 in 2+8 out 0+0",
                            "MX0208 in 32+1 out 0+1", "MX0108 in 33+1 out 1+0"));
    EXPECT_THAT(shownGaps(plan), ElementsAre("in reserved 10.0+32 spare", "in padding 14.0+144",
                                             "in no channel 32.6+2"));
}

TEST(Placement, beginsEachModuleAtAWordInTheLayoutWords)
{
    const auto plan = planWith("layout: words\n"
                               "modules: [MX0108.bin, MX0304.bin, MX0208.bin, MX0116.bin]");
    EXPECT_THAT(shownModules(plan),
                ElementsAre("MX0108 in 0+1 out 0+0", "MX0304 in 2+8 out 0+0",
                            "MX0208 in 10+1 out 0+1", "MX0116 in 12+2 out 2+0"));
    EXPECT_EQ(plan.input.size, 14U);
    EXPECT_EQ(plan.output.size, 2U);
    EXPECT_THAT(shownGaps(plan), ElementsAre("in padding 1.0+8", "in no channel 10.6+2",
                                             "in padding 11.0+8", "out padding 1.0+8"));
}

TEST(Placement, putsModulesOfBitsLastInTheLayoutBytesFirst)
{
    const auto plan = planWith("layout: bytes-first\n"
                               "modules: [MX0108.bin, MX0304.bin, MX0208.bin]");
    EXPECT_THAT(shownModules(plan), ElementsAre("MX0108 in 10+1 out 2+0", "MX0304 in 2+8 out 2+0",
                                                "MX0208 in 11+1 out 2+1"));
    EXPECT_EQ(plan.input.size, 12U);
    EXPECT_EQ(plan.output.size, 4U);
    EXPECT_THAT(shownGaps(plan), ElementsAre("in status 0.0+16", "in no channel 11.6+2",
                                             "out status 0.0+16", "out padding 3.0+8"));
}

TEST(Placement, beginsEachModuleAtAMultipleOf8InTheLayoutAligned)
{
    const auto plan = planWith("layout: aligned\n"
                               "modules: [MX0108.bin, MX0602.bin, MX0208.bin]");
    EXPECT_THAT(shownFindings(plan.findings), IsEmpty());
    EXPECT_THAT(shownModules(plan), ElementsAre("MX0108 in 0+1 out 0+0", "MX0602 in 8+22 out 0+10",
                                                "MX0208 in 32+1 out 16+1"));
    EXPECT_EQ(plan.input.size, 34U);
    EXPECT_EQ(plan.output.size, 18U);
    EXPECT_EQ(plan.layout.byteOrder, mxstation::ByteOrder::Little);
    EXPECT_THAT(shownGaps(plan),
                ElementsAre("in padding 1.0+56", "in no channel 8.4+12", "in no channel 14.1+15",
                            "in no channel 18.0+3", "in no channel 19.0+24", "in padding 30.0+16",
                            "in no channel 32.6+2", "in status 33.0+8", "out no channel 0.1+7",
                            "out no channel 2.0+7", "out no channel 3.0+24", "out padding 10.0+48",
                            "out status 17.0+8"));
}

TEST(Placement, takesEveryStatementOfALayout)
{
    const auto plan = planWith("layout:\n"
                               "  start: {in: 100, out: 0x10}\n"
                               "  order: {out: bytes-first}\n"
                               "  align: {in: 4}\n"
                               "  pad_module: {out: 2}\n"
                               "  pad_image: 16\n"
                               "  status_before: {in: 3}\n"
                               "  status_behind: 1\n"
                               "  byte_order: little\n"
                               "modules: [MX0208.bin, MX0404.bin]");
    EXPECT_THAT(shownFindings(plan.findings), IsEmpty());
    // In: status 100 to 102, then 104; status 105; 16 bytes. Out: first the words, then the bits.
    EXPECT_THAT(shownModules(plan),
                ElementsAre("MX0208 in 104+1 out 24+1", "MX0404 in 108+0 out 16+8"));
    EXPECT_EQ(plan.input.offset, 100U);
    EXPECT_EQ(plan.input.size, 16U);
    EXPECT_EQ(plan.output.offset, 16U);
    EXPECT_EQ(plan.output.size, 16U);
    EXPECT_EQ(plan.layout.byteOrder, mxstation::ByteOrder::Little);
    EXPECT_THAT(shownGaps(plan),
                ElementsAre("in status 100.0+24", "in padding 103.0+8", "in no channel 104.6+2",
                            "in status 105.0+8", "in padding 106.0+80", "out padding 25.0+8",
                            "out status 26.0+8", "out padding 27.0+40"));
}

TEST(Placement, beginsFromTheLayoutThatALayoutIsLike)
{
    const auto plan = planWith("layout: {like: words, start: 1000}\n"
                               "modules: [MX0108.bin, MX0108.bin]");
    EXPECT_THAT(shownModules(plan),
                ElementsAre("MX0108 in 1000+1 out 1000+0", "MX0108_2 in 1002+1 out 1000+0"));
}

TEST(Placement, keepsTheRestOfAPlaceThatAModuleBegins)
{
    const std::string before = "modules:\n"
                               "  - MX0108.bin\n";
    const std::string after = "  - MX0304.bin\n";
    const auto empty = planWith(before + "  - reserve: {in: 4, out: 2, name: later}\n" + after);
    const auto filled = planWith(
        before + "  - {module: MX0208.bin, reserve: {in: 4, out: 2, name: later}}\n" + after);
    EXPECT_THAT(shownModules(filled), ElementsAre("MX0108 in 0+1 out 0+0", "MX0208 in 1+1 out 0+1",
                                                  "MX0304 in 5+8 out 2+0"));
    EXPECT_THAT(shownGaps(filled), ElementsAre("in no channel 1.6+2", "in reserved 2.0+24 later",
                                               "out reserved 1.0+8 later"));
    EXPECT_THAT(shownModules(empty), ElementsAre("MX0108 in 0+1 out 0+0", "MX0304 in 5+8 out 2+0"));
}

// A reserved place is among the modules of bytes whatever is in it.
TEST(Placement, keepsAddressesWhenBitsFillAPlaceInTheLayoutBytesFirst)
{
    const std::string before = "layout: bytes-first\n"
                               "modules:\n"
                               "  - MX0116.bin\n";
    const std::string after = "  - MX0304.bin\n";
    const auto empty = planWith(before + "  - reserve: {in: 3}\n" + after);
    const auto filled = planWith(before + "  - {module: MX0108.bin, reserve: {in: 3}}\n" + after);
    EXPECT_THAT(shownModules(empty),
                ElementsAre("MX0116 in 13+2 out 2+0", "MX0304 in 5+8 out 2+0"));
    EXPECT_THAT(shownModules(filled), ElementsAre("MX0116 in 13+2 out 2+0", "MX0108 in 2+1 out 2+0",
                                                  "MX0304 in 5+8 out 2+0"));
}

TEST(Placement, refusesPinsThatAreTaken)
{
    const auto plan = planWith("modules:\n"
                               "  - MX0304.bin\n"
                               "  - module: MX0108.bin\n"
                               "    at: {in: 7}\n"
                               "  - reserve: {in: 2, name: spare}\n"
                               "  - {module: MX0208.bin, at: {in: 9, out: 3}}\n"
                               "  - {module: MX0208.bin, at: {in: 20, out: 0}}\n");
    EXPECT_THAT(
        shownFindings(plan.findings),
        ElementsAre(
            "4:14 error byte 7 of the input image is not free: the module \"MX0304.bin\" in "
            "line 2 comes before in the image",
            "6:35 error byte 9 of the input image is not free: the reserved place \"spare\" "
            "in line 5 comes before in the image",
            "7:44 error byte 0 of the output image is not free: the module \"MX0208.bin\" in "
            "line 6 comes before in the image"));
    EXPECT_EQ(plan.findings[0].hint, "byte 8 is the first that is free there");
    EXPECT_THAT(plan.findings[0].accepted, ElementsAre("8"));
    EXPECT_EQ(plan.findings[0].excerpt, "    at: {in: 7}\n             ^\n");
    EXPECT_FALSE(plan.ok());
    EXPECT_THAT(plan.modules, IsEmpty());
}

TEST(Placement, refusesPinsBesideTheAlignment)
{
    const auto plan = planWith("layout: words\n"
                               "modules:\n"
                               "  - {module: MX0108.bin, at: {in: 5}}\n");
    EXPECT_THAT(
        shownFindings(plan.findings),
        ElementsAre("3:35 error byte 5 of the input image is no multiple of 2, at which the "
                    "layout begins a module"));
    EXPECT_EQ(plan.findings[0].hint, "byte 6 is the next one");
}

// The padding of a module is not free either.
TEST(Placement, refusesPinsInThePaddingBefore)
{
    const auto plan = planWith("layout: {pad_module: 4}\n"
                               "modules:\n"
                               "  - MX0108.bin\n"
                               "  - {module: MX0108.bin, at: {in: 3}}\n"
                               "  - {module: MX0108.bin, at: {in: 8}}\n");
    EXPECT_THAT(shownFindings(plan.findings),
                ElementsAre("4:35 error byte 3 of the input image is not free: the module "
                            "\"MX0108.bin\" in line 3 comes before in the image"));
}

// What comes before in the image is later in the row.
TEST(Placement, refusesPinsThatTheOrderForbids)
{
    const std::string row = "modules:\n"
                            "  - {module: MX0108.bin, at: {in: 4}}\n"
                            "  - MX0304.bin\n";
    EXPECT_THAT(shownModules(planWith(row)),
                ElementsAre("MX0108 in 4+1 out 0+0", "MX0304 in 5+8 out 0+0"));
    const auto plan = planWith("layout: bytes-first\n" + row);
    EXPECT_THAT(shownFindings(plan.findings),
                ElementsAre("3:35 error byte 4 of the input image is not free: the module "
                            "\"MX0304.bin\" in line 4 comes before in the image"));
    EXPECT_EQ(plan.findings[0].hint, "byte 10 is the first that is free there");
}

TEST(Placement, warnsOfAPinWithoutData)
{
    const auto plan = planWith("modules:\n"
                               "  - {module: MX0108.bin, at: {in: 4, out: 4}}\n"
                               "  - MX0208.bin\n");
    EXPECT_THAT(shownFindings(plan.findings),
                ElementsAre("2:43 warning there are no output data, the address has no effect"));
    EXPECT_THAT(shownModules(plan), ElementsAre("MX0108 in 4+1 out 0+0", "MX0208 in 5+1 out 0+1"));
}

TEST(Placement, refusesAModuleLargerThanItsPlace)
{
    const auto plan = planWith("modules:\n"
                               "  - {module: MX0304.bin, reserve: {in: 7}}\n"
                               "  - {module: MX0208.bin, reserve: {in: 1}}\n");
    EXPECT_THAT(shownFindings(plan.findings),
                ElementsAre("2:40 error the input data of the module take 8 bytes, 7 bytes are "
                            "reserved",
                            "3:35 error the output data of the module take 1 byte, 0 bytes are "
                            "reserved"));
}

TEST(Placement, refusesMoreThanTheLayoutAllows)
{
    EXPECT_THAT(shownFindings(planWith("layout: {most_modules: 2}\n"
                                       "modules:\n"
                                       "  - MX0108.bin\n"
                                       "  - reserve: {in: 1}\n"
                                       "  - MX0108.bin\n"
                                       "  - MX0108.bin\n"
                                       "  - MX0108.bin\n")
                                  .findings),
                ElementsAre("6:5 error this is module 3, the layout allows 2"));
    EXPECT_THAT(shownFindings(planWith("layout: {most_bytes: {in: 9}, status_behind: 1}\n"
                                       "modules:\n"
                                       "  - MX0304.bin\n"
                                       "  - MX0108.bin\n")
                                  .findings),
                ElementsAre("4:5 error the input image takes 10 bytes, the layout allows 9"));
    EXPECT_THAT(shownFindings(planWith("layout: {status_before: 3, most_bytes: 2}\n"
                                       "modules: []\n")
                                  .findings),
                ElementsAre("1:9 error the input image takes 3 bytes, the layout allows 2",
                            "1:9 error the output image takes 3 bytes, the layout allows 2"));
}

// Its channels are aligned on the bytes of the image: at byte 1, the last one lies in 18 to 25.
TEST(Placement, warnsOfChannelsElsewhereInTheModule)
{
    const auto plan = planWith("modules: [MX0108.bin, MX0602.bin]");
    EXPECT_THAT(shownFindings(plan.findings),
                ElementsAre("1:23 warning the channel \"Count 2\" (IL18) is in bytes 18 to 25, "
                            "outside the module, whose data are bytes 1 to 22"));
    EXPECT_EQ(plan.findings[0].hint, "at byte 8 of the input image its channels lie as at byte 0");
    EXPECT_TRUE(plan.ok());
    EXPECT_EQ(plan.channels.back().symbol, "QD6");
    const auto cured = planWith("modules: [MX0108.bin, {module: MX0602.bin, at: {in: 8}}]");
    EXPECT_THAT(shownFindings(cured.findings), IsEmpty());
}

// The least multiple of both 8 and the alignment: byte 8 could not be stated.
TEST(Placement, namesACureThatTheLayoutAllows)
{
    const auto plan = planWith("layout: {align: 5}\n"
                               "modules: [MX0108.bin, MX0602.bin]");
    ASSERT_THAT(plan.findings, testing::SizeIs(1));
    EXPECT_EQ(plan.findings[0].hint, "at byte 40 of the input image its channels lie as at byte 0");
    const auto cured = planWith("layout: {align: 5}\n"
                                "modules: [MX0108.bin, {module: MX0602.bin, at: {in: 40}}]");
    EXPECT_THAT(shownFindings(cured.findings), IsEmpty());
}

// Byte 2147483648 would cure it, but cannot be stated.
TEST(Placement, namesNoCureAfterTheLastAddressThatCanBeStated)
{
    const auto plan = planWith("modules: [{module: MX0602.bin, at: {in: 2147483647}}]");
    ASSERT_FALSE(plan.findings.empty());
    EXPECT_THAT(plan.findings[0].hint, testing::HasSubstr("byte 2147483647 of the input image is "
                                                          "the last that can be stated"));
    EXPECT_THAT(plan.findings[0].accepted, IsEmpty());
}

TEST(Placement, refusesAddressesOfMoreThan32Bits)
{
    const auto plan = planWith("modules:\n"
                               "  - {reserve: {in: 0x7fffffff}}\n"
                               "  - {reserve: {in: 0x7fffffff}}\n"
                               "  - MX0304.bin\n");
    EXPECT_THAT(shownFindings(plan.findings),
                ElementsAre("4:5 error the module ends at byte 4294967301, the last address of an "
                            "image is byte 4294967295"));
}

// Two reserved places end before byte 4294967294: two bytes are left.
TEST(Placement, placesAModuleInTheLastBytesOfAnImage)
{
    const auto plan = planWith("modules:\n"
                               "  - {reserve: {in: 0x7fffffff}}\n"
                               "  - {reserve: {in: 0x7fffffff}}\n"
                               "  - MX0116.bin\n"
                               "  - MX0402.bin\n");
    EXPECT_TRUE(plan.ok());
    ASSERT_THAT(plan.modules, testing::SizeIs(2));
    EXPECT_EQ(plan.modules[0].input.offset, 4294967294U);
    EXPECT_EQ(plan.input.size, 4294967296U);
    EXPECT_EQ(plan.modules[1].output.offset, 0U);
    EXPECT_EQ(plan.channels.back().symbol, "QW2");
}

// It takes no byte of the input image, so it does not end after the last one.
TEST(Placement, placesAModuleWithoutDataAfterTheLastAddress)
{
    const auto plan = planWith("modules:\n"
                               "  - {reserve: {in: 0x7fffffff}}\n"
                               "  - {reserve: {in: 0x7fffffff}}\n"
                               "  - {reserve: {in: 9}}\n"
                               "  - MX0402.bin\n");
    EXPECT_TRUE(plan.ok());
    ASSERT_THAT(plan.modules, testing::SizeIs(1));
    EXPECT_EQ(plan.modules[0].input.size, 0U);
    EXPECT_EQ(plan.channels.front().symbol, "QW0");
}

} // namespace
