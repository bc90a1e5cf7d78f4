#include "DeviceView.h"
#include "ExampleModule.h"
#include "ParserAccess.h"

#include <gmock/gmock.h>

#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testkit::Bytes;
using testkit::hexBytes;
using testkit::join;
using testkit::minimalModule;
using testkit::textBytes;

class DeviceContent : public testing::Test
{
protected:
    const testkit::ParserAccess::DeviceP& translate(const testkit::MxBuffer& buffer,
                                                    unsigned inOffset = 0, unsigned outOffset = 0)
    {
        data = buffer.chars();
        return *parser.parse(data, nullptr, inOffset, outOffset);
    }

    // The minimal module with a group 0x20f0: the GTIN's text identifier and the date field.
    const testkit::ParserAccess::DeviceP& withExtension(unsigned gtin, const Bytes& date)
    {
        return translate(minimalModule()
                             .group(0x20D3, testkit::textTablePayload({{7, "4012345678901"}}))
                             .group(0x20F0, join({{1}, testkit::u16(gtin), date})));
    }

    std::vector<char> data;
    testkit::ParserAccess parser;
};

TEST_F(DeviceContent, WithoutOptionalGroupsHasTheSixteenPropertiesInOrder)
{
    const auto& device = translate(minimalModule({"InData W", "OutData D", "Diagnosis B"}));
    EXPECT_EQ(propertiesOf(device), (NamesAndValues{
                                        {"moduleId", "01020304"},
                                        {"moduleType", "03"},
                                        {"brandVersion", "2.1"},
                                        {"brandId", "41"},
                                        {"brandSerialNumber", "0"},
                                        {"productVersion", "01.02.03"},
                                        {"brandOrderCode", "K38-T"},
                                        {"brandLabelName", "Test module"},
                                        {"brandHwRevision", "05"},
                                        {"mxVersion", "kv38-test"},
                                        {"inDataSize", "2"},
                                        {"outDataSize", "4"},
                                        {"inDataOffset", "0"},
                                        {"outDataOffset", "0"},
                                        {"paramDataSize", "0"},
                                        {"diagDataSize", "1"},
                                    }));
}

TEST_F(DeviceContent, WithoutOptionalGroupsHasNoImageNoParametersNoChannels)
{
    const auto& device = translate(minimalModule());
    EXPECT_EQ(propertyOf(device, "gtin"), "(none)");
    EXPECT_EQ(propertyOf(device, "calibrationDate"), "(none)");
    EXPECT_THAT(attributesOf<datamodel::BinaryObject>(device, 7), IsEmpty());
    EXPECT_THAT(attributesOf<datamodel::Channel>(device, 9), IsEmpty());
    EXPECT_THAT(attributesOf<datamodel::Parameter>(device, 25), IsEmpty());
}

TEST_F(DeviceContent, AttributesAreInTheOrderOfTheirIds)
{
    const auto& device = translate(bufferOf(exampleGroups()));
    std::vector<int> codes;
    for (std::size_t i = 0; i < device.attributes.size(); ++i) {
        EXPECT_EQ(device.attributes[i]->id, std::to_string(i));
        codes.push_back(device.attributes[i]->typeCode());
    }
    // 18 properties, image, 3 parameters, 4 channels, the sets basicInformation, deviceParameter,
    // channelParams_22, parameter and channels, the role.
    std::vector<int> expected(18, 29);
    expected.insert(expected.end(), {7, 25, 25, 25, 9, 9, 9, 9, 28, 28, 28, 28, 28, 27});
    EXPECT_EQ(codes, expected);
}

TEST_F(DeviceContent, PropertiesOfTheExtensionStandBeforeTheSizes)
{
    const auto properties = propertiesOf(translate(bufferOf(exampleGroups())));
    ASSERT_EQ(properties.size(), 18U);
    EXPECT_THAT(properties[9], Pair("mxVersion", "kv38-example"));
    EXPECT_THAT(properties[10], Pair("gtin", "4012345678901"));
    EXPECT_THAT(properties[11], Pair("calibrationDate", "2024-05-3"));
    EXPECT_THAT(properties[12], Pair("inDataSize", "6"));
    EXPECT_THAT(properties[16], Pair("paramDataSize", "4"));
}

TEST_F(DeviceContent, CatalogueFieldsOfTheDeviceAreSet)
{
    const auto& device = translate(minimalModule({}, 0xABCDEF01));
    EXPECT_EQ(device.brandLabelName, "Test module");
    EXPECT_EQ(device.deviceTypeId, "kv38.abcdef01");
    EXPECT_EQ(parser.mxVersion, "kv38-test");
    EXPECT_EQ(parser.moduleId, 0xABCDEF01);
}

