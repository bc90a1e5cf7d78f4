#include <mxformat/PhysicalScale.h>

#include <gtest/gtest.h>

#include <cstring>
#include <random>

namespace {

using mxformat::Decimal;
using mxformat::PhysicalScale;
using mxformat::WholeNumber;

WholeNumber raw(std::int64_t number)
{
    return WholeNumber::ofBits(static_cast<std::uint64_t>(number), true);
}

const WholeNumber lowestSigned(true, std::uint64_t{1} << 63U);
const WholeNumber highestSigned(false, (std::uint64_t{1} << 63U) - 1);
const WholeNumber highestUnsigned(false, ~std::uint64_t{0});

// The nearest raw value as text, "-" where there is none.
std::string nearest(const PhysicalScale& scale, const std::string& value,
                    const WholeNumber& lowest = {}, const WholeNumber& highest = highestUnsigned)
{
    const auto found = scale.nearestRaw(Decimal::ofText(value).value(), lowest, highest);
    return found ? (Decimal(1.0F) * *found).text() : "-";
}

TEST(PhysicalScaleTest, findsEveryRawValueOfSixtyFourBits)
{
    EXPECT_EQ(nearest({1, 0}, "1234567890123456789"), "1234567890123456789");
    EXPECT_EQ(nearest({1, 0}, "18446744073709551615"), "18446744073709551615");
    EXPECT_EQ(nearest({1, 0}, "18446744073709551615.5"), "-");
    EXPECT_EQ(nearest({1, 0}, "9007199254740993"), "9007199254740993");
    EXPECT_EQ(nearest({1, 0}, "-9223372036854775808", lowestSigned, highestSigned),
              "-9223372036854775808");
    EXPECT_EQ(nearest({1, 0}, "-9223372036854775808.5", lowestSigned, highestSigned), "-");
    EXPECT_EQ(nearest({-0.5F, 10}, "-9223372036854775797.5"), "18446744073709551615");
}

TEST(PhysicalScaleTest, isAwayFromZeroHalfWay)
{
    EXPECT_EQ(nearest({0.5F, 0}, "1.25", lowestSigned, highestSigned), "3");
    EXPECT_EQ(nearest({0.5F, 0}, "-1.25", lowestSigned, highestSigned), "-3");
    EXPECT_EQ(nearest({-0.5F, 0}, "1.25", lowestSigned, highestSigned), "-3");
    EXPECT_EQ(nearest({0.5F, 0}, "1.2499999999999999999999999"), "2");
    EXPECT_EQ(nearest({0.5F, 0}, "1.2500000000000000000000001"), "3");
    EXPECT_EQ(nearest({0.5F, 0}, "-0.25"), "-");
    EXPECT_EQ(nearest({0.5F, 0}, "-0.24"), "0");
}

TEST(PhysicalScaleTest, rangeIsOfRawValues)
{
    const WholeNumber highest(false, 16777219);
    EXPECT_EQ(nearest({1, 0}, "16777220", {}, highest), "-");
    EXPECT_EQ(nearest({1, 0}, "16777219", {}, highest), "16777219");
    EXPECT_EQ(nearest({1, 0}, "9.4", WholeNumber(false, 10), highest), "-");
    EXPECT_EQ(nearest({1, 0}, "9.5", WholeNumber(false, 10), highest), "10");
    EXPECT_EQ(nearest({1, 0}, "5", WholeNumber(false, 6), WholeNumber(false, 4)), "-");
}

TEST(PhysicalScaleTest, textHasTheDigitsOfAPerson)
{
    EXPECT_EQ((PhysicalScale{0.001F, 0}.text(raw(9900))), "9.9");
    EXPECT_EQ((PhysicalScale{0.001F, 0}.text(raw(9502))), "9.502");
    EXPECT_EQ((PhysicalScale{0.001F, 0}.text(raw(-32768))), "-32.768");
    EXPECT_EQ((PhysicalScale{0.1F, 0}.text(raw(4500))), "450");
    EXPECT_EQ((PhysicalScale{-0.01F, 20}.text(raw(1234))), "7.66");
    EXPECT_EQ((PhysicalScale{0.1F, -273.15F}.text(raw(2731))), "-0.05");
    EXPECT_EQ((PhysicalScale{0.25F, 0}.text(raw(3))), "0.75");
    EXPECT_EQ((PhysicalScale{7, 0}.text(raw(3))), "21");
    EXPECT_EQ((PhysicalScale{1, 0}.text(highestUnsigned)), "18446744073709551615");
    EXPECT_EQ((PhysicalScale{1e10F, 0}.text(raw(3))), "30000000000");
    EXPECT_EQ((PhysicalScale{1e-10F, 0}.text(raw(3))), "0.0000000003");
    EXPECT_EQ((PhysicalScale{-0.5F, 0}.text(raw(0))), "0");
}

// 1/3 as a binary32 is 0.3333333432674408: 30 of it are 10.0000003, shown as 10.
TEST(PhysicalScaleTest, textIsNoMoreExactThanTheFactor)
{
    EXPECT_EQ((PhysicalScale{1.0F / 3, 0}.text(raw(30))), "10");
    EXPECT_EQ((PhysicalScale{1.0F / 3, 0}.text(raw(1))), "0.33333334");
}

// 0.1F is 0.100000001490116: 2^32 - 1 of it are 429496735.9, and 429496729.5 another raw value.
TEST(PhysicalScaleTest, textOfALargeRawValueIsThatOfNoOther)
{
    EXPECT_EQ((PhysicalScale{0.1F, 0}.text(raw(4294967295))), "429496735.9");
    EXPECT_EQ(nearest({0.1F, 0}, "429496735.9"), "4294967295");
    EXPECT_EQ(nearest({0.1F, 0}, "429496729.5"), "4294967231");
}

TEST(PhysicalScaleTest, statesWhatItIsInDecimal)
{
    const PhysicalScale scale{0.001F, 0};
    EXPECT_TRUE(scale.states(*Decimal::ofText("9.9"), raw(9900)));
    EXPECT_TRUE(scale.states(*Decimal::ofText("9.9000"), raw(9900)));
    EXPECT_FALSE(scale.states(*Decimal::ofText("9.9001"), raw(9900)));
    EXPECT_FALSE(scale.states(*Decimal::ofText("9.900001"), raw(9900)));
}

TEST(PhysicalScaleTest, statesNoValueThatAnotherRawValueIsNearerTo)
{
    // 57643566 * 0.01F + 0.1F is 576435.7471...: 576435.76 is nearer to the next one,
    // 576435.7571...
    const PhysicalScale scale{0.01F, 0.1F};
    EXPECT_FALSE(scale.states(*Decimal::ofText("576435.76"), raw(57643566)));
    EXPECT_EQ(nearest(scale, "576435.76"), "57643567");
    EXPECT_TRUE(scale.states(*Decimal::ofText(scale.text(raw(57643566))), raw(57643566)));
}

TEST(PhysicalScaleTest, valueIsTheNearestFloat)
{
    EXPECT_EQ((PhysicalScale{0.5F, 10}.value(raw(100))), 60.0F);
    EXPECT_EQ((PhysicalScale{1, 0}.value(raw(16777217))), 16777216.0F); // half way: to even
    EXPECT_EQ((PhysicalScale{1, 0}.value(raw(16777219))), 16777220.0F);
    EXPECT_EQ((PhysicalScale{1, 0}.value(highestUnsigned)), 18446744073709551616.0F);
    // 2^60 + 2^36 + 1 is above the middle of two floats; a binary64 puts it on the middle, from
    // where it would go to 2^60.
    EXPECT_EQ(
        (PhysicalScale{1, 0}.value(raw((std::int64_t{1} << 60) + (std::int64_t{1} << 36) + 1))),
        1152921642045800448.0F);
    EXPECT_EQ((PhysicalScale{3.402823466e38F, 0}.value(raw(2))),
              std::numeric_limits<float>::infinity());
}

// Factor and offset of every size, with raw values of every width.
class AnyScale
{
public:
    PhysicalScale scale()
    {
        return {number() == 0 ? 1.0F : lastNumber, engine() % 4 == 0 ? 0.0F : number()};
    }

