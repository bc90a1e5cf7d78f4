#include "FailedAssertion.h"
#include "Failure.h"
#include "MxBuffer.h"
#include "ParserAccess.h"

#include <gmock/gmock.h>

#include <vector>

namespace {

using testing::ElementsAre;
using testkit::failureOf;
using testkit::linesPayload;
using testkit::MxBuffer;

constexpr const char* unknownCode = "Error in group 0x0011: Unknown datatype identifier";

class DataSizes : public testing::Test
{
protected:
    void load(const testkit::Bytes& payload)
    {
        data = MxBuffer().group(0x0011, payload).chars();
        parser.index(data);
    }

    void read() { parser.getDataArraySizes(&in, &out, &parameters, &diagnosis); }

    // Input, output, parameter and diagnosis size of a group with these lines.
    std::vector<std::uint32_t> sizesOf(const std::vector<std::string>& lines)
    {
        load(linesPayload(lines));
        read();
        return {in, out, parameters, diagnosis};
    }

    std::vector<char> data;
    testkit::ParserAccess parser;
    std::uint32_t in = 91;
    std::uint32_t out = 92;
    std::uint32_t parameters = 93;
    std::uint32_t diagnosis = 94;
};

TEST_F(DataSizes, InDataDWBAndOutDataWWAndParameterBBBBAre7And4And4And0)
{
    EXPECT_THAT(sizesOf({"InData DWB", "OutData W W", "Parameter BBBB"}), ElementsAre(7, 4, 4, 0));
}

TEST_F(DataSizes, DiagnosisIsTheFourth)
{
    EXPECT_THAT(sizesOf({"Diagnosis DD"}), ElementsAre(0, 0, 0, 8));
}

TEST_F(DataSizes, EmptyGroupSetsAllTo0)
{
    EXPECT_THAT(sizesOf({}), ElementsAre(0, 0, 0, 0));
}

TEST_F(DataSizes, SeparatorsAddNothing)
{
    EXPECT_THAT(sizesOf({"InData,s=B, W==ss"}), ElementsAre(3, 0, 0, 0));
}

TEST_F(DataSizes, KeyAloneAddsNothing)
{
    EXPECT_THAT(sizesOf({"InData", "OutDataW"}), ElementsAre(0, 2, 0, 0));
}

TEST_F(DataSizes, SizesOfARepeatedKeyAccumulate)
{
    EXPECT_THAT(sizesOf({"InData B", "OutData B", "InData D"}), ElementsAre(5, 1, 0, 0));
}

TEST_F(DataSizes, InDataXFails)
{
    load(linesPayload({"InDataX"}));
    EXPECT_EQ(failureOf([&] { read(); }), unknownCode);
}

TEST_F(DataSizes, LineCommentDIsSkipped)
{
    EXPECT_THAT(sizesOf({"Comment D", "InData B", "", " InData W", "indata W"}),
                ElementsAre(1, 0, 0, 0));
}

TEST_F(DataSizes, LowerCaseCodeFailsAndKeepsWhatWasAddedBefore)
{
    load(linesPayload({"OutData B", "InData Wd"}));
    EXPECT_EQ(failureOf([&] { read(); }), unknownCode);
    EXPECT_EQ(in, 2U);
    EXPECT_EQ(out, 1U);
    EXPECT_EQ(parameters, 0U);
}

TEST_F(DataSizes, TextMayEndAtNulWithAnyByteAfter)
{
    load(testkit::join(
        {testkit::textBytes(std::string("InData W\0\xFF", 10)), linesPayload({"OutData B"})}));
    read();
    EXPECT_EQ(in, 2U);
    EXPECT_EQ(out, 1U);
}

TEST_F(DataSizes, LinesThatDoNotFillThePayloadRunOutOfTheBuffer)
{
    // The second byte of the line end is missing: the count wraps and the walk leaves the group.
    load(testkit::textBytes("InData W\r"));
    EXPECT_EQ(failureOf([&] { read(); }), "Invalid textstring termination");
    // The checksum terminates the text.
    load(testkit::textBytes("InData W"));
    EXPECT_EQ(failureOf([&] { read(); }), "Invalid textstring termination");
}

TEST_F(DataSizes, WalkAfterThePayloadReadsWhatStandsThere)
{
    // One byte of the line end is missing. After it the walk finds three empty texts (the second
    // bytes of checksum, identifier and length) and then "InDataB", cut by the next checksum.
    data = MxBuffer()
               .group(0x0011, testkit::textBytes("InData W\r"))
               .raw(testkit::hexBytes("0100 000d 3f 496e44617461 420d 0a"))
               .chars();
    parser.index(data);
    EXPECT_EQ(failureOf([&] { read(); }), "Invalid textstring termination");
    EXPECT_EQ(in, 3U);
}

TEST_F(DataSizes, TextWithoutTerminatorFails)
{
    data = MxBuffer().raw(testkit::hexBytes("0011 0008 4141 4141")).chars();
    parser.index(data);
    EXPECT_EQ(failureOf([&] { read(); }), "Invalid textstring termination");
}

TEST_F(DataSizes, MissingGroupFailsAndLeavesTheSizes)
{
    data = MxBuffer().group(0x0012, {}).chars();
    parser.index(data);
    EXPECT_EQ(failureOf([&] { read(); }), "Missing group 0x0011");
    EXPECT_EQ(in, 91U);
}

TEST_F(DataSizes, Module0BC1E800NeverHasProcessData)
{
    parser.moduleId = 0x0BC1E800;
    EXPECT_THAT(sizesOf({"InData D", "OutData W", "Parameter B", "Diagnosis W"}),
                ElementsAre(0, 0, 1, 2));
}

TEST_F(DataSizes, Module0E81276DWithInDataWHasAnInputSizeOf4)
{
    parser.moduleId = 0x0E81276D;
    EXPECT_THAT(sizesOf({"InData W", "Parameter B"}), ElementsAre(4, 2, 1, 0));
}

TEST_F(DataSizes, NoOtherModuleIsCorrected)
{
    for (const std::uint32_t id : {0x0BC1E801U, 0x0E81276CU, 0x01020304U}) {
        parser.moduleId = id;
        EXPECT_THAT(sizesOf({"InData W", "OutData B"}), ElementsAre(2, 1, 0, 0)) << id;
    }
}

TEST_F(DataSizes, UpdateAddsToTheSizeAndGivesTheLengthOfTheLine)
{
    std::uint32_t size = 10;
    EXPECT_EQ(parser.updateDataArraySize("InData DWB", "InData", &size), 12U);
    EXPECT_EQ(size, 17U);
    EXPECT_EQ(parser.updateDataArraySize("InData", "InData", &size), 8U);
    EXPECT_EQ(size, 17U);
}

TEST_F(DataSizes, UpdateGives0ForALineThatDoesNotBeginWithTheKey)
{
    std::uint32_t size = 10;
    EXPECT_EQ(parser.updateDataArraySize(" InData D", "InData", &size), 0U);
    EXPECT_EQ(parser.updateDataArraySize("InDat", "InData", &size), 0U);
    EXPECT_EQ(parser.updateDataArraySize("", "InData", &size), 0U);
    EXPECT_EQ(size, 10U);
}

TEST_F(DataSizes, UpdateWrapsAt32Bits)
{
    std::uint32_t size = 0xFFFFFFFF;
    parser.updateDataArraySize("InData D", "InData", &size);
    EXPECT_EQ(size, 3U);
}

std::string assertion(const std::string& expression)
{
    return testkit::failedAssertion(
        "vendor/mx/src/mxparser_kv38",
        "void devices::parser::mx::Parser_kv38::getDataArraySizes(uint32_t*, uint32_t*, uint32_t*, "
        "uint32_t*)",
        expression);
}

using DataSizesDeathTest = DataSizes;

TEST_F(DataSizesDeathTest, EachNullPointerIsAFailedAssertionThatNamesIt)
{
    load({});
    EXPECT_DEATH(parser.getDataArraySizes(nullptr, &out, &parameters, &diagnosis),
                 assertion("inDataSize"));
    EXPECT_DEATH(parser.getDataArraySizes(&in, nullptr, &parameters, &diagnosis),
                 assertion("outDataSize"));
    EXPECT_DEATH(parser.getDataArraySizes(&in, &out, nullptr, &diagnosis),
                 assertion("paramDataSize"));
    EXPECT_DEATH(parser.getDataArraySizes(&in, &out, &parameters, nullptr),
                 assertion("diagDataSize"));
}

TEST_F(DataSizesDeathTest, PointersAreTestedInOrderAndBeforeTheGroup)
{
    EXPECT_DEATH(parser.getDataArraySizes(nullptr, nullptr, nullptr, nullptr),
                 assertion("inDataSize"));
}

} // namespace
