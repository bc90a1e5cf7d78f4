#include "CompanionTest.h"

namespace {

using testkit::Bytes;
using testkit::hexBytes;
using testkit::ParameterRecord;

using SetConvertedTest = CompanionTest;

ParameterRecord converted(std::uint8_t datatype, std::uint8_t conversionId = 1)
{
    ParameterRecord record;
    record.number = 7;
    record.datatype = datatype;
    record.showMe = 4;
    record.conversionId = conversionId;
    return record;
}

TEST_F(SetConvertedTest, takesThePhysicalValue)
{
    giveConversions({{1, plusHalf, plusTen}, {2, minusHalf, plusTen}});
    EXPECT_EQ(imageAfter(converted(4), hexBytes("0000"), "60"), hexBytes("0064"));
    EXPECT_EQ(imageAfter(converted(4), hexBytes("0000"), "-40.5"), hexBytes("ff9b")); // -101
    EXPECT_EQ(imageAfter(converted(1, 2), {0}, "-117.5"), (Bytes{255}));
    EXPECT_EQ(imageAfter(converted(1, 2), {9}, "10"), (Bytes{0}));
}

TEST_F(SetConvertedTest, acceptsEveryDecimalForm)
{
    giveConversions({{1, plusHalf}});
    for (const char* text :
         {"12.5", "12.500000", "+12.5", "1.25e1", "1.25E+1", "125e-1", "012.5"}) {
        EXPECT_EQ(imageAfter(converted(1), {0}, text), (Bytes{25})) << text;
    }
    EXPECT_EQ(imageAfter(converted(1), {0}, ".5"), (Bytes{1}));
    EXPECT_EQ(imageAfter(converted(1), {0}, "5."), (Bytes{10}));
    EXPECT_EQ(imageAfter(converted(1), {9}, "-0.0"), (Bytes{0}));
}

TEST_F(SetConvertedTest, roundsToTheNearestRawValue)
{
    giveConversions({{1, plusTenth, plusTen}, {2, plusHalf}});
    EXPECT_EQ(imageAfter(converted(1), {0}, "12.5"), (Bytes{25}));
    EXPECT_EQ(imageAfter(converted(1), {0}, "12.54"), (Bytes{25}));
    EXPECT_EQ(imageAfter(converted(1), {0}, "12.46"), (Bytes{25}));
    EXPECT_EQ(imageAfter(converted(1), {0}, "12.56"), (Bytes{26}));
    // Half way: away from zero.
    EXPECT_EQ(imageAfter(converted(3, 2), {0}, "1.25"), (Bytes{3}));
    EXPECT_EQ(imageAfter(converted(3, 2), {0}, "-1.25"), (Bytes{0xFD}));
}

TEST_F(SetConvertedTest, limitsHoldAfterRounding)
{
    giveConversions({{1, plusHalf}});
    EXPECT_EQ(imageAfter(converted(1), {9}, "127.7"), (Bytes{255})); // 255.4
    EXPECT_EQ(imageAfter(converted(1), {9}, "-0.2"), (Bytes{0}));    // -0.4
    EXPECT_EQ(failureToSet(converted(1), {9}, "127.75"),             // 255.5
              "Parameter 7: cannot set value \"127.75\": expected 0.000000 to 127.500000");
    EXPECT_EQ(failureToSet(converted(1), {9}, "-0.3"), // -0.6
              "Parameter 7: cannot set value \"-0.3\": expected 0.000000 to 127.500000");
}

TEST_F(SetConvertedTest, limitsOfANegativeFactorAreStatedInOrder)
{
    giveConversions({{1, minusHalf, plusTen}});
    EXPECT_EQ(failureToSet(converted(1), {9}, "11"),
              "Parameter 7: cannot set value \"11\": expected -117.500000 to 10.000000");
}

TEST_F(SetConvertedTest, withoutConversionTheRawValueIsThePhysicalOne)
{
    EXPECT_EQ(imageAfter(converted(1, 0), {9}, "12.4"), (Bytes{12}));
    EXPECT_EQ(imageAfter(converted(1, 5), {9}, "12.6"), (Bytes{13}));
}

// The neighbours of 2^64 among the binary64 numbers: 2^64 - 2048 is the last one below it.
TEST_F(SetConvertedTest, unsignedSixtyFourBitsEndBelowTwoToTheSixtyFour)
{
    EXPECT_EQ(imageAfter(converted(8, 0), Bytes(8, 0), "18446744073709549568"),
              hexBytes("fffffffffffff800"));
    for (const char* text :
         {"18446744073709551615", "18446744073709551616", "1e300", "-1", "-1e300"}) {
        EXPECT_EQ(failureToSet(converted(8, 0), Bytes(8, 0), text),
                  "Parameter 7: cannot set value \"" + std::string(text) +
                      "\": expected 0.000000 to 18446744073709551616.000000");
    }
}

// Around 2^63 the neighbours are 2^63 - 1024 and 2^63 + 2048.
TEST_F(SetConvertedTest, signedSixtyFourBitsEndAtTwoToTheSixtyThree)
{
    EXPECT_EQ(imageAfter(converted(9, 0), Bytes(8, 0), "9223372036854774784"),
              hexBytes("7ffffffffffffc00"));
    EXPECT_EQ(imageAfter(converted(9, 0), Bytes(8, 0), "-9223372036854775808"),
              hexBytes("8000000000000000"));
    for (const char* text : {"9223372036854775808", "-9223372036854777856"}) {
        EXPECT_EQ(failureToSet(converted(9, 0), Bytes(8, 0), text),
                  "Parameter 7: cannot set value \"" + std::string(text) +
                      "\": expected -9223372036854775808.000000 to 9223372036854775808.000000");
    }
}

TEST_F(SetConvertedTest, shownTextKeepsWhatItCannotTell)
{
    // 16777217 and 18446744073709551615 are no binary32: they are shown as their neighbours.
    const Bytes odd = hexBytes("01000001");
    EXPECT_EQ(convert(converted(6, 0), odd).value, 16777216.0F);
    EXPECT_EQ(imageAfter(converted(6, 0), odd, "16777216.000000"), odd);
    EXPECT_EQ(imageAfter(converted(6, 0), odd, "16777216"), hexBytes("01000000"));
    const Bytes highest(8, 0xFF);
    EXPECT_EQ(imageAfter(converted(8, 0), highest, "18446744073709551616.000000"), highest);
}

TEST_F(SetConvertedTest, shownTextKeepsAValueBelowItsDecimals)
{
    giveConversions({{1, 0x2EDBE6FF}}); // factor 1e-10
    EXPECT_EQ(imageAfter(converted(1), {0x55}, "0.000000"), (Bytes{0x55}));
    EXPECT_EQ(imageAfter(converted(1), {0x55}, "0"), (Bytes{0}));
}

TEST_F(SetConvertedTest, shownInfinityIsKeptButCannotBeSet)
{
    giveConversions({{1, 0x7F7FFFFF}}); // the largest finite factor
    EXPECT_EQ(imageAfter(converted(1), {2}, "inf"), (Bytes{2}));
    EXPECT_EQ(failureToSet(converted(1), {0}, "inf"),
              "Parameter 7: cannot set value \"inf\": expected a decimal number, 0.000000 to inf");
}

TEST_F(SetConvertedTest, resultBeyondEveryNumberDoesNotFit)
{
    giveConversions({{1, 0x00000001}}); // the smallest factor, 2^-149: 1e300 / factor is infinite
    EXPECT_EQ(failureToSet(converted(9), Bytes(8, 0), "1e300"),
              "Parameter 7: cannot set value \"1e300\": expected -0.000000 to 0.000000");
}

} // namespace
