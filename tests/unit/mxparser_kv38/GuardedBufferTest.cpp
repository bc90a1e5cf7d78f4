#include "ExampleModule.h"
#include "GuardedParser.h"

#include "devices/parser/mx/LoadFile.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <vector>

// Each read that the format lets run past its group, with the mx buffer next to a page that cannot
// be read: as the format requires inside the buffer, a failure at its end, and not one byte
// further.

namespace {

using testing::ElementsAre;
using testkit::Bytes;
using testkit::ChannelRecord;
using testkit::failureOf;
using testkit::GuardedBuffer;
using testkit::hexBytes;
using testkit::join;
using testkit::minimalModule;
using testkit::MxBuffer;
using testkit::ParameterRecord;

// The first `size` bytes.
Bytes cut(const Bytes& bytes, std::size_t size)
{
    return {bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size)};
}

using GuardedDeathTest = Guarded;

TEST_F(GuardedDeathTest, ByteAfterAGuardedBufferCannotBeRead)
{
    for (const std::size_t size : {0U, 1U, 4095U, 4096U, 4097U}) {
        const GuardedBuffer buffer(Bytes(size, 0x41));
        if (size != 0) {
            EXPECT_EQ(buffer.data()[size - 1], 0x41);
        }
        const volatile std::uint8_t* const next = buffer.data() + size;
        EXPECT_DEATH(static_cast<void>(*next), "") << size;
    }
}

// Group 0: the content length is the last field in the buffer, or crosses its end.

TEST_F(Guarded, ContentLengthThatEndsTheBufferIsRead)
{
    // Six bytes: the content length 6 is all there, the group's eight bytes are not.
    EXPECT_EQ(failureOf([&] { index(hexBytes("0000 0008 0006")); }),
              "Parser::parse(): Error in group 0 (@ 0): Index position out of bounds");
    EXPECT_EQ(failureOf([&] { index(hexBytes("0000 0008 0007")); }),
              "Parser::parse(): Truncated mx buffer");
}

TEST_F(Guarded, ContentLengthThatCrossesTheEndIsNotRead)
{
    EXPECT_EQ(failureOf([&] { index(hexBytes("0000 0008 00")); }),
              "Parser::parse(): Error in group 0 (@ 0): Index position out of bounds");
    EXPECT_EQ(failureOf([&] { index(hexBytes("0005 0006 0000 0000 0008 00")); }),
              "Parser::parse(): Error in group 0 (@ 6): Index position out of bounds");
    EXPECT_EQ(failureOf([&] { index(hexBytes("0000 0007 00")); }),
              "Parser::parse(): Error in group 0 (@ 0): Invalid group length");
}

TEST_F(Guarded, HeaderOfAGroupThatCrossesTheEndIsNotRead)
{
    const Bytes group = hexBytes("0005 0006 0000 2000 2000");
    for (std::size_t size = 6; size <= group.size(); ++size) {
        index(cut(group, size));
        EXPECT_THAT(parser.groupOrder, ElementsAre(5)) << size;
    }
}

// Groups 0x20c0 and 0x20d0: the last record may run past the payload.

TEST_F(Guarded, LastParameterRecordIsReadUpToTheBuffersEnd)
{
    // The checksum is the record's last two bytes, bit offset and channel number 0.
    const Bytes record = ParameterRecord().bytes();
    const MxBuffer texts =
        minimalModule().group(0x20D3, testkit::textTablePayload({{100, "Filter"}}));
    for (std::size_t size = 27; size <= 29; ++size) {
        translate(MxBuffer(texts).group(0x20C0, cut(record, size)).bytes());
        EXPECT_THAT(namesOf<datamodel::Parameter>(datamodel::parameterTypeCode),
                    ElementsAre("Filter"))
            << size;
    }
}

TEST_F(Guarded, LastParameterRecordThatCrossesTheEndFails)
{
    const Bytes record = ParameterRecord().bytes();
    const MxBuffer texts =
        minimalModule().group(0x20D3, testkit::textTablePayload({{100, "Filter"}}));
    for (std::size_t size = 1; size <= 26; ++size) {
        const Bytes payload = join({record, cut(record, size)});
        EXPECT_EQ(failureOfTranslation(MxBuffer(texts).group(0x20C0, payload)),
                  "Unexpected end of mx buffer (group 20c0)")
            << size;
    }
}

