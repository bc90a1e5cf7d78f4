// What holds for every station: random rows of the example modules and of modules with channels of
// every kind, in random layouts, against code that is written apart from the libraries. With
// RANDOM_STATIONS in the environment as many as it says, otherwise a few for everyday use.

#include "TemporaryDirectory.h"
#include "random/RandomStation.h"

#include <datamodel/DataModel.h>
#include <devices/parser/mx/Parser_kv38.h>
#include <mxmodule/ReadFile.h>
#include <mxstation/Pin.h>
#include <mxstation/Plan.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <set>

namespace {

using mxstation::GapReason;
using mxstation::Plan;
using mxstation::PlannedModule;
using mxstation::Station;
using randomstations::below;
using randomstations::RandomStation;
using randomstations::RowEntry;
using randomstations::RowModule;

int stationCount()
{
    const char* const stated = std::getenv("RANDOM_STATIONS");
    return stated == nullptr ? 60 : std::atoi(stated);
}

class RandomStations : public testing::Test
{
protected:
    RandomStations()
    {
        for (const std::string& name : exampleNames()) {
            add(name, mxmodule::readFile(std::string(EXAMPLE_MODULES "/") + name));
        }
        for (int i = 0; i < 60; ++i) {
            add("random-" + std::to_string(i) + ".bin", randomstations::randomModule(random));
        }
    }

    Station read(const std::string& text) const
    {
        return mxstation::stationOf(text, directory.path("station.yaml"));
    }

    const RowModule& chosenModule() { return modules[below(random, moduleCount())]; }

    std::uint32_t moduleCount() const { return static_cast<std::uint32_t>(modules.size()); }

    // A module that has room in the place of `entry`.
    const RowModule& moduleFor(const RowEntry& entry)
    {
        const RowModule* chosen = &chosenModule();
        while (chosen->size(true) > entry.size(true) || chosen->size(false) > entry.size(false)) {
            chosen = &chosenModule();
        }
        return *chosen;
    }

    std::mt19937 random{64};
    std::vector<RowModule> modules;

private:
    static std::set<std::string> exampleNames()
    {
        std::set<std::string> names;
        for (const auto& text : std::filesystem::directory_iterator(EXAMPLE_TEXTS)) {
            if (text.path().extension() == ".yaml") {
                names.insert(text.path().stem().string() + ".bin");
            }
        }
        names.erase("MX9999.bin"); // damaged on purpose
        return names;
    }

    void add(const std::string& name, const std::vector<char>& bytes)
    {
        directory.write(name, bytes);
        modules.emplace_back(name, bytes);
    }

