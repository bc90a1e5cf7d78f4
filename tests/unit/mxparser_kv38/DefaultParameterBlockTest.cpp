#include "Failure.h"
#include "MxBuffer.h"
#include "ParserAccess.h"

#include <Poco/Exception.h>

#include <gmock/gmock.h>

#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testkit::Bytes;
using testkit::failureOf;
using testkit::hexBytes;
using testkit::MxBuffer;

constexpr const char* sizeTooSmall = "Invalid size property in group 0x0010 (1)";
constexpr const char* headerTooLong = "Invalid size property in group 0x0010 (2)";
constexpr const char* wrongVersion = "Unsupported dataset version in group 0x0010";
constexpr const char* tooLarge = "Default parameter block in mx data exceeds PARAMETER_BUFFER_SIZE";

class DefaultParameterBlock : public testing::Test
{
protected:
    DefaultParameterBlock() { parser.dev = std::make_shared<testkit::ParserAccess::DeviceP>(); }

    const std::vector<char>& block() { return *parser.dev->privateProps.defaultParameterBlock; }

    const std::vector<char>& setup(const Bytes& payload)
    {
        data = MxBuffer().group(0x0010, payload).chars();
        parser.index(data);
        parser.setupDefaultParams();
        return block();
    }

    // The payload of a group with header descriptor `descriptor`: `size` bytes in all, each from
    // the third on the low byte of its offset.
    static Bytes payloadOf(std::uint8_t descriptor, std::size_t size)
    {
        Bytes payload{0, descriptor};
        while (payload.size() < size) {
            payload.push_back(static_cast<std::uint8_t>(payload.size()));
        }
        return payload;
    }

    std::string setupFailure(const Bytes& payload)
    {
        parser.dev->privateProps.defaultParameterBlock->assign(3, 'x');
        const std::string failure = failureOf([&] { setup(payload); });
        EXPECT_THAT(block(), IsEmpty());
        return failure;
    }

    std::vector<char> data;
    testkit::ParserAccess parser;
};

TEST_F(DefaultParameterBlock, WithoutAGroupIsEmptyAndNoFailure)
{
    data = MxBuffer().group(0x0011, {}).chars();
    parser.index(data);
    parser.dev->privateProps.defaultParameterBlock->assign(3, 'x');
    EXPECT_NO_THROW(parser.setupDefaultParams());
    EXPECT_THAT(block(), IsEmpty());
}

TEST_F(DefaultParameterBlock, Sizes0And1AreInvalid)
{
    EXPECT_EQ(setupFailure({}), sizeTooSmall);
    EXPECT_EQ(setupFailure(hexBytes("00")), sizeTooSmall);
}

TEST_F(DefaultParameterBlock, SizeIsCheckedBeforeTheVersion)
{
    EXPECT_EQ(setupFailure(hexBytes("01")), sizeTooSmall);
}

TEST_F(DefaultParameterBlock, FirstByteOf1IsAnUnsupportedVersion)
{
    EXPECT_EQ(setupFailure(hexBytes("01 00 aa")), wrongVersion);
    EXPECT_EQ(setupFailure(hexBytes("ff 00 aa")), wrongVersion);
}

TEST_F(DefaultParameterBlock, VersionIsCheckedBeforeTheHeaderLength)
{
    EXPECT_EQ(setupFailure(hexBytes("01 01 aa")), wrongVersion);
}

TEST_F(DefaultParameterBlock, Descriptor0HasAHeaderOf2)
{
    EXPECT_THAT(setup(hexBytes("00 00 0a 0b 0c")), ElementsAre(0x0A, 0x0B, 0x0C));
}

TEST_F(DefaultParameterBlock, Descriptor1HasAHeaderOf7)
{
    EXPECT_THAT(setup(payloadOf(1, 9)), ElementsAre(7, 8));
    EXPECT_EQ(setupFailure(payloadOf(1, 6)), headerTooLong);
}

TEST_F(DefaultParameterBlock, Descriptor40HasAHeaderOf42BecauseTheTopBitsCountOnce)
{
    EXPECT_THAT(setup(payloadOf(0x40, 0x44)), ElementsAre(0x42, 0x43));
    EXPECT_EQ(setupFailure(payloadOf(0x40, 0x41)), headerTooLong);
}

TEST_F(DefaultParameterBlock, DescriptorFFHasAHeaderOfFD)
{
    EXPECT_THAT(setup(payloadOf(0xFF, 0xFF)), ElementsAre('\xFD', '\xFE'));
    EXPECT_EQ(setupFailure(payloadOf(0xFF, 0xFC)), headerTooLong);
}

TEST_F(DefaultParameterBlock, HeaderOf0StartsTheBlockAtTheVersionByte)
{
    // 0x66 + 4 * 0x26 + 2 = 256, cut to 0.
    EXPECT_THAT(setup(hexBytes("00 66 0a")), ElementsAre(0x00, 0x66, 0x0A));
}

TEST_F(DefaultParameterBlock, HeaderOf1StartsTheBlockAtTheDescriptor)
{
    // 0x33 + 4 * 0x33 + 2 = 257, cut to 1.
    EXPECT_THAT(setup(hexBytes("00 33 0a")), ElementsAre(0x33, 0x0A));
}

TEST_F(DefaultParameterBlock, SizeOfExactlyTheHeaderIsEmptyAndNoFailure)
{
    EXPECT_THAT(setup(hexBytes("00 00")), IsEmpty());
    EXPECT_THAT(setup(payloadOf(1, 7)), IsEmpty());
}

TEST_F(DefaultParameterBlock, Of255BytesIsStored)
{
    const std::vector<char>& stored = setup(payloadOf(0, 257));
    ASSERT_EQ(stored.size(), 255U);
    EXPECT_EQ(stored.front(), 2);
    EXPECT_EQ(stored.back(), 0); // offset 256
}

TEST_F(DefaultParameterBlock, Of256BytesIsStoredEmpty)
{
    EXPECT_THAT(setup(payloadOf(0, 258)), IsEmpty());
}

TEST_F(DefaultParameterBlock, Of257BytesExceedsTheBufferSize)
{
    EXPECT_EQ(setupFailure(payloadOf(0, 259)), tooLarge);
    EXPECT_EQ(testkit::ParserAccess::PARAMETER_BUFFER_SIZE, 256U);
}

TEST_F(DefaultParameterBlock, SecondCallReplacesTheFirstBlock)
{
    setup(hexBytes("00 00 01 02"));
    EXPECT_THAT(setup(hexBytes("00 00 03")), ElementsAre(3));
}

TEST_F(DefaultParameterBlock, BytesAfterThePayloadAreNeverStored)
{
    for (std::size_t size = 2; size < 40; ++size) {
        EXPECT_EQ(setup(payloadOf(0, size)).size(), size - 2);
    }
}

TEST_F(DefaultParameterBlock, RecordWithoutABlockIsANullPointerException)
{
    data = MxBuffer().group(0x0010, hexBytes("0000")).chars();
    parser.index(data);
    parser.dev->privateProps.defaultParameterBlock = nullptr;
    EXPECT_THROW(parser.setupDefaultParams(), Poco::NullPointerException);
}

} // namespace
