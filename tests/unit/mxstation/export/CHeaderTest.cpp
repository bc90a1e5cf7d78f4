#include "Plans.h"
#include "export/Provenance.h"

#include <mxstation/Declarations.h>

#include <gmock/gmock.h>

// That compilers accept a header and that its functions work is tested by
// tests/stations/c-header-works.

namespace {

using mxstation::cHeader;
using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

std::string headerOf(const std::vector<mxstation::Channel>& channels)
{
    return cHeader(planOf(channels)).text;
}

TEST(CHeader, statesWhatItIsMadeOf)
{
    EXPECT_THAT(headerOf({}), HasSubstr("/* Made by mxtool " + mxstation::Provenance::version() +
                                        " of: */\n/* SHA-256 " + sumOfAbc + " station */\n"));
}

TEST(CHeader, hasThePlaceOfAChannelInItsImage)
{
    mxstation::Plan plan = planOf({withSign(wholeAt("A", 'Q', 'W', 12))});
    plan.output = {10, 6};
    EXPECT_THAT(cHeader(plan).text, AllOf(HasSubstr("#define PUMP_HOUSE_LEVELS_A_OFFSET 2u\n"
                                                    "#define PUMP_HOUSE_LEVELS_A_SIZE 2u\n"
                                                    "#define PUMP_HOUSE_LEVELS_A_MASK 0xffffu\n"
                                                    "static_assert("),
                                          HasSubstr("int16_t Pump_house_read_Levels_A(const "
                                                    "Pump_house_output_image *image)")));
    EXPECT_THAT(cHeader(plan).findings, IsEmpty());
}

// Bits 3 to 17 of the byte are in bytes 2, 3 and 4.
TEST(CHeader, hasTheBitsOfAField)
{
    EXPECT_THAT(headerOf({bitsAt("A", 'I', 2, 3, 15)}),
                AllOf(HasSubstr("#define PUMP_HOUSE_LEVELS_A_OFFSET 2u\n"
                                "#define PUMP_HOUSE_LEVELS_A_SIZE 3u\n"
                                "#define PUMP_HOUSE_LEVELS_A_MASK 0x7fffu\n"
                                "#define PUMP_HOUSE_LEVELS_A_BIT 3u\n"
                                "#define PUMP_HOUSE_LEVELS_A_BITS 15u\n"),
                      HasSubstr("uint16_t Pump_house_read_Levels_A(")));
}

TEST(CHeader, hasNoFunctionsForWhatIsOutsideTheImage)
{
    mxstation::Plan plan = planOf({wholeAt("A", 'I', 'W', 31), wholeAt("B", 'I', 'W', 30)});
    const auto made = cHeader(plan);
    EXPECT_THAT(made.text,
                AllOf(HasSubstr("/* IW31, channel \"A\" of module 1 \"Levels\" (Levels_A is not "
                                "declared: it is outside the input image) */\n\n"),
                      Not(HasSubstr("read_Levels_A")), HasSubstr("read_Levels_B")));
    ASSERT_THAT(made.findings, SizeIs(1));
    EXPECT_EQ(made.findings[0].severity, mxmodule::Severity::Warning);
    EXPECT_EQ(made.findings[0].text, "channel \"A\" of module 1 \"Levels\" (IW31) is not declared: "
                                     "it is outside the input image");
}

TEST(CHeader, hasNoFunctionsForWhatNoTypeHolds)
{
    const auto made = cHeader(planOf(
        {bitsAt("A", 'I', 2, 3, 65), bitsAt("B", 'I', 2, 3, 0), bitsAt("C", 'I', 2, 3, 64)}));
    EXPECT_THAT(made.text, AllOf(HasSubstr("(Levels_A is not declared: no type holds 65 bits)"),
                                 HasSubstr("(Levels_B is not declared: it has no bits)"),
                                 HasSubstr("uint64_t Pump_house_read_Levels_C")));
    EXPECT_THAT(made.findings, SizeIs(2));
}

// Compilers reject arrays without elements.
TEST(CHeader, hasNoArrayForAnEmptyImage)
{
    mxstation::Plan plan = planOf({wholeAt("A", 'I', 'W', 2)});
    plan.output = {0, 0};
    EXPECT_THAT(cHeader(plan).text, AllOf(HasSubstr("/* There is no output image. */"),
                                          Not(HasSubstr("Pump_house_output_image"))));
}

TEST(CHeader, aStationWithoutAUsableNameHasAPrefix)
{
    mxstation::Plan plan = planOf({wholeAt("A", 'I', 'W', 2)});
    plan.station = "*";
    EXPECT_THAT(cHeader(plan).text,
                AllOf(HasSubstr("#ifndef STATION_H\n"), HasSubstr("Station_read_Levels_A(")));
    plan.station = std::string(1000, 'x');
    EXPECT_THAT(cHeader(plan).text, HasSubstr(" " + std::string(40, 'x') + "_read_Levels_A("));
}

TEST(CHeader, hostileTextsStayInTheirComments)
{
    const std::string hostile = "*/ #error /* ?\\?/\n\r\\\x1B";
    mxstation::Plan plan = planOf({withNote(wholeAt(hostile, 'I', 'W', 2), hostile, hostile)});
    plan.station = hostile;
    plan.channels[0].moduleName = hostile;
    const std::string text = cHeader(plan).text;
    EXPECT_THAT(text, HasSubstr("/* IW2, channel \"* / #error / * ?"));
    for (std::size_t at = text.find("*/"); at != std::string::npos; at = text.find("*/", at + 2)) {
        EXPECT_EQ(text[at + 2], '\n');
    }
    EXPECT_EQ(text.find('\x1B'), std::string::npos);
    EXPECT_EQ(text.find("?\?/"), std::string::npos);
}

} // namespace