    testkit::TemporaryDirectory directory;
};

const mxstation::ImageBytes& dataOf(const PlannedModule& module, bool isInput)
{
    return isInput ? module.input : module.output;
}

void expectPlaces(const RandomStation& station, const Plan& plan)
{
    for (const bool isInput : {true, false}) {
        const auto& image = isInput ? plan.input : plan.output;
        EXPECT_EQ(image.offset, station.rules.of(isInput).start);
        EXPECT_EQ(image.end(), station.end.of(isInput));
        for (const PlannedModule& module : plan.modules) {
            const RowEntry& entry = station.entries[module.entry];
            const auto& data = dataOf(module, isInput);
            EXPECT_EQ(data.size, entry.module->size(isInput));
            if (data.size != 0) {
                EXPECT_EQ(data.offset, entry.begin.of(isInput));
            }
        }
    }
}

// Each byte of an image is of one module, or of one gap for another reason than "no channel".
void expectOneOwnerOfEachByte(const Plan& plan, bool isInput)
{
    const auto& image = isInput ? plan.input : plan.output;
    std::vector<int> owners(image.size);
    for (const PlannedModule& module : plan.modules) {
        const auto& data = dataOf(module, isInput);
        for (std::uint64_t i = 0; i < data.size; ++i) {
            ++owners.at(data.offset - image.offset + i);
        }
    }
    for (const auto& gap : plan.gaps) {
        if (gap.isInput == isInput && gap.reason != GapReason::NoChannel) {
            EXPECT_TRUE(gap.firstBit % 8 == 0 && gap.bits % 8 == 0);
            for (std::uint64_t i = 0; i < gap.bits / 8; ++i) {
                ++owners.at(gap.firstBit / 8 - image.offset + i);
            }
        }
    }
    EXPECT_EQ(std::count(owners.begin(), owners.end(), 1), static_cast<int>(image.size));
}

// Each bit of a module's data is a channel's, or of one gap "no channel" of the module.
void expectChannelOrGap(const Plan& plan, const PlannedModule& module, bool isInput)
{
    const auto& data = dataOf(module, isInput);
    std::vector<int> channels(data.size * 8);
    std::vector<int> gaps(data.size * 8);
    const auto count = [&data](std::vector<int>& bits, std::uint64_t first, std::uint64_t number) {
        for (std::uint64_t bit = first; bit < first + number; ++bit) {
            if (bit >= data.offset * 8 && bit < data.end() * 8) {
                ++bits[bit - data.offset * 8];
            }
        }
    };
    for (const auto& channel : plan.channels) {
        if (channel.module == module.position && channel.isInput == isInput) {
            count(channels, channel.firstBit, channel.bits);
        }
    }
    for (const auto& gap : plan.gaps) {
        if (gap.module == module.position && gap.isInput == isInput) {
            EXPECT_EQ(gap.reason, GapReason::NoChannel);
            EXPECT_TRUE(gap.firstBit >= data.offset * 8 &&
                        gap.firstBit + gap.bits <= data.end() * 8);
            count(gaps, gap.firstBit, gap.bits);
        }
    }
    for (std::size_t i = 0; i < channels.size(); ++i) {
        EXPECT_EQ(gaps[i], channels[i] == 0 ? 1 : 0) << "bit " << i << " of " << module.name;
    }
}

std::vector<std::string> symbolsOfTheParser(const RowModule& module, unsigned input,
                                            unsigned output)
{
    devices::parser::mx::Parser_kv38 parser;
    const auto device = parser.parse(module.bytes(), nullptr, input, output);
    std::vector<std::string> symbols;
    for (const auto& attribute : device->attributes) {
        const auto* const channel = dynamic_cast<const datamodel::Channel*>(attribute.get());
        if (channel != nullptr && !channel->iecSymbol.empty()) {
            symbols.push_back(channel->iecSymbol);
        }
    }
    return symbols;
}

void expectChannels(const RowModule& module, const Plan& plan, const PlannedModule& planned)
{
    const auto expected = module.places(planned.input.offset, planned.output.offset);
    const auto symbols = symbolsOfTheParser(module, static_cast<unsigned>(planned.input.offset),
                                            static_cast<unsigned>(planned.output.offset));
    ASSERT_EQ(symbols.size(), expected.size());
    std::size_t i = 0;
    for (const auto& channel : plan.channels) {
        if (channel.module != planned.position) {
            continue;
        }
        ASSERT_LT(i, expected.size());
        EXPECT_EQ(channel.symbol, symbols[i]);
        EXPECT_EQ(channel.symbol, expected[i].symbol);
        EXPECT_EQ(channel.isInput, expected[i].isInput);
        EXPECT_EQ(channel.firstBit, expected[i].firstBit);
        EXPECT_EQ(channel.bits, expected[i].bits);
        ++i;
    }
    EXPECT_EQ(i, expected.size());
}

// The first address from that of the data on without a displaced channel; one that is a multiple of
// 8 too where the layout begins no module at it; empty: it is that of the data.
std::string cureOf(const RowModule& module, bool isInput, std::uint64_t first,
                   std::uint64_t alignment)
{
    std::uint64_t cure = first;
    while (module.isDisplaced(isInput, cure)) {
        ++cure;
    }
    const std::uint64_t step = cure % alignment == 0 ? 1 : 8;
    while (cure % alignment != 0 || cure % step != 0) {
        ++cure;
    }
    return cure == first ? "" : std::to_string(cure);
}

// "LINE WARNING CURE" for each image of each module whose channels are displaced or outside.
std::vector<std::string> expectedFindings(const RandomStation& station, const Plan& plan)
{
    std::vector<std::string> expected;
    for (const PlannedModule& planned : plan.modules) {
        const RowModule& module = *station.entries[planned.entry].module;
        for (const bool isInput : {true, false}) {
            const std::uint64_t first = dataOf(planned, isInput).offset;
            if (module.isDisplaced(isInput, first) || module.isOutside(isInput, first)) {
                const std::size_t line = RandomStation::firstLine + planned.entry;
                expected.push_back(
                    std::to_string(line) + " warning " +
                    cureOf(module, isInput, first,
                           (isInput ? station.rules.input : station.rules.output).align));
            }
        }
    }
    return expected;
}

std::vector<std::string> shownLines(const Plan& plan)
{
    std::vector<std::string> shown;
    for (const auto& finding : plan.findings) {
        const std::string place = finding.place.substr(plan.file.size() + 1);
        shown.push_back(place.substr(0, place.find(':')) + " " + severityName(finding.severity) +
                        " " +
                        (finding.severity == mxmodule::Severity::Error ? finding.text
                         : finding.accepted.empty()                    ? ""
                                                                       : finding.accepted.front()));
    }
    return shown;
}

void expectPlan(const RandomStation& station, const Plan& plan)
{
    ASSERT_TRUE(plan.ok()) << testing::PrintToString(shownLines(plan));
    expectPlaces(station, plan);
    for (const bool isInput : {true, false}) {
        expectOneOwnerOfEachByte(plan, isInput);
        for (const PlannedModule& module : plan.modules) {
            expectChannelOrGap(plan, module, isInput);
        }
    }
    for (const PlannedModule& module : plan.modules) {
        expectChannels(*station.entries[module.entry].module, plan, module);
    }
    EXPECT_EQ(shownLines(plan), expectedFindings(station, plan));
}

const PlannedModule* moduleOfEntry(const Plan& plan, std::size_t entry)
{
    const auto found =
        std::find_if(plan.modules.begin(), plan.modules.end(),
                     [entry](const PlannedModule& module) { return module.entry == entry; });
    return found == plan.modules.end() ? nullptr : &*found;
}

// Every module of `before` has its addresses in `after`.
void expectNoMove(const Plan& before, const Plan& after)
{
    ASSERT_TRUE(after.ok()) << testing::PrintToString(shownLines(after));
    for (const PlannedModule& module : before.modules) {
        const PlannedModule* const same = moduleOfEntry(after, module.entry);
        ASSERT_NE(same, nullptr);
        for (const bool isInput : {true, false}) {
            if (dataOf(module, isInput).size != 0) {
                EXPECT_EQ(dataOf(*same, isInput).offset, dataOf(module, isInput).offset);
            }
        }
    }
}

TEST_F(RandomStations, giveEveryByteOneOwnerAndEveryChannelTheSymbolOfTheParser)
{
    std::size_t found = 0;
    for (int i = 0; i < stationCount() && !HasFailure(); ++i) {
        const RandomStation station = randomStation(random, modules);
        SCOPED_TRACE(station.text());
        const Plan plan = mxstation::plan(read(station.text()));
        expectPlan(station, plan);
        found += plan.findings.size();
    }
    EXPECT_GT(found, static_cast<std::size_t>(stationCount() / 4));
}

TEST_F(RandomStations, moveNothingWhenAReservedPlaceIsFilled)
{
    int filled = 0;
    for (int i = 0; i < stationCount() && !HasFailure(); ++i) {
        RandomStation station = randomStation(random, modules);
        SCOPED_TRACE(station.text());
        const Plan before = mxstation::plan(read(station.text()));
        for (RowEntry& entry : station.entries) {
            if (entry.module == nullptr && below(random, 2) == 0) {
                entry.module = &moduleFor(entry);
                ++filled;
            }
        }
        SCOPED_TRACE(station.text());
        const Plan after = mxstation::plan(read(station.text()));
        expectNoMove(before, after);
        expectPlan(station, after);
    }
    EXPECT_GT(filled, stationCount() / 4);
}

// Where modules of bits are last, one of bytes would be before them: the new one is of bits then.
TEST_F(RandomStations, moveNothingWhenThePinnedRowGrows)
{
    for (int i = 0; i < stationCount() && !HasFailure(); ++i) {
        const RandomStation station = randomStation(random, modules);
        SCOPED_TRACE(station.text());
        const Station first = read(station.text());
        const Plan before = mxstation::plan(first);
        const RowModule* added = &chosenModule();
        while (!added->isOfBits() &&
               (station.rules.input.isBytesFirst || station.rules.output.isBytesFirst)) {
            added = &chosenModule();
        }
        const std::string text = mxstation::pinned(first, before) + "  - " + added->name() + "\n";
        SCOPED_TRACE(text);
        const Plan after = mxstation::plan(read(text));
        expectNoMove(before, after);
        EXPECT_EQ(after.modules.size(), before.modules.size() + 1);
    }
}

} // namespace