TEST_F(Guarded, LastChannelRecordIsReadUpToTheBuffersEnd)
{
    // The seventh byte, the number of words, is the checksum's second.
    for (const std::size_t size : {5U, 6U, 7U}) {
        translate(minimalModule().group(0x20D0, cut(ChannelRecord{7, 0x81}.bytes(), size)).bytes());
        EXPECT_THAT(namesOf<datamodel::Channel>(datamodel::channelTypeCode),
                    ElementsAre("channel_7"))
            << size;
    }
}

TEST_F(Guarded, LastChannelRecordThatCrossesTheEndFails)
{
    const Bytes record = ChannelRecord{7, 0x81}.bytes();
    for (std::size_t size = 1; size <= 4; ++size) {
        const Bytes payload = join({record, cut(record, size)});
        EXPECT_EQ(failureOfTranslation(minimalModule().group(0x20D0, payload)),
                  "Unexpected end of mx buffer (group 20d0)")
            << size;
    }
}

TEST_F(Guarded, WordsOfTheLastChannelRecordAreNotRead)
{
    translate(minimalModule().group(0x20D0, hexBytes("07 81 00 08 00 00 ff")).bytes());
    EXPECT_THAT(namesOf<datamodel::Channel>(datamodel::channelTypeCode), ElementsAre("channel_7"));
}

TEST_F(Guarded, LastChannelNameEntryIsReadUpToTheBuffersEnd)
{
    // The channel number of the entry is in the group; the checksum is its text identifier.
    MxBuffer texts = minimalModule();
    texts.group(0x20D3, testkit::textTablePayload({{0x1234, "Input"}}))
        .group(0x20D0, ChannelRecord{7, 0x81}.bytes());
    translate(MxBuffer(texts).raw(hexBytes("20d7 0007 07 1234")).bytes());
    EXPECT_THAT(namesOf<datamodel::Channel>(datamodel::channelTypeCode), ElementsAre("Input"));
    // One byte of the text identifier in the group, one in the checksum.
    translate(MxBuffer(texts).raw(hexBytes("20d7 000b 01ffff 07 12 34ff")).bytes());
    EXPECT_THAT(namesOf<datamodel::Channel>(datamodel::channelTypeCode), ElementsAre("Input"));
}

// Group 0x0001: the identity's last two bytes may be the checksum.

TEST_F(Guarded, IdentityDatasetMayEndWithTheBuffer)
{
    // Record fb 05 00 and five bytes, of which the group holds three; the loop condition asks for
    // five bytes after the record's start.
    index(hexBytes("0001 000c fb 05 00 03 01 02 0304"));
    std::uint32_t moduleId = 0;
    std::uint8_t moduleType = 0;
    parser.getModuleIdAndType(&moduleId, &moduleType);
    EXPECT_EQ(moduleType, 3);
    EXPECT_EQ(moduleId, 0x01020304U);
}

// Everything.

TEST_F(Guarded, EveryPrefixOfEveryExampleSurvives)
{
    std::size_t devices = 0;
    for (const auto& entry : std::filesystem::directory_iterator(EXAMPLE_MODULES)) {
        if (entry.path().extension() != ".bin") {
            continue;
        }
        std::vector<char> file;
        devices::parser::mx::loadFile(entry.path().string(), file);
        const Bytes bytes(file.begin(), file.end());
        // Of a file near the largest size not every one, they would take minutes.
        const std::size_t step = bytes.size() < 5000 ? 7 : 997;
        for (std::size_t size = 0; size < bytes.size(); size += step) {
            survives(cut(bytes, size));
        }
        devices += survives(bytes) ? 1U : 0U;
    }
    EXPECT_GE(devices, 24U);
}

TEST_F(Guarded, EveryGroupCutAtEveryLengthAtTheBuffersEndSurvives)
{
    const Groups groups = exampleGroups();
    std::size_t devices = 0;
    std::size_t failures = 0;
    for (const auto& [lastId, lastPayload] : groups) {
        MxBuffer others;
        for (const auto& [id, payload] : groups) {
            if (id != lastId) {
                others.group(id, payload);
            }
        }
        for (std::size_t size = 0; size <= std::min<std::size_t>(lastPayload.size(), 300); ++size) {
            for (const char* checksum : {"0000", "0d0a", "ffff"}) {
                const Bytes bytes = join({others.bytes(), testkit::u16(lastId),
                                          testkit::u16(static_cast<unsigned>(size + 6)),
                                          cut(lastPayload, size), hexBytes(checksum)});
                ++(survives(bytes) ? devices : failures);
            }
        }
    }
    EXPECT_GT(devices, 0U);
    EXPECT_GT(failures, 0U);
}

} // namespace
