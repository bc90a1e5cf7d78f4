#include "DeviceView.h"
#include "ExampleModule.h"
#include "Failure.h"
#include "ParserAccess.h"

#include <gmock/gmock.h>

#include <vector>

// Which of several failures is reported, and the content of the device then.

namespace {

using testing::IsEmpty;
using testkit::Bytes;
using testkit::hexBytes;
using testkit::MxBuffer;

constexpr const char* sizesDiffer =
    "The current parameter array size does not match the value given in group 0x0011";
constexpr const char* extensionLength = "Invalid length of group 0x20f0";
constexpr const char* extensionVersion = "Invalid mx extension version in group 0x20f0";

class FailureOrder : public testing::Test
{
protected:
    // The example module with the payload of `group` replaced.
    void replace(std::uint16_t group, const Bytes& payload)
    {
        for (auto& [id, bytes] : groups) {
            if (id == group) {
                bytes = payload;
            }
        }
    }

    void remove(std::uint16_t group)
    {
        Groups kept;
        for (const auto& entry : groups) {
            if (entry.first != group) {
                kept.push_back(entry);
            }
        }
        groups = kept;
    }

    std::string failure()
    {
        data = bufferOf(groups).chars();
        return testkit::failureOf([&] { parser.parse(data, nullptr, 0, 0); });
    }

    std::size_t attributes() const { return parser.dev->attributes.size(); }

