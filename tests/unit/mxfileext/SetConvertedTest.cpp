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
              "Parameter 7: cannot set value \"127.75\": expected 0 to 127.5");
    EXPECT_EQ(failureToSet(converted(1), {9}, "-0.3"), // -0.6
              "Parameter 7: cannot set value \"-0.3\": expected 0 to 127.5");
}

TEST_F(SetConvertedTest, limitsOfANegativeFactorAreStatedInOrder)
{
    giveConversions({{1, minusHalf, plusTen}});
    EXPECT_EQ(failureToSet(converted(1), {9}, "11"),
              "Parameter 7: cannot set value \"11\": expected -117.5 to 10");
}

TEST_F(SetConvertedTest, withoutConversionTheRawValueIsThePhysicalOne)
{
    EXPECT_EQ(imageAfter(converted(1, 0), {9}, "12.4"), (Bytes{12}));
    EXPECT_EQ(imageAfter(converted(1, 5), {9}, "12.6"), (Bytes{13}));
}

TEST_F(SetConvertedTest, everyUnsignedValueOfSixtyFourBitsCanBeSet)
{
    const ParameterRecord record = converted(8, 0);
    EXPECT_EQ(imageAfter(record, Bytes(8, 0), "1234567890123456789"), hexBytes("112210f47de98115"));
    EXPECT_EQ(imageAfter(record, Bytes(8, 0), "9007199254740993"), // 2^53 + 1
              hexBytes("0020000000000001"));
    EXPECT_EQ(imageAfter(record, Bytes(8, 0), "18446744073709551615"), Bytes(8, 0xFF));
    for (const char* text :
         {"18446744073709551615.5", "18446744073709551616", "1e300", "1e400", "-1", "-1e300"}) {
        EXPECT_EQ(failureToSet(record, Bytes(8, 0), text),
                  "Parameter 7: cannot set value \"" + std::string(text) +
                      "\": expected 0 to 18446744073709551615");
    }
}

TEST_F(SetConvertedTest, everySignedValueOfSixtyFourBitsCanBeSet)
{
    const ParameterRecord record = converted(9, 0);
    EXPECT_EQ(imageAfter(record, Bytes(8, 0), "9223372036854775807"), hexBytes("7fffffffffffffff"));
    EXPECT_EQ(imageAfter(record, Bytes(8, 0), "-9223372036854775807"),
              hexBytes("8000000000000001"));
    EXPECT_EQ(imageAfter(record, Bytes(8, 0), "-9223372036854775808"),
              hexBytes("8000000000000000"));
    for (const char* text : {"9223372036854775808", "-9223372036854775809"}) {
        EXPECT_EQ(failureToSet(record, Bytes(8, 0), text),
                  "Parameter 7: cannot set value \"" + std::string(text) +
                      "\": expected -9223372036854775808 to 9223372036854775807");
    }
}

// 2^64 - 1 and 2^63 - 1 are shown as 2^64 and 2^63, the nearest binary32.
TEST_F(SetConvertedTest, shownTextOfABoundSetsIt)
{
    EXPECT_EQ(imageAfter(converted(8, 0), Bytes(8, 0), "18446744073709551616.000000"),
              Bytes(8, 0xFF));
    EXPECT_EQ(imageAfter(converted(9, 0), Bytes(8, 0), "9223372036854775808.000000"),
              hexBytes("7fffffffffffffff"));
    EXPECT_EQ(imageAfter(converted(6, 0), Bytes(4, 0), "4294967296.000000"), Bytes(4, 0xFF));
}

// 0.1 as a binary32 is 13421773 / 2^27 = 0.100000001490116119384765625.
TEST_F(SetConvertedTest, factorAndOffsetCountWithAllTheirBits)
{
    giveConversions({{1, plusTenth, plusTen}});
    // 10 + 2^40 * 13421773 / 2^27 = 10 + 8192 * 13421773
    EXPECT_EQ(imageAfter(converted(8), Bytes(8, 0), "109951164426"), hexBytes("0000010000000000"));
    // A little less than half a step more, and half a step.
    EXPECT_EQ(imageAfter(converted(8), Bytes(8, 0), "109951164426.0500000007450580596923828124"),
              hexBytes("0000010000000000"));
    EXPECT_EQ(imageAfter(converted(8), Bytes(8, 0), "109951164426.0500000007450580596923828125"),
              hexBytes("0000010000000001"));
}

TEST_F(SetConvertedTest, shownTextKeepsWhatItCannotTell)
{
    // 16777217 and 18446744073709551615 are not binary32 numbers: they are shown as their
    // neighbours.
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
              "Parameter 7: cannot set value \"inf\": expected a decimal number, 0 to 8677199925" +
                  std::string(31, '0'));
}

TEST_F(SetConvertedTest, resultBeyondEveryNumberDoesNotFit)
{
    giveConversions({{1, 0x00000001}}); // the smallest factor, 2^-149
    EXPECT_EQ(failureToSet(converted(9), Bytes(8, 0), "1e300"),
              "Parameter 7: cannot set value \"1e300\": expected -0." + std::string(25, '0') +
                  "1292469707114105742 to 0." + std::string(25, '0') + "12924697071141057418");
}

} // namespace
