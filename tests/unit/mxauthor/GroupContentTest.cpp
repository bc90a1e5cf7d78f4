// Each group type is read field by field, and is read as raw bytes if the shape differs.

#include "MxBuffer.h"

#include <mxauthor/MxFile.h>
#include <mxformat/ParameterBlock.h>

#include <gmock/gmock.h>

namespace {

using namespace mxauthor;
using testkit::hexBytes;

constexpr std::uint32_t start = 100; // offset of the payloads of these tests in their file

template <typename Content>
Content readAs(std::uint16_t id, const std::string& hex)
{
    const GroupContent content = readPayload(id, hexBytes(hex), start);
    EXPECT_TRUE(std::holds_alternative<Content>(content)) << hex;
    EXPECT_EQ(writePayload(content), hexBytes(hex));
    return std::holds_alternative<Content>(content) ? std::get<Content>(content) : Content{};
}

void expectRaw(std::uint16_t id, const std::string& hex)
{
    const GroupContent content = readPayload(id, hexBytes(hex), start);
    ASSERT_TRUE(std::holds_alternative<RawGroup>(content)) << hex;
    EXPECT_EQ(std::get<RawGroup>(content).bytes.value, hexBytes(hex));
}

template <typename T>
void expectField(const Field<T>& field, const T& value, unsigned offset, unsigned length)
{
    EXPECT_EQ(field.value, value);
    EXPECT_EQ(field.place.offset, start + offset);
    EXPECT_EQ(field.place.length, length);
}

TEST(GroupContent, identityIsAListOfDatasets)
{
    const auto identity = readAs<Identity>(0x0001, "10 02 07 0104 0000  fb 05 00 035a030304 abcd");
    ASSERT_EQ(identity.datasets.size(), 2U);
    expectField<std::uint8_t>(identity.datasets[0].unread, 7, 2, 1);
    expectField<Bytes>(identity.datasets[0].data, {1, 4}, 3, 2);
    expectField<std::uint8_t>(identity.datasets[1].id, mxformat::identityDataset, 7, 1);
    expectField<std::uint16_t>(identity.datasets[1].trailer, 0xABCD, 15, 2);
}

TEST(GroupContent, identityWithASizeThatEndsTheListIsRaw)
{
    expectRaw(0x0001, "fb 80 00 035a030304 0000");
    expectRaw(0x0001, "fb 05 00 035a0303");
    expectRaw(0x0001, "fb");
}

TEST(GroupContent, entriesAreLines)
{
    // "Id,s=41" and "A,?=" with their line ends.
    const auto catalogue = readAs<Entries>(0x0020, "49642c733d34310d0a 412c3f3d0d0a");
    ASSERT_EQ(catalogue.entries.size(), 2U);
    expectField<std::string>(catalogue.entries[0].key, "Id", 0, 2);
    expectField<std::uint8_t>(catalogue.entries[1].kind, '?', 11, 1);
    expectField<std::string>(catalogue.entries[1].value, "", 13, 0);
}

TEST(GroupContent, entriesThatAreNoLinesAreRaw)
{
    expectRaw(0x0040, "49642c733d3431");         // no line end
    expectRaw(0x0040, "49642c733d34310d41");     // CR without LF
    expectRaw(0x0040, "4964733d34310d0a");       // no comma
    expectRaw(0x0040, "49642c73 2d34310d0a");    // no "="
    expectRaw(0x0040, "490d0a2c733d34310d0a");   // line end in the key
    expectRaw(0x0040, "49642c733d34000a310d0a"); // NUL and LF in the value
}

TEST(GroupContent, parameterBlockFollowsItsHeader)
{
    // Descriptor 1: 1 + 4 + 2 = 7 bytes of header.
    const auto block = readAs<ParameterBlock>(0x0010, "00 01 a1a2a3a4a5 32 00");
    expectField<std::uint8_t>(block.descriptor, 1, 1, 1);
    expectField<Bytes>(block.skipped, hexBytes("a1a2a3a4a5"), 2, 5);
    expectField<Bytes>(block.block, {0x32, 0}, 7, 2);
}

TEST(GroupContent, parameterBlockWithoutItsHeaderIsRaw)
{
    expectRaw(0x0010, "00");
    expectRaw(0x0010, "00 01 a1a2a3a4"); // one byte less than the header
    // 0xb2 + 4 x 0x32 + 2 = 0x17c, and 0xb5 + 4 x 0x35 + 2 = 0x18b: headers of 0x7c and 0x8b.
    EXPECT_EQ(mxformat::parameterBlockHeaderSize(0xB2), 0x7C);
    EXPECT_EQ(mxformat::parameterBlockHeaderSize(0xFF), 0xFD);
    // 0x66 + 4 x 0x26 + 2 = 0x100: a header of no bytes cannot hold its own two.
    EXPECT_EQ(mxformat::parameterBlockHeaderSize(0x66), 0);
    expectRaw(0x0010, "00 66 0102");
}

TEST(GroupContent, dataSizesAreLines)
{
    const auto sizes = readAs<DataSizes>(0x0011, "4142 0d0a 0d0a 43 0d0a");
    ASSERT_EQ(sizes.lines.size(), 3U);
    expectField<std::string>(sizes.lines[0], "AB", 0, 2);
    expectField<std::string>(sizes.lines[1], "", 4, 0);
    expectField<std::string>(sizes.lines[2], "C", 6, 1);
    expectRaw(0x0011, "4142 0d0a 43");
}

TEST(GroupContent, textsFollowTwoUnreadBytes)
{
    const auto table = readAs<TextTable>(0x20D3, "0002 0064 b156 0d0a 0063 0d0a");
    EXPECT_EQ(table.head.value, 2);
    ASSERT_EQ(table.texts.size(), 2U);
    expectField<std::uint16_t>(table.texts[0].id, 100, 2, 2);
    expectField<std::string>(table.texts[0].text, "\xB1V", 4, 2);
    expectField<std::string>(table.texts[1].text, "", 10, 0);
    expectRaw(0x20D3, "00");
    expectRaw(0x20D3, "0002 0064 b1560d0a 00");
    expectRaw(0x20D3, "0002 0064 b10a560d0a");
}

TEST(GroupContent, parametersAreRecordsOf29Bytes)
{
    const std::string record =
        "03 00aa 06 04 07 01 02 ffffffffffffd8f0 0000000000002710 0087 05 06 ff";
    const auto parameters = readAs<Parameters>(0x20C0, record + record + "0102");
    ASSERT_EQ(parameters.records.size(), 2U);
    const ParameterRecord& second = parameters.records[1];
    expectField<std::uint8_t>(second.number, 3, 29, 1);
    expectField<std::uint16_t>(second.nameId, 0x00AA, 30, 2);
    expectField<std::uint8_t>(second.position, 6, 32, 1);
    expectField<std::uint8_t>(second.datatype, 4, 33, 1);
    expectField<std::uint8_t>(second.flags, 7, 34, 1);
    expectField<std::uint8_t>(second.conversion, 1, 35, 1);
    expectField<std::uint8_t>(second.optionList, 2, 36, 1);
    expectField<std::uint64_t>(second.minimum, 0xFFFFFFFFFFFFD8F0U, 37, 8);
    expectField<std::uint64_t>(second.maximum, 10000, 45, 8);
    expectField<std::uint16_t>(second.unitId, 0x87, 53, 2);
    expectField<std::uint8_t>(second.bitLength, 5, 55, 1);
    expectField<std::uint8_t>(second.bitOffset, 6, 56, 1);
    expectField<std::uint8_t>(second.channel, 255, 57, 1);
    expectField<Bytes>(parameters.rest, {1, 2}, 58, 2);
}

TEST(GroupContent, optionListsAreReadUpToTheLastWholeOne)
{
    const auto lists = readAs<OptionLists>(
        0x20C1, "07 01 0000000000000009 0064  08 00  09 02 0000000000000001 0065");
    ASSERT_EQ(lists.lists.size(), 2U);
    ASSERT_EQ(lists.lists[0].options.size(), 1U);
    expectField<std::uint64_t>(lists.lists[0].options[0].value, 9, 2, 8);
    expectField<std::uint16_t>(lists.lists[0].options[0].textId, 100, 10, 2);
    expectField<std::uint8_t>(lists.lists[1].id, 8, 12, 1);
    EXPECT_EQ(lists.rest.value.size(), 12U);
}

TEST(GroupContent, conversionsAreEntriesOf11Bytes)
{
    const auto conversions = readAs<Conversions>(0x20C2, "03 bc23d70a 41a00000 0064 ff");
    ASSERT_EQ(conversions.entries.size(), 1U);
    expectField<std::uint32_t>(conversions.entries[0].factor, 0xBC23D70A, 1, 4);
    expectField<std::uint32_t>(conversions.entries[0].offset, 0x41A00000, 5, 4);
    expectField<std::uint16_t>(conversions.entries[0].unitId, 100, 9, 2);
    expectField<Bytes>(conversions.rest, {0xFF}, 11, 1);
}

TEST(GroupContent, channelsHaveAsManyWordsAsTheySay)
{
    const auto channels =
        readAs<Channels>(0x20D0, "00 84 0a 10 03 0b 02 8000 7fff  01 05 00 01 00 00 00  02 05");
    ASSERT_EQ(channels.records.size(), 2U);
    expectField<std::uint8_t>(channels.records[0].kind, 0x84, 1, 1);
    expectField<std::uint8_t>(channels.records[0].unread2, 0x0A, 2, 1);
    expectField<std::uint8_t>(channels.records[0].bitLength, 16, 3, 1);
    expectField<std::uint8_t>(channels.records[0].bitOffset, 3, 4, 1);
    expectField<std::uint8_t>(channels.records[0].unread5, 0x0B, 5, 1);
    ASSERT_EQ(channels.records[0].words.size(), 2U);
    expectField<std::uint16_t>(channels.records[0].words[1], 0x7FFF, 9, 2);
    expectField<std::uint8_t>(channels.records[1].number, 1, 11, 1);
    expectField<Bytes>(channels.rest, {2, 5}, 18, 2);
}

TEST(GroupContent, channelNamesAreEntriesOf3Bytes)
{
    const auto names = readAs<ChannelNames>(0x20D7, "00 00cd 05 0102 aabb");
    ASSERT_EQ(names.entries.size(), 2U);
    expectField<std::uint8_t>(names.entries[1].channel, 5, 3, 1);
    expectField<std::uint16_t>(names.entries[1].textId, 0x0102, 4, 2);
    expectField<Bytes>(names.rest, {0xAA, 0xBB}, 6, 2);
}

TEST(GroupContent, extensionHasADateOf10Bytes)
{
    const auto extension = readAs<Extension>(0x20F0, "01 00f7 323032342d30352d3331 77");
    expectField<std::uint8_t>(extension.version, 1, 0, 1);
    expectField<std::uint16_t>(extension.gtinId, 0xF7, 1, 2);
    EXPECT_EQ(extension.date.value, testkit::textBytes("2024-05-31"));
    expectField<Bytes>(extension.rest, {0x77}, 13, 1);
    expectRaw(0x20F0, "01 00f7 323032342d30352d33");
}

TEST(GroupContent, headerAndImageKeepTheirBytes)
{
    expectField<std::uint16_t>(readAs<Header>(0x0000, "051d 0003").contentLength, 0x051D, 0, 2);
    expectField<Bytes>(readAs<ProductImage>(0x20F1, "1f8b08").bytes, {0x1F, 0x8B, 8}, 0, 3);
}

} // namespace
