// The C interface: watching channels and setting outputs.
#include "OnlineHandles.h"

#include <gmock/gmock.h>
#include <mxonline/OutputSetting.h>
#include <mxonline/SampleText.h>
#include <nlohmann/json.hpp>

namespace mxonline {

namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::StartsWith;

WatchFromC watchOf(const SimulatedFromC& simulated, const std::vector<const char*>& names)
{
    return WatchFromC(
        mxonline_watch_of(simulated.coupler.get(), names.data(), names.size(), nullptr));
}

json sampleOf(const WatchFromC& watch)
{
    return json::parse(contentOf(mxonline_watch_sample(watch.get(), nullptr)));
}

OutputsFromC outputsOf(const SimulatedFromC& simulated,
                       const std::vector<mxonline_output_value>& values)
{
    return OutputsFromC(
        mxonline_outputs_of(simulated.coupler.get(), values.data(), values.size(), nullptr));
}

std::string errorOfOutputs(const mxonline_output_value& value)
{
    const SimulatedFromC simulated;
    return errorOf(
        [&](auto error) { return mxonline_outputs_of(simulated.coupler.get(), &value, 1, error); });
}

// The watch has the coupler after its handle is freed.
TEST(WatchFromC, ReadsTheValues)
{
    SimulatedFromC simulated;
    const WatchFromC watch = watchOf(simulated, {"LT_101", "Pumps/DO 1"});
    simulated.coupler.reset();
    EXPECT_EQ(sampleOf(watch)["values"], json({{"P_101", 0}, {"LT_101", 0}}));
    EXPECT_EQ(mxonline_simulator_set_input(simulated.simulator.get(), "LT_101", "-5", nullptr), 1);
    const json sample = sampleOf(watch);
    EXPECT_EQ(sample["values"], json({{"P_101", 0}, {"LT_101", -5}}));
    EXPECT_EQ(sample["changed"], json({"LT_101"}));
}

TEST(WatchFromC, NamesItsChannels)
{
    const SimulatedFromC simulated;
    const WatchFromC watch = watchOf(simulated, {"Levels/AI 1"});
    const std::string expected =
        R"({"schema":{"name":"mxonline.channels","version":1},"channels":[{"name":"LT_101",)"
        R"("module":2,"module_name":"Levels","channel":"AI 1","alias":"LT_101","symbol":"IW1"}]})";
    EXPECT_EQ(
        nlohmann::ordered_json::parse(contentOf(mxonline_watch_channels(watch.get(), nullptr)))
            .dump(),
        expected);
}

// MX0208 has 14 channels, MX0304 and MX0404 four each.
TEST(WatchFromC, WatchesAllWithoutNames)
{
    const SimulatedFromC simulated;
    const WatchFromC watch(mxonline_watch_of(simulated.coupler.get(), nullptr, 0, nullptr));
    EXPECT_EQ(sampleOf(watch)["values"].size(), 22U);
}

TEST(WatchFromC, IsNotMadeOfUnknownNames)
{
    const SimulatedFromC simulated;
    const char* const unknown = "LT_102";
    EXPECT_THAT(errorOf([&](auto error) {
                    return mxonline_watch_of(simulated.coupler.get(), &unknown, 1, error);
                }),
                StartsWith("1 the station has no channel"));
    const char* const none = nullptr;
    EXPECT_EQ(errorOf([&](auto error) {
                  return mxonline_watch_of(simulated.coupler.get(), &none, 1, error);
              }),
              "5 Found a null pointer, expected the name of a channel");
    EXPECT_EQ(errorOf([&](auto error) {
                  return mxonline_watch_of(simulated.coupler.get(), nullptr, 1, error);
              }),
              "5 Found a null pointer, expected names of channels");
}

TEST(WatchFromC, IsNoNullPointer)
{
    EXPECT_EQ(errorOf([](auto error) { return mxonline_watch_of(nullptr, nullptr, 0, error); }),
              "5 Found a null pointer, expected a coupler");
    EXPECT_EQ(errorOf([](auto error) { return mxonline_watch_channels(nullptr, error); }),
              "5 Found a null pointer, expected a watch");
    EXPECT_EQ(errorOf([](auto error) { return mxonline_watch_sample(nullptr, error); }),
              "5 Found a null pointer, expected a watch");
    mxonline_watch_free(nullptr);
}

TEST(OutputsFromC, AreReadWrittenAndRestored)
{
    SimulatedFromC simulated;
    const OutputsFromC outputs = outputsOf(simulated, {{"P_101", "on"}, {"Valves/AO 2", "0x12"}});
    simulated.coupler.reset();
    const json read = json::parse(contentOf(mxonline_outputs_read(outputs.get(), nullptr)));
    EXPECT_TRUE(read["done"].is_null());
    EXPECT_TRUE(read["outputs"][0]["now"].is_null());
    EXPECT_EQ(simulated.value("P_101"), "0");
    const json written = json::parse(contentOf(mxonline_outputs_write(outputs.get(), nullptr)));
    EXPECT_EQ(written["done"], true);
    EXPECT_EQ(written["outputs"][1]["now"], 18);
    EXPECT_EQ(simulated.value("P_101"), "1");
    const json restored = json::parse(contentOf(mxonline_outputs_restore(outputs.get(), nullptr)));
    EXPECT_EQ(restored["outputs"][1]["before"], 18);
    EXPECT_EQ(simulated.value("P_101"), "0");
}

// A signed value, one of more than 64 bits, and the finding of one that is not known.
TEST(OutputsFromC, AreShownAsJson)
{
    const NamedChannel valve = {"3/#7", 4, 3, "Raw", "\x80", "", "QW3"};
    const mxmodule::Finding finding = {mxmodule::Severity::Error, "", "no answer", "look"};
    const OutputReport report = {
        {{valve, {0, "-2", "0xfe"}, {0, "01 02 03 04 05 06 07 08 ff", ""}, {}}}, {finding}};
    EXPECT_EQ(nlohmann::ordered_json::parse(outputsJson(report)).dump(),
              R"({"schema":{"name":"mxonline.outputs","version":1},"done":false,"outputs":[{)"
              R"("name":"3/#7","module":3,"module_name":"Raw","channel":"€","alias":"",)"
              R"("symbol":"QW3","before":-2,"wanted":"01 02 03 04 05 06 07 08 ff","now":null}],)"
              R"("findings":[{"severity":"error","origin":"input","place":"","text":"no answer",)"
              R"("hint":"look","accepted":[],"excerpt":""}]})");
}

TEST(OutputsFromC, AreNotMadeOfWrongValues)
{
    EXPECT_THAT(errorOfOutputs({"P_102", "1"}), HasSubstr("1 the station has no channel"));
    EXPECT_THAT(errorOfOutputs({"LT_101", "1"}), HasSubstr("is an input"));
    EXPECT_THAT(errorOfOutputs({"P_101", "2"}), HasSubstr("expected 0 or 1"));
    EXPECT_EQ(errorOfOutputs({nullptr, "1"}),
              "5 Found a null pointer, expected the name of an output");
    EXPECT_EQ(errorOfOutputs({"P_101", nullptr}), "5 Found a null pointer, expected a value");
    const SimulatedFromC simulated;
    EXPECT_EQ(errorOf([&](auto error) {
                  return mxonline_outputs_of(simulated.coupler.get(), nullptr, 1, error);
              }),
              "5 Found a null pointer, expected values of outputs");
}

TEST(OutputsFromC, AreNoNullPointer)
{
    const std::string expected = "5 Found a null pointer, expected outputs of a coupler";
    EXPECT_EQ(errorOf([](auto error) { return mxonline_outputs_of(nullptr, nullptr, 0, error); }),
              "5 Found a null pointer, expected a coupler");
    EXPECT_EQ(errorOf([](auto error) { return mxonline_outputs_read(nullptr, error); }), expected);
    EXPECT_EQ(errorOf([](auto error) { return mxonline_outputs_write(nullptr, error); }), expected);
    EXPECT_EQ(errorOf([](auto error) { return mxonline_outputs_restore(nullptr, error); }),
              expected);
    mxonline_outputs_free(nullptr);
}

} // namespace

} // namespace mxonline