TEST_F(DeviceContent, DatabaseRecordIsFilled)
{
    const auto& record = translate(minimalModule({"InData W", "OutData D"}, 0xAB)).privateProps;
    EXPECT_EQ(record.family, "kv38");
    EXPECT_EQ(record.moduleIdText, "000000ab");
    EXPECT_EQ(record.brandLabelName, "Test module");
    EXPECT_EQ(record.inDataSize, 2U);
    EXPECT_EQ(record.outDataSize, 4U);
    EXPECT_THAT(*record.hostBytes, IsEmpty());
    EXPECT_THAT(*record.mxFileData, IsEmpty());
}

TEST_F(DeviceContent, TwoTextsOfTheRecordAreOneNulByteEach)
{
    const auto& record = translate(minimalModule()).privateProps;
    ASSERT_EQ(record.text4.size(), 1U);
    EXPECT_EQ(record.text4[0], '\0');
    ASSERT_EQ(record.text5.size(), 1U);
    EXPECT_EQ(record.text5[0], '\0');
}

TEST_F(DeviceContent, CorrectedSizesAreThoseOfTheProperties)
{
    const auto& device = translate(minimalModule({"InData W", "OutData W"}, 0x0E81276D));
    EXPECT_EQ(propertyOf(device, "inDataSize"), "4");
    EXPECT_EQ(propertyOf(device, "outDataSize"), "4");
    EXPECT_EQ(device.privateProps.inDataSize, 4U);
    const auto& other = translate(minimalModule({"InData W", "OutData W"}, 0x0BC1E800));
    EXPECT_EQ(propertyOf(other, "inDataSize"), "0");
    EXPECT_EQ(other.privateProps.outDataSize, 0U);
}

TEST_F(DeviceContent, DataOffsets10And20AreThoseOfTheProperties)
{
    const auto& device = translate(minimalModule(), 10, 20);
    EXPECT_EQ(propertyOf(device, "inDataOffset"), "10");
    EXPECT_EQ(propertyOf(device, "outDataOffset"), "20");
    const auto& largest = translate(minimalModule(), 4294967295U, 0);
    EXPECT_EQ(propertyOf(largest, "inDataOffset"), "4294967295");
}

TEST_F(DeviceContent, DateOfTenCharactersWithoutTerminatorKeepsNine)
{
    const auto& device = withExtension(0, textBytes("2024-05-31"));
    EXPECT_EQ(propertyOf(device, "calibrationDate"), "2024-05-3");
    EXPECT_EQ(propertyOf(device, "gtin"), "(none)");
}

TEST_F(DeviceContent, DateThatStartsWithATerminatorIsEmptyButPresent)
{
    EXPECT_EQ(propertyOf(withExtension(0, hexBytes("00 3132333435363738 39")), "calibrationDate"),
              "");
    EXPECT_EQ(propertyOf(withExtension(0, hexBytes("0d 3132333435363738 39")), "calibrationDate"),
              "");
}

TEST_F(DeviceContent, DateEndsBeforeItsFirstTerminator)
{
    EXPECT_EQ(
        propertyOf(withExtension(0, textBytes(std::string("2024\0-05-3", 10))), "calibrationDate"),
        "2024");
    EXPECT_EQ(propertyOf(withExtension(0, textBytes("20\n4\r-05-3")), "calibrationDate"), "20\n4");
}

TEST_F(DeviceContent, BytesAfterTheDateFieldAreIgnored)
{
    EXPECT_EQ(propertyOf(withExtension(0, textBytes("2024-05-31xyz")), "calibrationDate"),
              "2024-05-3");
}

TEST_F(DeviceContent, GtinIsTheTextThatTheExtensionNames)
{
    const auto& device = withExtension(7, Bytes(10, 0));
    EXPECT_EQ(propertyOf(device, "gtin"), "4012345678901");
    EXPECT_EQ(propertyOf(device, "calibrationDate"), "");
}

TEST_F(DeviceContent, ImageOfTheBytes1And2And3IsAQID)
{
    const auto& device = translate(minimalModule().group(0x20F1, {1, 2, 3}));
    const auto images = attributesOf<datamodel::BinaryObject>(device, 7);
    ASSERT_EQ(images.size(), 1U);
    EXPECT_EQ(images[0]->name, "productImage");
    EXPECT_EQ(images[0]->mimeType, "image/svgz");
    EXPECT_EQ(images[0]->encoding, "base64");
    EXPECT_EQ(images[0]->data, "AQID");
    EXPECT_EQ(images[0]->id, "16");
}

