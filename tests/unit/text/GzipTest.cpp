// Product images as gzip files.

#include <text/Gzip.h>

#include <gmock/gmock.h>

namespace {

using Bytes = std::vector<std::uint8_t>;
using text::gunzip;
using text::gunzipped;
using text::gzipped;

TEST(Gzip, hasNeitherNameNorTimeNorSystem)
{
    // Magic, method, no flags, time 0, best compression, system unknown (RFC 1952).
    const Bytes head = {0x1F, 0x8B, 8, 0, 0, 0, 0, 0, 2, 0xFF};
    const Bytes bytes = gzipped("<svg/>");
    ASSERT_GT(bytes.size(), head.size() + 8);
    EXPECT_EQ(Bytes(bytes.begin(), bytes.begin() + 10), head);
    // The size of the text ends the file, least significant byte first.
    EXPECT_EQ(Bytes(bytes.end() - 4, bytes.end()), (Bytes{6, 0, 0, 0}));
}

TEST(Gzip, givesTheTextBack)
{
    const std::string text(70000, 'x');
    EXPECT_EQ(gunzipped(gzipped(text), text.size()), text);
    EXPECT_EQ(gunzipped(gzipped(text), text.size() - 1), std::nullopt);
    EXPECT_EQ(gunzipped(gzipped(""), 1), "");
}

TEST(Gzip, isNotFoundInOtherBytes)
{
    EXPECT_EQ(gunzipped({}, 100), std::nullopt);
    EXPECT_EQ(gunzipped({1, 2, 3}, 100), std::nullopt);
    Bytes cut = gzipped("some text");
    cut.pop_back();
    EXPECT_EQ(gunzipped(cut, 100), std::nullopt);
    Bytes longer = gzipped("some text");
    longer.push_back(0);
    EXPECT_EQ(gunzipped(longer, 100), std::nullopt);
}

TEST(Gzip, reportsHowFarTheBytesGo)
{
    using End = text::Gunzipped::End;
    const std::string content(70000, 'x');
    Bytes bytes = gzipped(content);
    const std::size_t size = bytes.size();
    bytes.insert(bytes.end(), {7, 8, 9});
    const auto whole = gunzip(bytes, content.size());
    EXPECT_EQ(whole.end, End::Whole);
    EXPECT_EQ(whole.content, content);
    EXPECT_EQ(whole.bytesRead, size);
    EXPECT_EQ(whole.bytesLeft, 3U);

    for (const std::size_t limit : {std::size_t{100}, content.size() - 1}) {
        const auto longer = gunzip(bytes, limit);
        EXPECT_EQ(longer.end, End::Longer);
        EXPECT_EQ(longer.content.size(), limit);
    }
    EXPECT_EQ(gunzip({bytes.begin(), bytes.begin() + 20}, content.size()).end, End::CutOff);
    EXPECT_EQ(gunzip({}, 1).end, End::CutOff);
}

TEST(Gzip, reportsWhatIsDamaged)
{
    Bytes bytes = gzipped("some text");
    bytes[bytes.size() - 8] ^= 1U; // of the checksum
    const auto found = gunzip(bytes, 100);
    EXPECT_EQ(found.end, text::Gunzipped::End::Damaged);
    EXPECT_EQ(found.content, "some text");
    EXPECT_EQ(found.reason, "incorrect data check");
    EXPECT_EQ(gunzip({1, 2, 3}, 100).reason, "incorrect header check");
}

} // namespace
