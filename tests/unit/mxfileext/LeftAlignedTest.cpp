#include "CompanionTest.h"

namespace {

using testkit::Bytes;
using testkit::failureOf;
using testkit::hexBytes;

struct Place
{
    unsigned byteOffset;
    unsigned dataSize;
    unsigned bitOffset = 0;
    unsigned bitLength = 0;
};

const Bytes image = hexBytes("b41122334455667788");

// The result of writing over 8 bytes that held something else.
Bytes leftAligned(const Bytes& raw, const Place& place)
{
    Bytes out(8, 0xEE);
    mxfileext::getLeftAlignedRawParameter(
        {raw.begin(), raw.end()}, out.data(), static_cast<unsigned char>(place.byteOffset),
        static_cast<unsigned char>(place.dataSize), static_cast<unsigned char>(place.bitOffset),
        static_cast<unsigned char>(place.bitLength));
    return out;
}

std::string failure(const Bytes& raw, const Place& place)
{
    return failureOf([&] { leftAligned(raw, place); });
}

TEST(LeftAlignedTest, bytesStandAsTheyAre)
{
    EXPECT_EQ(leftAligned(image, {0, 1}), hexBytes("b400000000000000"));
    EXPECT_EQ(leftAligned(image, {1, 2}), hexBytes("1122000000000000"));
    EXPECT_EQ(leftAligned(image, {1, 3}), hexBytes("1122330000000000"));
    EXPECT_EQ(leftAligned(image, {5, 4}), hexBytes("5566778800000000"));
    EXPECT_EQ(leftAligned(image, {0, 8}), hexBytes("b411223344556677"));
    EXPECT_EQ(leftAligned(image, {1, 8}), hexBytes("1122334455667788"));
}

TEST(LeftAlignedTest, bitOffsetWithoutLengthIsTheRestOfTheByte)
{
    EXPECT_EQ(leftAligned(image, {0, 1, 4, 0}), hexBytes("0b00000000000000"));
    EXPECT_EQ(leftAligned(image, {0, 1, 7, 0}), hexBytes("0100000000000000"));
}

TEST(LeftAlignedTest, sizeZeroGivesZeros)
{
    EXPECT_EQ(leftAligned(image, {0, 0}), Bytes(8, 0));
    EXPECT_EQ(leftAligned(image, {9, 0}), Bytes(8, 0));
    EXPECT_EQ(leftAligned({}, {0, 0}), Bytes(8, 0));
}

// 0xB4 = 1011 0100
TEST(LeftAlignedTest, bitFieldIsShiftedDown)
{
    EXPECT_EQ(leftAligned(image, {0, 1, 2, 1})[0], 1);
    EXPECT_EQ(leftAligned(image, {0, 1, 3, 1})[0], 0);
    EXPECT_EQ(leftAligned(image, {0, 1, 2, 3})[0], 5);
    EXPECT_EQ(leftAligned(image, {0, 1, 4, 4})[0], 11);
    EXPECT_EQ(leftAligned(image, {0, 1, 0, 8})[0], 0xB4);
    EXPECT_EQ(leftAligned(image, {0, 1, 7, 1}), hexBytes("0100000000000000"));
}

TEST(LeftAlignedTest, bitFieldLiesInItsByte)
{
    const auto outside = [](const char* bits, const char* offset) {
        return "Bit field of " + std::string(bits) + " bit(s) at bit offset " + offset +
               " lies outside its byte: bits 0 to 7 are accepted";
    };
    EXPECT_EQ(failure(image, {0, 1, 4, 8}), outside("8", "4"));
    EXPECT_EQ(failure(image, {0, 1, 5, 4}), outside("4", "5"));
    EXPECT_EQ(failure(image, {0, 1, 0, 255}), outside("255", "0"));
    EXPECT_EQ(failure(image, {0, 1, 8, 1}), outside("1", "8"));
    EXPECT_EQ(failure(image, {0, 1, 255, 0}), outside("0", "255"));
    EXPECT_EQ(leftAligned(image, {0, 1, 5, 3}), hexBytes("0500000000000000"));
}

TEST(LeftAlignedTest, bitFieldNeedsItsByte)
{
    EXPECT_EQ(leftAligned(image, {8, 0, 3, 1}), hexBytes("0100000000000000"));
    EXPECT_EQ(failure(image, {9, 0, 3, 1}), "Parameter value of 1 bytes at byte offset 9 lies "
                                            "outside the raw image of 9 bytes");
    EXPECT_EQ(failure({}, {0, 1, 0, 1}), "Parameter value of 1 bytes at byte offset 0 lies "
                                         "outside the raw image of 0 bytes");
}

TEST(LeftAlignedTest, valueLiesInTheImage)
{
    EXPECT_EQ(failure(image, {8, 2}), "Parameter value of 2 bytes at byte offset 8 lies outside "
                                      "the raw image of 9 bytes");
    EXPECT_EQ(failure(image, {255, 8}), "Parameter value of 8 bytes at byte offset 255 lies "
                                        "outside the raw image of 9 bytes");
    EXPECT_EQ(failure(image, {10, 0}), "Parameter value of 0 bytes at byte offset 10 lies outside "
                                       "the raw image of 9 bytes");
}

TEST(LeftAlignedTest, imageOfEveryLengthHoldsTheValueOrFails)
{
    for (std::size_t size = 0; size <= image.size(); ++size) {
        const Bytes raw(image.begin(), image.begin() + static_cast<std::ptrdiff_t>(size));
        if (size >= 6) {
            EXPECT_EQ(leftAligned(raw, {2, 4}), hexBytes("2233445500000000"));
        } else {
            EXPECT_EQ(failure(raw, {2, 4}),
                      "Parameter value of 4 bytes at byte offset 2 lies outside the raw image of " +
                          std::to_string(size) + " bytes");
        }
    }
}

TEST(LeftAlignedTest, sizeIsEightAtMost)
{
    EXPECT_EQ(failure(Bytes(300, 1), {0, 9}),
              "Parameter value of 9 bytes is too long: 8 bytes at most are accepted");
    EXPECT_EQ(failure(Bytes(300, 1), {0, 255, 0, 1}),
              "Parameter value of 255 bytes is too long: 8 bytes at most are accepted");
}

TEST(LeftAlignedTest, failureLeavesZeros)
{
    Bytes out(8, 0xEE);
    failureOf([&] { mxfileext::getLeftAlignedRawParameter({1, 2}, out.data(), 1, 2, 0, 0); });
    EXPECT_EQ(out, Bytes(8, 0));
}

} // namespace
