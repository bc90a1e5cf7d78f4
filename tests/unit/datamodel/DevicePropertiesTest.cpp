#include <devices/database/DeviceProperties.h>

#include <gmock/gmock.h>

namespace {

using devices::database::DeviceProperties;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(DeviceProperties, TextsAreEmptyAtFirst)
{
    const DeviceProperties record;
    EXPECT_THAT(record.family, IsEmpty());
    EXPECT_THAT(record.moduleIdText, IsEmpty());
    EXPECT_THAT(record.brandLabelName, IsEmpty());
    EXPECT_THAT(record.text4, IsEmpty());
    EXPECT_THAT(record.text5, IsEmpty());
}

TEST(DeviceProperties, ThreeByteVectorsAreCreatedEmptyEachWithOneOwner)
{
    const DeviceProperties record;
    for (const auto* bytes :
         {&record.hostBytes, &record.mxFileData, &record.defaultParameterBlock}) {
        ASSERT_FALSE(bytes->isNull());
        EXPECT_THAT(**bytes, IsEmpty());
        EXPECT_EQ(bytes->referenceCount(), 1);
    }
    EXPECT_NE(record.hostBytes, record.mxFileData);
    EXPECT_NE(record.mxFileData, record.defaultParameterBlock);
    EXPECT_NE(record.hostBytes, record.defaultParameterBlock);
}

TEST(DeviceProperties, CopySharesTheByteVectors)
{
    DeviceProperties record;
    const DeviceProperties copy = record;
    EXPECT_EQ(record.mxFileData.referenceCount(), 2);
    record.mxFileData->push_back('\xFF');
    record.defaultParameterBlock->push_back('\x01');
    record.hostBytes->push_back('\x02');
    EXPECT_THAT(*copy.mxFileData, ElementsAre('\xFF'));
    EXPECT_THAT(*copy.defaultParameterBlock, ElementsAre('\x01'));
    EXPECT_THAT(*copy.hostBytes, ElementsAre('\x02'));
}

TEST(DeviceProperties, BytesOutliveTheRecordThatMadeThem)
{
    DeviceProperties::Bytes bytes;
    {
        DeviceProperties record;
        record.mxFileData->assign({'a', '\0', 'b'});
        bytes = record.mxFileData;
    }
    EXPECT_EQ(bytes.referenceCount(), 1);
    EXPECT_THAT(*bytes, ElementsAre('a', '\0', 'b'));
}

} // namespace
