// As many records as groups can hold, all of them wrong: the output stays readable, and the time
// short. Comparing each record with each other one would take minutes.

#include "MxBuffer.h"

#include <mxauthor/Check.h>
#include <mxauthor/Diff.h>
#include <mxauthor/Explain.h>
#include <mxauthor/TextForm.h>

#include <gmock/gmock.h>

namespace {

using testkit::Bytes;
using testkit::MxBuffer;

constexpr unsigned parameterCount = 2259; // of 29 bytes, in 65,529
constexpr unsigned channelCount = 9361;
constexpr unsigned listCount = 25;

// Every parameter names the same lists of 6,375 options, none of which fits.
std::vector<char> fileOf(unsigned step)
{
    Bytes parameters;
    for (unsigned i = 0; i < parameterCount; ++i) {
        testkit::ParameterRecord record;
        record.number = static_cast<std::uint8_t>(i * step);
        record.position = static_cast<std::uint8_t>(4 + i % (step + 3));
        record.mapId = 1;
        const Bytes bytes = record.bytes();
        parameters.insert(parameters.end(), bytes.begin(), bytes.end());
    }
    Bytes lists;
    for (unsigned list = 0; list < listCount; ++list) {
        std::vector<std::pair<std::uint64_t, unsigned>> options;
        for (unsigned i = 0; i < 255; ++i) {
            options.emplace_back((list * 255U + i + 40) * (step + 6), 100);
        }
        const Bytes bytes = testkit::optionList(1, options);
        lists.insert(lists.end(), bytes.begin(), bytes.end());
    }
    Bytes channels;
    for (unsigned i = 0; i < channelCount; ++i) {
        const Bytes bytes = testkit::ChannelRecord{0, 0x81, 8, 0, 0}.bytes();
        channels.insert(channels.end(), bytes.begin(), bytes.end());
    }
    MxBuffer buffer = testkit::minimalModule();
    buffer.group(0x0010, Bytes(255));
    buffer.group(0x20C0, parameters);
    buffer.group(0x20C1, lists);
    buffer.group(0x20D0, channels);
    buffer.group(0x20D3, testkit::textTablePayload({{100, std::string(60000, 'x')}}));
    return buffer.chars();
}

TEST(LargeFiles, areCheckedWithOneFindingPerCause)
{
    const auto findings = mxauthor::check(fileOf(1));
    EXPECT_GT(findings.size(), 10000U);
    EXPECT_LT(findings.size(), 30000U);
    for (const mxauthor::Finding& finding : findings) {
        ASSERT_LT(describe(finding).size(), 400U);
    }
}

TEST(LargeFiles, areExplainedInShortWords)
{
    const auto bytes = fileOf(1);
    std::size_t next = 0;
    for (const mxauthor::ExplainedPart& part : mxauthor::explain(bytes).parts) {
        ASSERT_EQ(part.place.offset, next);
        next += part.place.length;
        ASSERT_LT(part.meaning.size(), 1500U) << part.field;
    }
    EXPECT_EQ(next, bytes.size());
}

TEST(LargeFiles, areComparedInShortWords)
{
    const auto comparison =
        compare(mxauthor::readMxFile(fileOf(1)), mxauthor::readMxFile(fileOf(2)));
    EXPECT_FALSE(comparison.imageStaysValid);
    EXPECT_GT(comparison.differences.size(), parameterCount);
    EXPECT_LT(comparison.differences.size(), 20000U);
    for (const mxauthor::Difference& difference : comparison.differences) {
        ASSERT_LT(difference.text.size(), 600U);
    }
}

// The bytes of `text` when it is built.
std::vector<char> bytesOf(const std::string& text)
{
    const mxauthor::BuildResult result = mxauthor::buildFromText(text, "");
    EXPECT_TRUE(result.errors.empty());
    const mxauthor::Bytes bytes = mxauthor::writeMxFile(result.file);
    return {bytes.begin(), bytes.end()};
}

TEST(LargeFiles, areDumpedWithALongTextOnce)
{
    Bytes parameters;
    for (unsigned i = 0; i < 1000; ++i) {
        testkit::ParameterRecord record;
        record.unitId = record.nameId;
        const Bytes bytes = record.bytes();
        parameters.insert(parameters.end(), bytes.begin(), bytes.end());
    }
    const std::vector<char> file =
        testkit::minimalModule()
            .group(0x20C0, parameters)
            .group(0x20D3, testkit::textTablePayload({{100, std::string(30000, 'x')}}))
            .chars();
    const std::string text = mxauthor::dumpText(mxauthor::readMxFile(file));
    EXPECT_LT(text.size(), 200000U); // 60 MB with the text at every parameter
    EXPECT_EQ(bytesOf(text), file);
}

TEST(LargeFiles, areDumpedWithAsManyOptionListsOfOneName)
{
    Bytes lists;
    for (unsigned i = 0; i < 3000; ++i) {
        const Bytes list = testkit::optionList(1, {});
        lists.insert(lists.end(), list.begin(), list.end());
    }
    testkit::ParameterRecord record;
    record.mapId = 1;
    const std::vector<char> file = testkit::minimalModule()
                                       .group(0x20C0, record.bytes())
                                       .group(0x20C1, lists)
                                       .group(0x20D3, testkit::textTablePayload({{100, "Mode"}}))
                                       .chars();
    const std::string text = mxauthor::dumpText(mxauthor::readMxFile(file));
    EXPECT_THAT(text, testing::HasSubstr("\n  Mode:"));
    EXPECT_THAT(text, testing::HasSubstr("\n  Mode-2:"));
    EXPECT_THAT(text, testing::HasSubstr("\n  Mode-3000:"));
    EXPECT_EQ(bytesOf(text), file);
}

} // namespace
