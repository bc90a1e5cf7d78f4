// Bytes as base64 text and back (RFC 4648).

#include <text/Base64.h>

#include <gmock/gmock.h>

namespace {

using text::fromBase64;
using text::toBase64;
using Bytes = std::vector<std::uint8_t>;

Bytes bytesOf(const std::string& text)
{
    return {text.begin(), text.end()};
}

TEST(Base64, isPaddedToWholeQuartets)
{
    EXPECT_EQ(toBase64(Bytes()), "");
    EXPECT_EQ(toBase64(bytesOf("f")), "Zg==");
    EXPECT_EQ(toBase64(bytesOf("fo")), "Zm8=");
    EXPECT_EQ(toBase64(bytesOf("foo")), "Zm9v");
    EXPECT_EQ(toBase64({0xFB, 0xFF, 0xFE}), "+//+");
}

TEST(Base64, isOneLineHoweverLong)
{
    const Bytes bytes(3000, 0);
    EXPECT_EQ(toBase64(bytes), std::string(4000, 'A'));
}

TEST(Base64, comesBackWhateverTheBytes)
{
    Bytes bytes;
    for (unsigned value = 0; value < 256; ++value) {
        bytes.push_back(static_cast<std::uint8_t>(value));
        EXPECT_EQ(fromBase64(toBase64(bytes)), bytes);
    }
}

TEST(Base64, mayHoldWhiteSpace)
{
    EXPECT_EQ(fromBase64(" Zm9v\r\n\tYm\nE=\n"), bytesOf("fooba"));
    EXPECT_EQ(fromBase64(""), Bytes());
}

class NoBase64 : public testing::TestWithParam<const char*>
{};

TEST_P(NoBase64, isRefused)
{
    EXPECT_EQ(fromBase64(GetParam()), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(Texts, NoBase64,
                         testing::Values("Zg", "Zg=", "Zm9vZ", // without its padding
                                         "Z===", "====", "Zg======", "Zg==Zg==", "Z=g=", "=Zg=",
                                         "Zm9*", "Zm-_", "Zm9v\f", "Zm9\xE9"));

} // namespace