    Groups groups = exampleGroups();
    std::vector<char> data;
    testkit::ParserAccess parser;
};

TEST_F(FailureOrder, ExtensionOf12BytesHasAnInvalidLengthEvenWithAWrongVersion)
{
    replace(0x20F0, Bytes(12, 2));
    EXPECT_EQ(failure(), extensionLength);
    replace(0x20F0, {});
    EXPECT_EQ(failure(), extensionLength);
}

TEST_F(FailureOrder, ExtensionVersionOtherThan1IsInvalid)
{
    for (const std::uint8_t version : testkit::Bytes{0, 2, 255}) {
        replace(0x20F0, Bytes(13, version));
        EXPECT_EQ(failure(), extensionVersion) << int{version};
    }
    // The ten properties before it were added.
    EXPECT_EQ(attributes(), 10U);
}

TEST_F(FailureOrder, VersionIsCheckedBeforeTheGtin)
{
    replace(0x20F0, hexBytes("02 0999 00000000000000000000"));
    EXPECT_EQ(failure(), extensionVersion);
    replace(0x20F0, hexBytes("01 0999 00000000000000000000"));
    EXPECT_EQ(failure(), "Cannot find requested text string: ID = 2457");
}

TEST_F(FailureOrder, MissingGtinTextLeavesNeitherGtinNorDate)
{
    remove(0x20D3);
    EXPECT_EQ(failure(), "Cannot find group 20d3");
    EXPECT_EQ(attributes(), 10U);
}

TEST_F(FailureOrder, BadExtensionHidesASizeMismatch)
{
    replace(0x0010, hexBytes("00 00 05"));
    replace(0x20F0, Bytes(13, 2));
    EXPECT_EQ(failure(), extensionVersion);
}

TEST_F(FailureOrder, BadExtensionHidesMissingDataSizes)
{
    remove(0x0011);
    replace(0x20F0, Bytes(1, 1));
    EXPECT_EQ(failure(), extensionLength);
}

TEST_F(FailureOrder, BlockThatDiffersByOneByteFailsAfterTheBrandProperties)
{
    for (const char* block : {"00 00 050403", "00 00 0504030201"}) {
        replace(0x0010, hexBytes(block));
        EXPECT_EQ(failure(), sizesDiffer);
        // Ten properties, gtin and calibration date; no sizes, no image.
        ASSERT_EQ(attributes(), 12U);
        EXPECT_EQ(propertyOf(*parser.dev, "brandHwRevision"), "05");
        EXPECT_EQ(propertyOf(*parser.dev, "inDataSize"), "(none)");
    }
}

TEST_F(FailureOrder, BlockOf256BytesCountsAsEmpty)
{
    Bytes block(258, 1);
    block[0] = 0;
    block[1] = 0;
    replace(0x0010, block);
    replace(0x0011, testkit::linesPayload({"Parameter" + std::string(64, 'D')}));
    EXPECT_EQ(failure(), sizesDiffer);
}

TEST_F(FailureOrder, MissingDataSizesHideASizeMismatch)
{
    remove(0x0011);
    EXPECT_EQ(failure(), "Missing group 0x0011");
    EXPECT_EQ(attributes(), 12U);
}

TEST_F(FailureOrder, SizeMismatchHidesBadRecords)
{
    replace(0x0010, hexBytes("00 00"));
    replace(0x20C0, Bytes(29, 0));
    EXPECT_EQ(failure(), sizesDiffer);
}

TEST_F(FailureOrder, SizesAreStoredInTheParserBeforeTheMismatch)
{
    replace(0x0010, hexBytes("00 00"));
    EXPECT_EQ(failure(), sizesDiffer);
    EXPECT_EQ(parser.inDataSize, 6U);
    EXPECT_EQ(parser.diagDataSize, 2U);
}

TEST_F(FailureOrder, BadParameterHidesABadChannelAndKeepsTheImage)
{
    testkit::ParameterRecord record;
    record.datatype = 10;
    replace(0x20C0, record.bytes());
    replace(0x20D7, hexBytes("01 0999"));
    EXPECT_EQ(failure(), "Invalid datatype");
    EXPECT_EQ(attributes(), 19U);
    EXPECT_EQ(parser.dev->attributes.back()->typeCode(), 7);
}

TEST_F(FailureOrder, BadChannelKeepsTheParametersAndLeavesTheRecordEmpty)
{
    replace(0x20D7, hexBytes("01 0999"));
    EXPECT_EQ(failure(), "Cannot find requested text string: ID = 2457");
    EXPECT_EQ(attributes(), 22U);
    EXPECT_EQ(parser.dev->attributes.back()->typeCode(), 25);
    EXPECT_THAT(parser.dev->privateProps.family, IsEmpty());
    EXPECT_THAT(parser.dev->privateProps.text4, IsEmpty());
    EXPECT_EQ(parser.dev->deviceTypeId, "kv38.01020304");
    EXPECT_EQ(parser.inBytePosition, 0U);
}

TEST_F(FailureOrder, BadBlockHidesAMissingIdentity)
{
    remove(0x0001);
    replace(0x0010, hexBytes("01 00"));
    EXPECT_EQ(failure(), "Unsupported dataset version in group 0x0010");
    EXPECT_EQ(attributes(), 0U);
    // The block's failure comes before its bytes are published.
    EXPECT_EQ(parser.paramBuffer, nullptr);
}

TEST_F(FailureOrder, IdentityComesBeforeTheCatalogueAndThatBeforeTheComponent)
{
    remove(0x0040);
    EXPECT_EQ(failure(), "Parser::getGroupEntry(): No such group: 0040");
    EXPECT_EQ(parser.dev->brandLabelName, "Example");
    EXPECT_EQ(parser.dev->deviceTypeId, "");
    remove(0x0020);
    EXPECT_EQ(failure(), "Parser::getGroupEntry(): No such group: 0020");
    EXPECT_EQ(parser.moduleId, 0x01020304U);
    remove(0x0001);
    EXPECT_EQ(failure(), "Parser::getTavoDatasetFromGroup(): No such group: 0001");
}

TEST_F(FailureOrder, EachCatalogueEntryIsNeededAtItsTurn)
{
    // Entries in the order in which they become properties, each with the number of properties
    // before it.
    const std::vector<std::pair<std::string, std::size_t>> entries{
        {"BrandVersion", 2},   {"BrandId", 3},        {"BrandSerialNumber", 4},
        {"ProductVersion", 5}, {"BrandOrderCode", 6}, {"BrandHwRevision", 8}};
    for (const auto& [missing, before] : entries) {
        std::vector<std::pair<std::string, std::string>> others{{"BrandLabelName", "L"}};
        for (const auto& [key, unused] : entries) {
            if (key != missing) {
                others.emplace_back(key, "1");
            }
        }
        replace(0x0020, testkit::entriesPayload(others));
        EXPECT_EQ(failure(),
                  "Parser::getGroupEntry(): Key '" + missing + "' not found in group 0020");
        EXPECT_EQ(attributes(), before) << missing;
    }
    replace(0x0020, testkit::entriesPayload({{"BrandId", "1"}}));
    EXPECT_EQ(failure(), "Parser::getGroupEntry(): Key 'BrandLabelName' not found in group 0020");
}

TEST_F(FailureOrder, FramingComesBeforeEverything)
{
    data = MxBuffer().raw(hexBytes("0010 0007 01 0000 0005 0001 00")).chars();
    EXPECT_EQ(testkit::failureOf([&] { parser.parse(data, nullptr, 0, 0); }),
              "Parser::parse(): Error in group 5 (@ 7): Invalid group length");
}

} // namespace
