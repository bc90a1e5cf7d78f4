#include "Records.h"

#include <TestDatabase.h>

#include <Poco/Data/Statement.h>

#include <gtest/gtest.h>

#include <cstdint>

namespace {

using devices::database::DeviceDatabase;
using devices::database::DeviceProperties;

// All 256 byte values, beginning with `first` so that no two fields are equal.
std::string everyByte(int first)
{
    std::string bytes;
    for (int value = 0; value < 256; ++value) {
        bytes += static_cast<char>((first + value) % 256);
    }
    return bytes;
}

DeviceProperties::Bytes everyByteVector(int first)
{
    const std::string bytes = everyByte(first);
    return new std::vector<char>(bytes.begin(), bytes.end());
}

class RoundTrip : public testkit::OnEachEngine
{
protected:
    // Stores `record` through one connection and reads it through another.
    DeviceProperties throughDatabase(const DeviceProperties& record) const
    {
        DeviceDatabase(url).insert(record);
        return DeviceDatabase(url).find(record.moduleIdText).value();
    }
};

RUN_ON_EACH_ENGINE(RoundTrip);

TEST_P(RoundTrip, EveryByteOfEveryFieldComesBack)
{
    DeviceProperties record;
    record.family = everyByte(1);
    record.moduleIdText = everyByte(2);
    record.brandLabelName = everyByte(3);
    record.text4 = everyByte(4);
    record.text5 = everyByte(5);
    record.hostBytes = everyByteVector(6);
    record.mxFileData = everyByteVector(7);
    record.defaultParameterBlock = everyByteVector(8);
    const DeviceProperties found = throughDatabase(record);
    EXPECT_EQ(found.family, everyByte(1));
    EXPECT_EQ(found.moduleIdText, everyByte(2));
    EXPECT_EQ(found.brandLabelName, everyByte(3));
    EXPECT_EQ(found.text4, everyByte(4));
    EXPECT_EQ(found.text5, everyByte(5));
    EXPECT_EQ(*found.hostBytes, *everyByteVector(6));
    EXPECT_EQ(*found.mxFileData, *everyByteVector(7));
    EXPECT_EQ(*found.defaultParameterBlock, *everyByteVector(8));
}

TEST_P(RoundTrip, OneNulByteStaysOneNulByte)
{
    const DeviceProperties found = throughDatabase(device("00000001"));
    EXPECT_EQ(found.text4, std::string(1, '\0'));
    EXPECT_EQ(found.text5, std::string(1, '\0'));
}

TEST_P(RoundTrip, TextsThatLookLikeNumbersStayTexts)
{
    EXPECT_EQ(throughDatabase(device("06020001", "007")).brandLabelName, "007");
}

TEST_P(RoundTrip, EmptyFieldsComeBackEmpty)
{
    DeviceProperties record;
    const DeviceProperties found = throughDatabase(record);
    EXPECT_EQ(found.family, "");
    EXPECT_EQ(found.moduleIdText, "");
    EXPECT_EQ(found.brandLabelName, "");
    EXPECT_EQ(found.text4, "");
    EXPECT_EQ(found.text5, "");
    EXPECT_TRUE(found.hostBytes->empty());
    EXPECT_TRUE(found.mxFileData->empty());
    EXPECT_TRUE(found.defaultParameterBlock->empty());
}

TEST_P(RoundTrip, NullByteVectorsComeBackEmpty)
{
    DeviceProperties record = device("00000001");
    record.hostBytes = nullptr;
    record.mxFileData = nullptr;
    record.defaultParameterBlock = nullptr;
    const DeviceProperties found = throughDatabase(record);
    ASSERT_FALSE(found.hostBytes.isNull());
    ASSERT_FALSE(found.mxFileData.isNull());
    ASSERT_FALSE(found.defaultParameterBlock.isNull());
    EXPECT_TRUE(found.hostBytes->empty());
    EXPECT_TRUE(found.mxFileData->empty());
    EXPECT_TRUE(found.defaultParameterBlock->empty());
}

TEST_P(RoundTrip, FileOf65536Bytes)
{
    DeviceProperties record = device("00000001");
    record.mxFileData = new std::vector<char>(65536);
    for (std::size_t i = 0; i < 65536; ++i) {
        (*record.mxFileData)[i] = static_cast<char>((i * 7 + i / 256) % 256);
    }
    EXPECT_EQ(*throughDatabase(record).mxFileData, *record.mxFileData);
}

TEST_P(RoundTrip, SizesUseAll32Bits)
{
    DeviceProperties record = device("00000001");
    record.inDataSize = UINT32_MAX;
    record.outDataSize = 0x80000000U;
    const DeviceProperties found = throughDatabase(record);
    EXPECT_EQ(found.inDataSize, UINT32_MAX);
    EXPECT_EQ(found.outDataSize, 0x80000000U);
}

TEST_P(RoundTrip, SizesAreStoredAsTheNumbersTheyAre)
{
    DeviceProperties record = device("00000001");
    record.inDataSize = UINT32_MAX;
    DeviceDatabase(url).insert(record);
    Poco::Int64 stored = 0;
    place.otherProgram() << "SELECT in_data_size FROM device_properties",
        Poco::Data::Keywords::into(stored), Poco::Data::Keywords::now;
    EXPECT_EQ(stored, 4294967295);
}

} // namespace
