#include "export/Provenance.h"

#include "Plans.h"

#include <mxstation/ChannelExport.h>
#include <mxstation/Declarations.h>

#include <gmock/gmock.h>

namespace {

using mxstation::Plan;
using mxstation::Provenance;
using testing::ElementsAre;

// As in examples/modules/SHA256SUMS.
constexpr const char* sumOfMX0116 =
    "63414dcca89452c8ef77e4e69910fd07d5a318a69507ef713770c5e9c9231cd5";
constexpr const char* sumOfMX0208 =
    "7427e94acae8f50505cff247c51c06df688cca82e9a228393ec8733aa1afd751";

Plan planOfExamples()
{
    const mxstation::Station station = mxstation::stationOf(
        "modules: [MX0116.bin, MX0116.bin, MX0208.bin, MX0116.bin]\n", EXAMPLE_MODULES "/row.yaml");
    return mxstation::plan(station);
}

TEST(Provenance, hasTheSumOfTheStation)
{
    EXPECT_EQ(Provenance(planOf({})).stationSum(), sumOfAbc);
}

TEST(Provenance, hasTheSumOfTheFileOfEachModule)
{
    const Provenance provenance(planOfExamples());
    EXPECT_EQ(provenance.moduleSum(1), sumOfMX0116);
    EXPECT_EQ(provenance.moduleSum(2), sumOfMX0116);
    EXPECT_EQ(provenance.moduleSum(3), sumOfMX0208);
    EXPECT_EQ(provenance.moduleSum(4), sumOfMX0116);
    EXPECT_EQ(provenance.moduleSum(0), "");
    EXPECT_EQ(provenance.moduleSum(5), "");
}

TEST(Provenance, listsEachFileOnce)
{
    // printf 'modules: [MX0116.bin, MX0116.bin, MX0208.bin, MX0116.bin]\n' | sha256sum
    EXPECT_THAT(
        Provenance(planOfExamples()).lines(),
        ElementsAre(
            "Made by mxtool " + Provenance::version() + " of:",
            "SHA-256 07500b7ffee4af6065772688a7bc9aeb6d21a090bc53ffd353baded248969a27 station",
            std::string("SHA-256 ") + sumOfMX0116 + " modules 1 to 2, 4 MX0116.bin",
            std::string("SHA-256 ") + sumOfMX0208 + " module 3 MX0208.bin"));
}

std::vector<std::string> exportsOf(const Plan& plan)
{
    return {mxstation::channelsText(plan),    mxstation::channelsCsv(plan),
            mxstation::channelsJson(plan),    mxstation::declarations(plan).text,
            mxstation::plcopenXml(plan).text, mxstation::cHeader(plan).text};
}

TEST(Provenance, anExportIsTheSameFromAnotherDirectory)
{
    const std::string source = "modules: [MX0116.bin, MX0208.bin]\n";
    const Plan here = mxstation::plan(mxstation::stationOf(source, EXAMPLE_MODULES "/row.yaml"));
    const Plan there =
        mxstation::plan(mxstation::stationOf(source, EXAMPLE_MODULES "/../modules/row.yaml"));
    ASSERT_TRUE(here.ok());
    EXPECT_EQ(exportsOf(here), exportsOf(there));
    EXPECT_EQ(exportsOf(here), exportsOf(here));
}

// Its channels are not complete, and an export of them would look as if they were.
TEST(Provenance, thereIsNoneOfAPlanWithErrors)
{
    Plan plan = planOf({wholeAt("A", 'I', 'W', 2)});
    plan.findings = {{mxmodule::Severity::Warning, "a:1:1", "slight"},
                     {mxmodule::Severity::Error, "a:2:1", "wrong"},
                     {mxmodule::Severity::Warning, "a:3:1", "slight"}};
    try {
        mxstation::channelsText(plan);
        FAIL() << "an export of an incomplete plan";
    } catch (const mxmodule::Failure& failure) {
        ASSERT_EQ(failure.findings().size(), 1U);
        EXPECT_EQ(failure.reason().place, "a:2:1");
    }
    EXPECT_THROW(mxstation::channelsJson(plan), mxmodule::Failure);
    EXPECT_THROW(mxstation::channelsCsv(plan), mxmodule::Failure);
    EXPECT_THROW(mxstation::declarations(plan), mxmodule::Failure);
    EXPECT_THROW(mxstation::plcopenXml(plan), mxmodule::Failure);
    EXPECT_THROW(mxstation::cHeader(plan), mxmodule::Failure);
}

} // namespace
