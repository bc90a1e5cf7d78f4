#include "ExampleModule.h"
#include "Failure.h"
#include "ParserAccess.h"

#include "devices/parser/mx/LoadFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <vector>

// No input can harm the process: each translation ends in a device or an exception. The buffers end
// with their allocations, so that a read too far is seen by AddressSanitizer.

namespace {

using testkit::Bytes;
using testkit::hexBytes;
using testkit::minimalModule;

// Returns whether `data` became a device.
bool survives(testkit::ParserAccess& parser, const std::vector<char>& data)
{
    const std::vector<char> exact(data.begin(), data.end());
    try {
        const auto device = parser.parse(exact, nullptr, 0, 0);
        parser.getChannelMappingInfoList(device.get());
        return device != nullptr;
    } catch (const std::runtime_error&) {
        return false;
    }
}

std::vector<char> prefixOf(const std::vector<char>& data, std::size_t length)
{
    return {data.begin(), data.begin() + static_cast<std::ptrdiff_t>(length)};
}

class BufferBounds : public testing::Test
{
protected:
    std::string failureOf(const testkit::MxBuffer& buffer)
    {
        const std::vector<char> data = buffer.chars();
        return testkit::failureOf([&] { parser.parse(data, nullptr, 0, 0); });
    }

    testkit::ParserAccess parser;
};

TEST_F(BufferBounds, EveryPrefixOfEveryExampleFileSurvives)
{
    std::size_t files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(EXAMPLE_MODULES)) {
        if (entry.path().extension() != ".bin") {
            continue;
        }
        std::vector<char> data;
        devices::parser::mx::loadFile(entry.path().string(), data);
        // Of a file near the largest size not every one, they would take minutes.
        const std::size_t step = data.size() < 5000 ? 1 : 997;
        for (std::size_t length = 0; length <= data.size(); length += step) {
            survives(parser, prefixOf(data, length));
        }
        // MX9999.bin is cut off; every other file is a device.
        EXPECT_EQ(survives(parser, data), entry.path().filename() != "MX9999.bin") << entry.path();
        ++files;
    }
    EXPECT_GE(files, 24U);
}

TEST_F(BufferBounds, EveryPrefixOfAModuleWithoutHeaderGroupSurvives)
{
    const std::vector<char> data = bufferOf(exampleGroups()).chars();
    for (std::size_t length = 0; length < data.size(); ++length) {
        survives(parser, prefixOf(data, length));
    }
    EXPECT_TRUE(survives(parser, data));
}

TEST_F(BufferBounds, EveryGroupCutAtEveryLengthAtTheBuffersEndSurvives)
{
    const Groups groups = exampleGroups();
    std::size_t devices = 0;
    std::size_t failures = 0;
    for (const auto& last : groups) {
        testkit::MxBuffer others;
        for (const auto& [id, payload] : groups) {
            if (id != last.first) {
                others.group(id, payload);
            }
        }
        for (std::size_t size = 0; size <= std::min<std::size_t>(last.second.size(), 300); ++size) {
            const Bytes cut(last.second.begin(),
                            last.second.begin() + static_cast<std::ptrdiff_t>(size));
            for (const char* checksum : {"0000", "0d0a", "ffff"}) {
                const auto length = static_cast<unsigned>(size + 6);
                const auto buffer = testkit::join({others.bytes(), testkit::u16(last.first),
                                                   testkit::u16(length), cut, hexBytes(checksum)});
                ++(survives(parser, {buffer.begin(), buffer.end()}) ? devices : failures);
            }
        }
    }
    EXPECT_GT(devices, 0U);
    EXPECT_GT(failures, 0U);
}

TEST_F(BufferBounds, EveryByteReplacedSurvives)
{
    Groups groups = exampleGroups();
    for (auto& [id, payload] : groups) {
        if (id == 0x20F1) {
            payload.resize(3);
        }
    }
    const std::vector<char> data = bufferOf(groups).chars();
    for (std::size_t at = 0; at < data.size(); ++at) {
        std::vector<char> changed = data;
        for (const int value : {0x00, 0x01, 0x0A, 0x0D, 0x7F, 0x80, 0xFF}) {
            changed[at] = static_cast<char>(value);
            survives(parser, changed);
        }
    }
    EXPECT_TRUE(survives(parser, data));
}

TEST_F(BufferBounds, LastParameterRecordBeyondTheBufferFails)
{
    // One byte of a record and the checksum: 3 of 29 bytes.
    EXPECT_EQ(failureOf(minimalModule().group(0x20C0, {1})),
              "Unexpected end of mx buffer (group 20c0)");
    // 27 bytes and the checksum are the record's 29: only the text is missing then.
    EXPECT_EQ(failureOf(minimalModule().group(0x20C0, testkit::ParameterRecord().bytes())),
              "Cannot find group 20d3");
    Bytes short27 = testkit::ParameterRecord().bytes();
    short27.resize(27);
    EXPECT_EQ(failureOf(minimalModule().group(0x20C0, short27)), "Cannot find group 20d3");
    short27.resize(26);
    EXPECT_EQ(failureOf(minimalModule().group(0x20C0, short27)),
              "Unexpected end of mx buffer (group 20c0)");
}

TEST_F(BufferBounds, LastChannelRecordBeyondTheBufferFails)
{
    EXPECT_EQ(failureOf(minimalModule().group(0x20D0, hexBytes("07 81 00 08"))),
              "Unexpected end of mx buffer (group 20d0)");
    const std::vector<char> data = minimalModule().group(0x20D0, hexBytes("0781000800")).chars();
    EXPECT_NO_THROW(parser.parse(data, nullptr, 0, 0));
}

TEST_F(BufferBounds, WordsAfterAChannelRecordAreNotRead)
{
    const std::vector<char> data =
        minimalModule().group(0x20D0, hexBytes("07 81 00 08 00 00 ff")).chars();
    EXPECT_NO_THROW(parser.parse(data, nullptr, 0, 0));
}

TEST_F(BufferBounds, LastNameEntryIsReadUpToTheEndOfTheBuffer)
{
    // The entry's text identifier is the checksum, 0: there is no text table.
    EXPECT_EQ(
        failureOf(
            minimalModule().group(0x20D0, hexBytes("07 81 00 08 00 00 00")).group(0x20D7, {7})),
        "Cannot find group 20d3");
}

TEST_F(BufferBounds, BytesAfterTheContentLengthAreStillTheBuffers)
{
    // The content ends with the channel group; the record's last byte is after it.
    const testkit::MxBuffer groups = minimalModule().group(0x20D0, hexBytes("07 81 00 08"));
    const auto content = static_cast<unsigned>(8 + groups.bytes().size());
    testkit::MxBuffer buffer;
    buffer.group(0x0000, testkit::u16(content)).raw(groups.bytes());
    EXPECT_EQ(failureOf(buffer), "Unexpected end of mx buffer (group 20d0)");
    const std::vector<char> data = buffer.raw({0}).chars();
    EXPECT_NO_THROW(parser.parse(data, nullptr, 0, 0));
}

} // namespace
