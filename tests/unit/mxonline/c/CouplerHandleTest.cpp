// The C interface: the parameters of a coupler. Each function gives what the operation in C++
// gives.
#include "OnlineHandles.h"

#include "../coupler/CouplerFixture.h"

#include <gmock/gmock.h>
#include <mxmodule/c/CallFromC.h>

namespace mxonline {

namespace {

using testing::HasSubstr;
using testing::StartsWith;

DifferenceFromC differenceFromC(const SimulatedFromC& simulated)
{
    return DifferenceFromC(mxonline_difference_of(simulated.coupler.get(), nullptr));
}

Coupler couplerOf(const SimulatedFromC& simulated)
{
    return Coupler(onlinePlan(onlineSource), targetOf(simulated.address));
}

std::string textFor(const DifferenceFromC& difference, mxonline_difference_use use)
{
    return contentOf(mxonline_difference_text(difference.get(), use, nullptr));
}

TEST(CouplerFromC, DiffersAsInCpp)
{
    SimulatedFromC simulated;
    const DifferenceFromC difference = differenceFromC(simulated);
    const CouplerDifference expected = couplerOf(simulated).difference();
    simulated.coupler.reset();
    EXPECT_EQ(mxonline_difference_is_same(difference.get()), 0);
    EXPECT_EQ(contentOf(mxonline_difference_json(difference.get(), nullptr)), expected.json());
    EXPECT_EQ(textFor(difference, MXONLINE_PLAN), expected.text(DifferenceUse::Plan));
    EXPECT_EQ(textFor(difference, MXONLINE_APPLY), expected.text(DifferenceUse::Apply));
    EXPECT_EQ(textFor(difference, MXONLINE_VERIFY), expected.text(DifferenceUse::Verify));
    EXPECT_EQ(contentOf(mxonline_difference_question(difference.get(), nullptr)),
              expected.question());
    EXPECT_EQ(contentOf(mxonline_difference_findings(difference.get(), nullptr)),
              mxmodule::findingsJson({}));
    EXPECT_THAT(expected.text(), HasSubstr("Mains suppression"));
}

TEST(CouplerFromC, TellsWhichModuleIsAnother)
{
    const SimulatedFromC simulated;
    std::string other = onlineSource;
    other.replace(other.find("MX0208"), 6, "MX0116");
    other.replace(other.find(", channels: {DO 1: {alias: P_101}}"), 34, "");
    const CouplerFromC coupler(
        mxonline_connect(onlinePlanFromC(other).get(), simulated.address.c_str(), nullptr));
    const DifferenceFromC difference(mxonline_difference_of(coupler.get(), nullptr));
    EXPECT_THAT(contentOf(mxonline_difference_findings(difference.get(), nullptr)),
                HasSubstr("is 5a010116 in the station, the coupler has 5a020208"));
    EXPECT_THAT(
        errorOf([&](auto error) { return mxonline_apply(coupler.get(), difference.get(), error); }),
        StartsWith("3 "));
}

TEST(CouplerFromC, AppliesWhatWasConfirmed)
{
    SimulatedFromC simulated;
    DifferenceFromC difference = differenceFromC(simulated);
    const ReportFromC report(mxonline_apply(simulated.coupler.get(), difference.get(), nullptr));
    EXPECT_EQ(mxonline_difference_is_same(differenceFromC(simulated).get()), 1);
    EXPECT_THAT(errorOf([&](auto error) {
                    return mxonline_apply(simulated.coupler.get(), difference.get(), error);
                }),
                HasSubstr("no longer has the parameters that were shown"));
    simulated.coupler.reset();
    difference.reset();
    EXPECT_EQ(mxonline_report_is_done(report.get()), 1);
    EXPECT_THAT(contentOf(mxonline_report_json(report.get(), nullptr)),
                HasSubstr("\"written\": true"));
    EXPECT_THAT(contentOf(mxonline_report_text(report.get(), nullptr)), HasSubstr("Done: "));
    EXPECT_THAT(contentOf(mxonline_report_html(report.get(), nullptr)),
                StartsWith("<!DOCTYPE html>"));
    EXPECT_EQ(contentOf(mxonline_report_findings(report.get(), nullptr)),
              mxmodule::findingsJson({}));
}

TEST(CouplerFromC, IsReadIntoTheStation)
{
    const SimulatedFromC simulated;
    std::string expected = onlineSource;
    expected.replace(expected.find("60 Hz"), 5, "50 Hz");
    EXPECT_EQ(contentOf(mxonline_read_station(simulated.coupler.get(), nullptr)), expected);
}

TEST(CouplerFromC, CountsWhatWentOverTheBus)
{
    const SimulatedFromC simulated;
    Coupler coupler = couplerOf(simulated);
    static_cast<void>(coupler.difference());
    const DifferenceFromC difference = differenceFromC(simulated);
    EXPECT_EQ(contentOf(mxonline_coupler_traffic(simulated.coupler.get(), nullptr)),
              trafficJson(coupler.traffic()));
    EXPECT_EQ(trafficJson({3, 40, 2, 1}),
              "{\n  \"schema\": {\n    \"name\": \"mxonline.traffic\",\n    \"version\": 1\n  },\n"
              "  \"requests\": 3,\n  \"registers_read\": 40,\n  \"registers_written\": 2,\n"
              "  \"repetitions\": 1\n}\n");
}

TEST(CouplerFromC, IsNotMadeOfWrongTargetsAndPlans)
{
    const OnlinePlanFromC plan = onlinePlanFromC();
    const CouplerFromC coupler(mxonline_connect(plan.get(), "tcp:localhost", nullptr));
    EXPECT_EQ(contentOf(mxonline_coupler_target(coupler.get(), nullptr)), "tcp:localhost:502");
    EXPECT_THAT(errorOf([&](auto error) { return mxonline_connect(plan.get(), "udp:x", error); }),
                StartsWith("1 "));
    EXPECT_EQ(errorOf([&](auto error) { return mxonline_connect(plan.get(), nullptr, error); }),
              "5 Found a null pointer, expected the target of a coupler");
    EXPECT_EQ(errorOf([](auto error) { return mxonline_connect(nullptr, "tcp:x", error); }),
              "5 Found a null pointer, expected a plan of a station");
    EXPECT_THAT(errorOf([](auto error) {
                    return mxonline_connect(onlinePlanFromC("modules: [MX0116.bin]").get(), "tcp:x",
                                            error);
                }),
                HasSubstr("modbus"));
}

TEST(CouplerFromC, ThatDoesNotAnswerIsAnError)
{
    SimulatedFromC simulated;
    simulated.simulator.reset();
    EXPECT_THAT(
        errorOf([&](auto error) { return mxonline_difference_of(simulated.coupler.get(), error); }),
        StartsWith("3 "));
}

TEST(CouplerFromC, IsNoNullPointer)
{
    const std::string coupler = "5 Found a null pointer, expected a coupler";
    const SimulatedFromC simulated;
    const DifferenceFromC difference = differenceFromC(simulated);
    EXPECT_EQ(errorOf([](auto error) { return mxonline_coupler_target(nullptr, error); }), coupler);
    EXPECT_EQ(errorOf([](auto error) { return mxonline_coupler_traffic(nullptr, error); }),
              coupler);
    EXPECT_EQ(errorOf([](auto error) { return mxonline_read_station(nullptr, error); }), coupler);
    EXPECT_EQ(errorOf([](auto error) { return mxonline_difference_of(nullptr, error); }), coupler);
    EXPECT_EQ(errorOf([&](auto error) { return mxonline_apply(nullptr, difference.get(), error); }),
              coupler);
    EXPECT_EQ(errorOf([&](auto error) {
                  return mxonline_apply(simulated.coupler.get(), nullptr, error);
              }),
              "5 Found a null pointer, expected a difference");
    mxonline_coupler_free(nullptr);
}

TEST(DifferenceFromC, IsNoNullPointer)
{
    const std::string expected = "5 Found a null pointer, expected a difference";
    EXPECT_EQ(errorOf([](auto error) { return mxonline_difference_json(nullptr, error); }),
              expected);
    EXPECT_EQ(
        errorOf([](auto error) { return mxonline_difference_text(nullptr, MXONLINE_PLAN, error); }),
        expected);
    EXPECT_EQ(errorOf([](auto error) { return mxonline_difference_question(nullptr, error); }),
              expected);
    EXPECT_EQ(errorOf([](auto error) { return mxonline_difference_findings(nullptr, error); }),
              expected);
    EXPECT_EQ(mxonline_difference_is_same(nullptr), 0);
    mxonline_difference_free(nullptr);
}

TEST(DifferenceFromC, HasNoOtherUse)
{
    const DifferenceFromC difference = differenceFromC(SimulatedFromC());
    EXPECT_EQ(errorOf([&](auto error) {
                  return mxonline_difference_text(difference.get(),
                                                  static_cast<mxonline_difference_use>(3), error);
              }),
              "5 Found the use 3 of a difference, expected 0 to 2");
}

TEST(ReportFromC, IsNoNullPointer)
{
    const std::string expected = "5 Found a null pointer, expected a report";
    EXPECT_EQ(errorOf([](auto error) { return mxonline_report_json(nullptr, error); }), expected);
    EXPECT_EQ(errorOf([](auto error) { return mxonline_report_text(nullptr, error); }), expected);
    EXPECT_EQ(errorOf([](auto error) { return mxonline_report_html(nullptr, error); }), expected);
    EXPECT_EQ(errorOf([](auto error) { return mxonline_report_findings(nullptr, error); }),
              expected);
    EXPECT_EQ(mxonline_report_is_done(nullptr), 0);
    mxonline_report_free(nullptr);
}

} // namespace

} // namespace mxonline
