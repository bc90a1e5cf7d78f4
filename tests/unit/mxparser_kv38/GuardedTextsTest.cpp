#include "GuardedParser.h"

// Texts and data sizes with the mx buffer next to a page that cannot be read: as the format
// requires inside the buffer, a failure at its end, and not one byte further.

namespace {

using testkit::failureOf;
using testkit::GuardedBuffer;
using testkit::hexBytes;
using testkit::join;
using testkit::MxBuffer;

constexpr const char* termination = "Invalid textstring termination";

// Group 0x20d3: the empty text table, and texts that end one byte past their length.

TEST_F(Guarded, EmptyTextTableReadsItsRecordAfterTheGroup)
{
    const std::string content = "0000 0008 000e 0000 20d3 0006 0000";
    index(hexBytes(content + "0007 4869 0d"));
    EXPECT_EQ(parser.getTextStringById(7), "Hi");
    index(hexBytes(content + "0007 00"));
    EXPECT_EQ(parser.getTextStringById(7), "");
}

TEST_F(Guarded, EmptyTextTableFailsAtTheBuffersEnd)
{
    const std::string content = "0000 0008 000e 0000 20d3 0006 0000";
    for (const char* rest : {"", "00"}) {
        index(hexBytes(content + rest));
        EXPECT_EQ(failureOf([&] { parser.getTextStringById(7); }),
                  "Unexpected end of mx buffer (group 20d3)");
    }
    for (const char* rest : {"0007", "0007 48", "0007 4869", "0008", "0008 48 0d"}) {
        index(hexBytes(content + rest));
        EXPECT_EQ(failureOf([&] { parser.getTextStringById(7); }), termination) << rest;
    }
}

TEST_F(Guarded, TextIsReadOneBytePastItsLength)
{
    const GuardedBuffer text(hexBytes("41 42 0d"));
    EXPECT_EQ(parser.mxTextToStdString(text.data(), 2), "AB");
    const GuardedBuffer other(hexBytes("41 42 43"));
    EXPECT_EQ(failureOf([&] { parser.mxTextToStdString(other.data(), 2); }), termination);
    const GuardedBuffer ended(hexBytes("41 0d"));
    EXPECT_EQ(parser.mxTextToStdString(ended.data(), 5000), "A");
    const GuardedBuffer empty(hexBytes("00"));
    EXPECT_EQ(parser.mxTextToStdString(empty.data(), 0), "");
}

TEST_F(Guarded, TextOfTheTableMayEndOneBytePastThePayload)
{
    index(hexBytes("20d3 000c 0000 0001 41 42 0dff"));
    EXPECT_EQ(parser.getTextStringById(1), "AB");
    index(hexBytes("20d3 000c 0000 0001 41 42 ff0d")); // two bytes past: too far
    EXPECT_EQ(failureOf([&] { parser.getTextStringById(1); }), termination);
}

TEST_F(Guarded, SkippedTextIsReadOneBytePastThePayload)
{
    index(hexBytes("20d3 000c 0000 0001 41 42 0aff"));
    EXPECT_EQ(failureOf([&] { parser.getTextStringById(2); }),
              "Cannot find requested text string: ID = 2");
    index(hexBytes("20d3 000c 0000 0001 41 42 ff0a"));
    EXPECT_EQ(failureOf([&] { parser.getTextStringById(2); }), termination);
}

// Group 0x0011: the count of bytes left wraps when the lines do not fill the payload.

TEST_F(Guarded, CountOfDataSizesThatWrapsFailsAtTheBuffersEnd)
{
    std::uint32_t in = 0;
    std::uint32_t out = 0;
    std::uint32_t parameters = 0;
    std::uint32_t diagnosis = 0;
    const auto read = [&] { parser.getDataArraySizes(&in, &out, &parameters, &diagnosis); };
    for (const char* line : {"InData W", "InData W\r", "InData W\r\nX", "\r"}) {
        index(MxBuffer().group(0x0011, testkit::textBytes(line)));
        EXPECT_EQ(failureOf(read), termination) << line;
    }
    // A last text of one byte, the checksum's second, which nothing ends.
    index(join({hexBytes("0011 000f"), testkit::textBytes("InData W\r"), hexBytes("0a41")}));
    EXPECT_EQ(failureOf(read), termination);
    EXPECT_EQ(in, 2U);
}

TEST_F(Guarded, CountOfDataSizesThatWrapsReadsOnInsideTheBuffer)
{
    std::uint32_t in = 0;
    std::uint32_t out = 0;
    std::uint32_t parameters = 0;
    std::uint32_t diagnosis = 0;
    // The checksum is the line's missing line feed and an empty line's carriage return; the lines
    // continue after the content, until the last one's line end crosses the buffer's end.
    index(join({hexBytes("0000 0008 0017 0000"), hexBytes("0011 000f"),
                testkit::textBytes("InData W\r"), hexBytes("0a0d"),
                testkit::textBytes("\nOutData D\r")}));
    EXPECT_EQ(failureOf([&] { parser.getDataArraySizes(&in, &out, &parameters, &diagnosis); }),
              termination);
    EXPECT_EQ(in, 2U);
    EXPECT_EQ(out, 4U);
}

} // namespace
