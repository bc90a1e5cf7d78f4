#include <mxonline/SampleText.h>

#include <gtest/gtest.h>

namespace mxonline {

namespace {

// 1,700,000,000 seconds are 2023-11-14 22:13:20 UTC.
constexpr std::chrono::milliseconds timeOfSample{1700000000123};

const std::vector<NamedChannel>& channels()
{
    static const std::vector<NamedChannel> all = {
        {"P_101", 0, 1, "Pumps", "DO 1", "P_101", "QX0_0"},
        {"Levels/AI \"1\", left", 1, 2, "Levels", "AI \"1\", left", "", "IW1"},
        {"3/#7", 2, 3, "Raw", "\x1B[2J", "", "IX9_0#72"}};
    return all;
}

Sample sampleOfAll()
{
    Sample sample;
    sample.time = std::chrono::system_clock::time_point(timeOfSample);
    sample.values = {
        {1, "1", ""}, {0xFFFFFFFFFFFFFFFE, "-2", "0xfffe"}, {0, "01 02 03 04 05 06 07 08 ff", ""}};
    sample.isChanged = {false, true, false};
    return sample;
}

TEST(SampleText, IsATableWithTheChangesMarked)
{
    EXPECT_EQ(
        sampleText(channels(), sampleOfAll()),
        "2023-11-14T22:13:20.123Z\n"
        "Position  Module  Channel       Alias  Symbol    Value                       Hex\n"
        "1         Pumps   DO 1          P_101  QX0_0     1\n"
        "2         Levels  AI \"1\", left         IW1       -2                          0xfffe  *\n"
        "3         Raw     \\x1b[2J              IX9_0#72  01 02 03 04 05 06 07 08 ff\n");
}

TEST(SampleText, ListsChangesAlone)
{
    EXPECT_EQ(changesText(channels(), sampleOfAll()),
              "2023-11-14T22:13:20.123Z  Levels/AI \"1\", left  -2\n");
}

TEST(SampleText, IsALineOfCsv)
{
    EXPECT_EQ(sampleCsvHeading(channels()), "time,P_101,\"Levels/AI \"\"1\"\", left\",3/#7\r\n");
    EXPECT_EQ(sampleCsv(sampleOfAll()),
              "2023-11-14T22:13:20.123Z,1,-2,01 02 03 04 05 06 07 08 ff\r\n");
}

TEST(SampleText, IsALineOfJson)
{
    EXPECT_EQ(sampleJson(channels(), sampleOfAll()),
              "{\"schema\":{\"name\":\"mxtool.sample\",\"version\":1},"
              "\"time\":\"2023-11-14T22:13:20.123Z\",\"values\":{\"P_101\":1,"
              "\"Levels/AI \\\"1\\\", left\":-2,\"3/#7\":\"01 02 03 04 05 06 07 08 ff\"},"
              "\"changed\":[\"Levels/AI \\\"1\\\", left\"]}\n");
}

} // namespace

} // namespace mxonline
