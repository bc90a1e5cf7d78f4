#include "../StationFixture.h"
#include "../export/Plans.h"

#include <HtmlPage.h>
#include <mxstation/Datasheet.h>
#include <text/Sha256.h>

#include <gmock/gmock.h>

#include <algorithm>

namespace {

using mxstation::Plan;
using testing::HasSubstr;
using testing::Not;
using testkit::HtmlPage;

Plan planOfExample(const std::string& name)
{
    return mxstation::plan(
        mxstation::readStation(std::string(EXAMPLE_STATIONS) + "/" + name + ".yaml"));
}

TEST(StationDatasheet, HasAChapterForEachModuleAndType)
{
    const Plan plan = planOfExample("pump-house");
    const HtmlPage page(datasheet(plan));
    page.expectLinksLead();
    EXPECT_EQ(page.between("<h1>", "</h1>"), "Pump house");
    EXPECT_THAT(page.page, HasSubstr("<dd class=\"sum\">" + text::sha256(plan.source) + "</dd>"));
    for (const char* id : {"module-1", "module-2", "module-3", "type-1", "type-2", "type-3",
                           "m2-p-32", "m2-r-24", "m2-parameter-19", "t2-parameter-19"}) {
        EXPECT_TRUE(page.has(id)) << id;
    }
    EXPECT_FALSE(page.has("m2-p-33") || page.has("module-4"));
    EXPECT_EQ(page.page, datasheet(plan));
}

TEST(StationDatasheet, StatesTheBytesOfBothImages)
{
    const HtmlPage page(datasheet(planOfExample("pump-house")));
    // Bytes 0 and 1 are the inputs, 2 to 9 the levels, then those of the reserve.
    EXPECT_EQ(page.row("in-2"), "2 | LT_101 IW2");
    EXPECT_EQ(page.row("in-3"), "3 | LT_101 +1");
    EXPECT_EQ(page.row("in-10"), "10–13 | reserved: flow meter");
    EXPECT_EQ(page.row("in-14"), "14–31 | padding");
    EXPECT_THAT(page.row("out-0"), HasSubstr(" | P_102 QX0_1 | P_101 QX0_0"));
    EXPECT_THAT(HtmlPage::words(page.between("Modules and reserved places", "</table>")),
                HasSubstr("reserved: flow meter–10–13none"));
}

TEST(StationDatasheet, StatesAliasesAndComments)
{
    const Plan plan = planOfExample("pump-house");
    const HtmlPage page(datasheet(plan));
    const auto level = std::find_if(plan.channels.begin(), plan.channels.end(),
                                    [](const auto& one) { return one.alias == "LT_101"; });
    ASSERT_NE(level, plan.channels.end());
    EXPECT_EQ(page.row("m2-channel-" + level->id),
              "AI 1 | LT_101 | input | IW2 | 2–3 | 16 bits, signed | level of tank 1");
}

TEST(StationDatasheet, MarksValuesThatDifferFromTheDefault)
{
    const HtmlPage page(datasheet(planOfExample("pump-house")));
    EXPECT_EQ(page.row("m2-parameter-19"), "Mains suppression #19 | 60 Hz | 50 Hz | 0 | 0");
    EXPECT_EQ(page.row("m2-parameter-21"), "Upper limit #21 | 9.9 V 9900 | 9.5 V 9500 | 2–3 | 2");
    EXPECT_EQ(page.row("m2-parameter-22"), "Lower limit #22 | -9.5 V -9500 | the same | 4–5 | 3");
    EXPECT_THAT(page.page, HasSubstr("<tr id=\"m2-parameter-21\" class=\"changed\">"));
    EXPECT_THAT(page.page, Not(HasSubstr("<tr id=\"m2-parameter-22\" class=\"changed\">")));
    EXPECT_THAT(page.page, HasSubstr("<dd>25, 4 differ from the default</dd>"));
}

TEST(StationDatasheet, StatesTheRegistersOfTheCoupler)
{
    const HtmlPage page(datasheet(planOfExample("pump-house")));
    // Module 2: 0x4000 and the stride of 128, 0x4080; register 2 of it is 16514. 9900 is 0x26ac.
    EXPECT_EQ(page.row("m2-r-2"), "2 | 26ac | 9900 | AI 1 / Upper limit | 2–3 | 16514");
    const std::string words = HtmlPage::words(page.between("Registers of each module", "</table>"));
    EXPECT_THAT(words, HasSubstr("2 Levels16512 to 16536 (0x4080 to 0x4098)12290 to 12291 "
                                 "(0x3002 to 0x3003)"));
    // 33 bytes of inputs take 17 registers.
    EXPECT_THAT(HtmlPage::words(page.between("Registers of the station", "</table>")),
                HasSubstr("Input image0 to 16 (0x0000 to 0x0010)read with 4"));
    const HtmlPage without(datasheet(planWith("modules: [MX0304.bin]\n")));
    EXPECT_FALSE(without.has("modbus"));
    EXPECT_EQ(without.row("m1-r-2"), "2 | 251c | 9500 | AI 1 / Upper limit | 2–3");
}

TEST(StationDatasheet, DescribesATypeOnce)
{
    const HtmlPage page(datasheet(planWith("modules: [MX0304.bin, MX0116.bin, MX0304.bin]\n")));
    page.expectLinksLead();
    EXPECT_TRUE(page.has("type-2") && page.has("module-3"));
    EXPECT_FALSE(page.has("type-3"));
    EXPECT_EQ(HtmlPage::words(page.between("<dt>Modules</dt><dd><a href=\"#module-1\">", "</dl>")),
              "1 MX0304, 3 MX0304_2");
    EXPECT_EQ(page.images.size(), 2U); // one for each type, and none in the row
}

TEST(StationDatasheet, IsWellFormedForEveryExample)
{
    for (const char* name : {"aligned", "bytes-first", "own-layout", "smallest", "words"}) {
        SCOPED_TRACE(name);
        const HtmlPage page(datasheet(planOfExample(name)));
        page.expectLinksLead();
        for (std::size_t i = 1; i < page.headings.size(); ++i) {
            EXPECT_LE(page.headings[i], page.headings[i - 1] + 1);
        }
    }
    const HtmlPage empty(datasheet(planWith("modules: []\n")));
    empty.expectLinksLead();
    EXPECT_THAT(empty.page, HasSubstr("The station has no modules."));
}

TEST(StationDatasheet, TextsAreNeverMarkup)
{
    const HtmlPage page(datasheet(planWith(R"(station: "</title><script>"
modules:
  - module: MX0304.bin
    name: "<i>\"&"
    channels: {AI 1: {alias: a, comment: "<b>\u202e"}}
  - reserve: {in: 2, name: "<u>"}
)")));
    page.expectLinksLead();
    for (const char* name : {"script", "i", "b", "u"}) {
        EXPECT_EQ(page.names.count(name), 0U) << name;
    }
    EXPECT_THAT(page.page, HasSubstr("reserved: &lt;u&gt;"));
    EXPECT_THAT(page.page, Not(HasSubstr("\u202e")));
}

TEST(StationDatasheet, NeedsAPlan)
{
    EXPECT_THROW(datasheet(planWith("modules: [none.bin]\n")), mxmodule::Failure);
}

} // namespace