    WholeNumber raw() { return WholeNumber::ofBits(engine() >> (engine() % 64), false); }

private:
    // Any finite float, those near 1 more often.
    float number()
    {
        do {
            auto bits = static_cast<std::uint32_t>(engine());
            if (engine() % 2 == 0) {
                bits = (bits & 0x80FFFFFFU) | 0x3C000000U;
            }
            std::memcpy(&lastNumber, &bits, sizeof lastNumber);
        } while (!std::isfinite(lastNumber));
        return lastNumber;
    }

    std::mt19937_64 engine{20261121};
    float lastNumber = 0;
};

// The distance of `wanted` from the physical value of `raw`, by arithmetic alone.
Decimal distance(const PhysicalScale& scale, const WholeNumber& raw, const Decimal& wanted)
{
    return (Decimal(scale.factor) * raw + Decimal(scale.offset) - wanted).absolute();
}

TEST(PhysicalScaleTest, textGivesTheRawValueAgainForEveryScale)
{
    AnyScale any;
    for (int i = 0; i < 1000; ++i) {
        const PhysicalScale scale = any.scale();
        const WholeNumber number = any.raw();
        const auto again =
            scale.nearestRaw(Decimal::ofText(scale.text(number)).value(), {}, highestUnsigned);
        ASSERT_TRUE(again.has_value() && *again == number)
            << scale.factor << " " << scale.offset << " " << number.magnitude() << " "
            << scale.text(number);
    }
}

TEST(PhysicalScaleTest, noNeighbourOfTheNearestRawValueIsNearer)
{
    AnyScale any;
    for (int i = 0; i < 1000; ++i) {
        const PhysicalScale scale = any.scale();
        // A value between two raw values.
        const WholeNumber some(false, any.raw().magnitude() / 2);
        const Decimal wanted =
            Decimal(scale.factor) * some + Decimal(scale.offset) + Decimal(scale.factor * 0.3F);
        const auto found = scale.nearestRaw(wanted, {}, highestUnsigned);
        ASSERT_TRUE(found.has_value());
        const Decimal error = distance(scale, *found, wanted);
        EXPECT_FALSE(distance(scale, found->plus(1), wanted) < error);
        if (found->magnitude() != 0) {
            EXPECT_FALSE(distance(scale, WholeNumber(false, found->magnitude() - 1), wanted) <
                         error);
        }
    }
}

} // namespace
