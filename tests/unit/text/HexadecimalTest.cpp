#include <text/Hexadecimal.h>

#include <gmock/gmock.h>

namespace {

TEST(Hexadecimal, hasTheDigitsThatAreAskedFor)
{
    EXPECT_EQ(text::hexOf(0xFEDCBA9876543210, 16), "fedcba9876543210");
    EXPECT_EQ(text::hexOf(0x1FF, 2), "ff");
    EXPECT_EQ(text::hexOf(0, 0), "");
}

TEST(Hexadecimal, joinsBytes)
{
    const unsigned char bytes[] = {0x00, 0x9A, 0xFF};
    EXPECT_EQ(text::hexOfBytes(bytes, 3, " "), "00 9a ff");
    EXPECT_EQ(text::hexOfBytes(bytes, 3, ""), "009aff");
    EXPECT_EQ(text::hexOfBytes(bytes, 1, ", "), "00");
    EXPECT_EQ(text::hexOfBytes(nullptr, 0, " "), "");
}

TEST(Hexadecimal, joinsPartOfABuffer)
{
    EXPECT_EQ(text::hexOfBytes({0, '\x0F', '\xFE', 3}, 1, 2), "0f fe");
    EXPECT_EQ(text::hexOfBytes({1, 2}, 1, 5), "02");
    EXPECT_EQ(text::hexOfBytes({1, 2}, 9, 5), "");
}

TEST(Hexadecimal, readsDigitsOfEitherCase)
{
    std::string accepted;
    for (int value = 0; value < 256; ++value) {
        if (text::hexDigit(static_cast<char>(value))) {
            accepted += static_cast<char>(value);
        }
    }
    EXPECT_EQ(accepted, "0123456789ABCDEFabcdef");
    EXPECT_EQ(text::hexDigit('0'), 0U);
    EXPECT_EQ(text::hexDigit('9'), 9U);
    EXPECT_EQ(text::hexDigit('A'), 10U);
    EXPECT_EQ(text::hexDigit('f'), 15U);
}

TEST(Hexadecimal, spellsBytesWithAnyWhiteSpace)
{
    using Octets = std::vector<std::uint8_t>;
    EXPECT_EQ(text::toHex({0x00, 0x9A}), "009a");
    EXPECT_EQ(text::fromHex(" 0\t09\r\na "), (Octets{0x00, 0x9A}));
    EXPECT_EQ(text::fromHex("FfaA"), (Octets{0xFF, 0xAA}));
    EXPECT_EQ(text::fromHex(""), Octets());
    for (const char* const other : {"0", "009", "0g", "0x00", "00,01", "0 \f0"}) {
        EXPECT_EQ(text::fromHex(other), std::nullopt) << other;
    }
}

} // namespace