TEST_F(DeviceContent, ImageIsPaddedAndInTheStandardAlphabet)
{
    const auto image = [this](const Bytes& payload) {
        const auto& device = translate(minimalModule().group(0x20F1, payload));
        return attributesOf<datamodel::BinaryObject>(device, 7).front()->data;
    };
    EXPECT_EQ(image({0xFB}), "+w==");
    EXPECT_EQ(image({0xFF, 0xFF}), "//8=");
    // 00 10 83 10 51 87 ... : the numbers 0 to 63, six bits each.
    Bytes numbers;
    for (unsigned number = 0; number < 64; number += 4) {
        numbers.push_back(static_cast<std::uint8_t>(number << 2 | (number + 1) >> 4));
        numbers.push_back(static_cast<std::uint8_t>((number + 1) << 4 | (number + 2) >> 2));
        numbers.push_back(static_cast<std::uint8_t>((number + 2) << 6 | (number + 3)));
    }
    EXPECT_EQ(image(numbers), "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/");
}

TEST_F(DeviceContent, ImageOf100BytesIsOneLineOf136Characters)
{
    const auto& device = translate(minimalModule().group(0x20F1, Bytes(100, 0)));
    const std::string& text = attributesOf<datamodel::BinaryObject>(device, 7).front()->data;
    EXPECT_EQ(text, std::string(134, 'A') + "==");
}

TEST_F(DeviceContent, EmptyImageGroupAddsAnImageWithoutData)
{
    const auto& device = translate(minimalModule().group(0x20F1, {}));
    const auto images = attributesOf<datamodel::BinaryObject>(device, 7);
    ASSERT_EQ(images.size(), 1U);
    EXPECT_EQ(images[0]->data, "");
}

TEST_F(DeviceContent, EmptyRecordGroupsAddNothing)
{
    const auto& device = translate(minimalModule().group(0x20C0, {}).group(0x20D0, {}));
    EXPECT_EQ(device.attributes.size(), 18U);
}

TEST_F(DeviceContent, ChannelsStandAtTheDataOffsets)
{
    const auto channels =
        attributesOf<datamodel::Channel>(translate(bufferOf(exampleGroups()), 10, 20), 9);
    std::vector<std::string> symbols;
    std::vector<std::string> names;
    for (const auto* channel : channels) {
        symbols.push_back(channel->iecSymbol);
        names.push_back(channel->name);
    }
    // The bit takes 1 bit, the field 12 (one byte and 5 bits): IW14 closes that byte but is
    // dropped.
    EXPECT_THAT(symbols, ElementsAre("IX10_0", "IB10#1,4095", "QD20", "QL24"));
    EXPECT_THAT(names, ElementsAre("Input 1", "channel_2", "channel_4", "channel_5"));
    EXPECT_EQ(parser.inBytePosition, 14U);
}

TEST_F(DeviceContent, LastRecordMayEndAfterItsGroup)
{
    // The channel's seven bytes: four in the payload, the checksum 0, one byte of the next group.
    const auto& device =
        translate(minimalModule().group(0x20D0, hexBytes("07 81 00 08")).raw(hexBytes("00")));
    const auto channels = attributesOf<datamodel::Channel>(device, 9);
    ASSERT_EQ(channels.size(), 1U);
    EXPECT_EQ(channels[0]->iecSymbol, "IB0");
    EXPECT_EQ(channels[0]->name, "channel_7");
}

TEST_F(DeviceContent, TextsAreCopiedByteForByte)
{
    Groups groups = exampleGroups();
    groups[1].second = testkit::entriesPayload({{"BrandLabelName", "M\xFCller \xE4\x80"},
                                                {"BrandVersion", ""},
                                                {"BrandId", ""},
                                                {"BrandSerialNumber", ""},
                                                {"ProductVersion", ""},
                                                {"BrandOrderCode", ""},
                                                {"BrandHwRevision", "x"}});
    const auto& device = translate(bufferOf(groups));
    EXPECT_EQ(device.brandLabelName, "M\xFCller \xE4\x80");
    EXPECT_EQ(propertyOf(device, "brandLabelName"), "M\xFCller \xE4\x80");
    EXPECT_EQ(propertyOf(device, "brandId"), "");
}

} // namespace
