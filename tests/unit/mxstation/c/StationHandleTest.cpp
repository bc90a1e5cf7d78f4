// The C interface: stations.
#include "StationHandles.h"

#include "../StatedStation.h"

#include <gmock/gmock.h>
#include <mxmodule/c/CallFromC.h>
#include <mxstation/Pin.h>

#include <TemporaryDirectory.h>

#include <fstream>

namespace {

using testing::HasSubstr;
using testing::StartsWith;

const char* const sourceFromC = R"(station: Dosing # line 1
modules:
  - MX0116.bin
  - MX0208.bin
)";

TEST(StationFromC, IsThatOfTheText)
{
    const StationFromC station = stationFromC(sourceFromC);
    ErrorFromC error;
    EXPECT_EQ(contentOf(mxstation_name(station.get(), error.place())), "Dosing");
    EXPECT_EQ(contentOf(mxstation_source(station.get(), error.place())), sourceFromC);
    EXPECT_EQ(contentOf(mxstation_findings(station.get(), error.place())),
              mxmodule::findingsJson({}));
    EXPECT_EQ(error.shown(), "none");
}

TEST(StationFromC, IsThatOfTheFile)
{
    const testkit::TemporaryDirectory directory;
    const std::string path = directory.path("row.yaml");
    std::ofstream(path) << "station: Row\nmodules:\n  - " EXAMPLE_MODULES "/MX0116.bin\n";
    ErrorFromC error;
    const StationFromC station(mxstation_load(path.c_str(), nullptr, error.place()));
    EXPECT_EQ(contentOf(mxstation_name(station.get(), error.place())), "Row");
}

TEST(StationFromC, PinsWhatThePlanSays)
{
    const mxstation::Station station = statedStation(sourceFromC);
    const std::string pinned =
        contentOf(mxstation_pinned(stationFromC(sourceFromC).get(), nullptr));
    EXPECT_EQ(pinned, mxstation::pinned(station, mxstation::plan(station)));
    EXPECT_THAT(pinned, HasSubstr("  - module: MX0208.bin\n    at: {in: 2, out: 0}\n"));
}

// Line 3, column 5: the reference.
TEST(StationFromC, SaysWhatIsWrongInItsFindings)
{
    const char* const source = "station: Row\nmodules:\n  - missing.bin\n";
    const StationFromC station = stationFromC(source);
    const std::string findings = contentOf(mxstation_findings(station.get(), nullptr));
    EXPECT_EQ(findings, mxmodule::findingsJson(statedStation(source).findings));
    EXPECT_THAT(findings, HasSubstr("line.yaml:3:5"));
    ErrorFromC error;
    EXPECT_EQ(mxstation_pinned(station.get(), error.place()), nullptr);
    EXPECT_EQ(mxmodule_error_code(error.error()), MXMODULE_INPUT);
    EXPECT_THAT(mxmodule_error_place(error.error()), HasSubstr("line.yaml:3:5"));
}

TEST(StationFromC, TakesTheCatalogueThatIsStated)
{
    const std::string source = "modules:\n  - 5a030304\n";
    const StationFromC station(mxstation_from_text(source.data(), source.size(), "<row>",
                                                   "sqlite:/nowhere/devices.sqlite", nullptr));
    EXPECT_THAT(contentOf(mxstation_findings(station.get(), nullptr)),
                HasSubstr("/nowhere/devices.sqlite"));
}

TEST(StationFromC, IsNotMadeOfWhatCannotBeRead)
{
    EXPECT_THAT(
        errorOf([](auto error) { return mxstation_load("/nowhere/row.yaml", nullptr, error); }),
        StartsWith("2 "));
    EXPECT_EQ(errorOf([](auto error) { return mxstation_load(nullptr, nullptr, error); }),
              "5 Found a null pointer, expected the path of a station file");
    EXPECT_EQ(
        errorOf([](auto error) { return mxstation_from_text(nullptr, 1, "row", nullptr, error); }),
        "5 Found a null pointer, expected a station file");
    EXPECT_EQ(
        errorOf([](auto error) { return mxstation_from_text("", 0, nullptr, nullptr, error); }),
        "5 Found a null pointer, expected a name for messages");
}

TEST(StationFromC, IsNoNullPointer)
{
    const std::string expected = "5 Found a null pointer, expected a station";
    EXPECT_EQ(errorOf([](auto error) { return mxstation_name(nullptr, error); }), expected);
    EXPECT_EQ(errorOf([](auto error) { return mxstation_source(nullptr, error); }), expected);
    EXPECT_EQ(errorOf([](auto error) { return mxstation_findings(nullptr, error); }), expected);
    EXPECT_EQ(errorOf([](auto error) { return mxstation_pinned(nullptr, error); }), expected);
    EXPECT_EQ(errorOf([](auto error) { return mxstation_plan_of(nullptr, error); }), expected);
    mxstation_free(nullptr);
}

} // namespace
