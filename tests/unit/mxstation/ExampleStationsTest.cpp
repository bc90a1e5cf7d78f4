// Every example station can be planned, without findings, and they show what a station may have.

#include <gmock/gmock.h>
#include <mxstation/Plan.h>

#include <algorithm>
#include <filesystem>
#include <set>

namespace {

using mxstation::Entry;
using mxstation::Plan;
using mxstation::Station;

const std::vector<Station>& exampleStations()
{
    static const std::vector<Station> all = [] {
        std::vector<Station> read;
        for (const auto& file : std::filesystem::directory_iterator(EXAMPLE_STATIONS)) {
            read.push_back(mxstation::readStation(file.path().string()));
        }
        return read;
    }();
    return all;
}

bool anyEntry(bool (*isMeant)(const Entry&))
{
    return std::any_of(exampleStations().begin(), exampleStations().end(), [&](const auto& one) {
        return std::any_of(one.entries.begin(), one.entries.end(), isMeant);
    });
}

TEST(ExampleStations, arePlannedWithoutFindings)
{
    EXPECT_GE(exampleStations().size(), 8U);
    for (const Station& station : exampleStations()) {
        for (const auto& finding : plan(station).findings) {
            ADD_FAILURE() << finding.place << ": " << finding.text;
        }
    }
}

TEST(ExampleStations, haveEachLayoutAndOneOfTheirOwn)
{
    std::set<std::string> expected{"of the station"};
    for (const auto& named : mxstation::namedLayouts()) {
        expected.insert(named.layout.name);
    }
    std::set<std::string> names;
    for (const Station& station : exampleStations()) {
        names.insert(station.layout.name);
    }
    EXPECT_EQ(names, expected);
}

TEST(ExampleStations, havePinnedAndReservedPlacesAndAFullRow)
{
    EXPECT_TRUE(anyEntry([](const Entry& one) { return one.at.input && one.at.output; }));
    EXPECT_TRUE(anyEntry([](const Entry& one) { return one.reserve && !one.module; }));
    EXPECT_TRUE(anyEntry([](const Entry& one) { return one.reserve && one.module; }));
    EXPECT_TRUE(std::any_of(exampleStations().begin(), exampleStations().end(),
                            [](const Station& one) { return one.entries.size() == 64; }));
}

bool anyRegisters(bool (*isMeant)(const mxstation::ModbusMap&))
{
    return std::any_of(exampleStations().begin(), exampleStations().end(),
                       [&](const Station& one) { return isMeant(one.modbus.value()); });
}

TEST(ExampleStations, haveRegistersOfEveryKind)
{
    using Map = mxstation::ModbusMap;
    using mxstation::PartOrder;
    for (const Station& station : exampleStations()) {
        ASSERT_TRUE(station.modbus) << station.file;
    }
    EXPECT_TRUE(anyRegisters([](const Map& map) { return map.words == PartOrder::Little; }));
    EXPECT_TRUE(anyRegisters([](const Map& map) { return map.bytes == PartOrder::Little; }));
    EXPECT_TRUE(anyRegisters([](const Map& map) { return !map.identity && !map.commit; }));
    EXPECT_TRUE(anyRegisters(
        [](const Map& map) { return map.identity && map.identity->readFunction == 4; }));
    EXPECT_TRUE(
        anyRegisters([](const Map& map) { return map.commit && map.commit->readsAreStaged; }));
    EXPECT_TRUE(
        anyRegisters([](const Map& map) { return map.commit && !map.commit->readsAreStaged; }));
    EXPECT_TRUE(anyRegisters([](const Map& map) { return map.inputs.readFunction == 3; }));
    EXPECT_TRUE(anyRegisters([](const Map& map) { return map.outputs.writeFunction == 6; }));
    EXPECT_TRUE(anyRegisters([](const Map& map) { return map.outputs.writeFunction == 22; }));
}

// The bytes in the comments of the files.
TEST(ExampleStations, haveTheBytesThatTheirCommentsState)
{
    int compared = 0;
    for (const Station& station : exampleStations()) {
        const Plan planned = plan(station);
        if (planned.station == "Test bench") {
            ++compared;
            EXPECT_EQ(planned.input.offset, 100U);
            EXPECT_EQ(planned.input.end() - 1, 131U);
            EXPECT_EQ(planned.output.offset, 200U);
            EXPECT_EQ(planned.output.end() - 1, 215U);
        } else if (planned.station == "Sorting hall") {
            ++compared;
            EXPECT_EQ(planned.input.size, 8 * 35U);
            EXPECT_EQ(planned.output.size, 8 * 11U);
        }
    }
    EXPECT_EQ(compared, 2);
}

} // namespace
