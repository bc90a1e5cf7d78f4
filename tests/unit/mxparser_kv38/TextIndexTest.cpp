#include "MxBuffer.h"
#include "ParserAccess.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using testkit::Bytes;

constexpr const char* unterminated = "Invalid textstring termination";

// A text table read without an index: record after record from the start, every time.
class PlainTable
{
public:
    // `mxData` is one group with `payloadSize` bytes, ended by its checksum.
    PlainTable(const Bytes& mxData, std::uint32_t payloadSize) : bytes(mxData), size(payloadSize) {}

    // The text `id`, or the message of the failure after "! ".
    std::string lookUp(std::uint16_t id) const
    {
        std::uint32_t pos = 2;
        while (size - 1 > pos) {
            if (headerSize + pos + 2 > bytes.size()) {
                return "! Unexpected end of mx buffer (group 20d3)";
            }
            const unsigned found = static_cast<unsigned>(at(pos) << 8) | at(pos + 1);
            pos += 2;
            if (found == id) {
                return pos == size ? notFound(id) : textAt(pos);
            }
            while (true) {
                if (pos >= size) {
                    return std::string("! ") + unterminated;
                }
                if (at(pos) == 0x0D || at(pos + 1) == 0x0A) {
                    break;
                }
                ++pos;
            }
            pos += 2;
        }
        return notFound(id);
    }

private:
    static constexpr std::uint32_t headerSize = 4;

    std::uint8_t at(std::uint32_t pos) const { return bytes.at(headerSize + pos); }

    static std::string notFound(std::uint16_t id)
    {
        return "! Cannot find requested text string: ID = " + std::to_string(id);
    }

    // The terminator may be directly after the payload.
    std::string textAt(std::uint32_t pos) const
    {
        std::string text;
        for (; headerSize + pos < bytes.size(); ++pos) {
            if (at(pos) == 0x00 || at(pos) == 0x0D) {
                return text;
            }
            if (pos == size) {
                break;
            }
            text += static_cast<char>(at(pos));
        }
        return std::string("! ") + unterminated;
    }

    const Bytes& bytes;
    std::uint32_t size;
};

// Tables of few different bytes, so that line ends, terminators and identifiers fall everywhere.
class Generator
{
public:
    unsigned below(unsigned limit) { return static_cast<unsigned>(engine() % limit); }

    Bytes table()
    {
        constexpr std::uint8_t letters[] = {0x00, 0x00, 0x00, 0x01, 0x02, 0x0D, 0x0D, 0x0A, 'A'};
        Bytes payload(below(48));
        for (std::uint8_t& byte : payload) {
            byte = letters[below(std::size(letters))];
        }
        return payload;
    }

private:
    std::mt19937 engine{2038};
};

std::string lookUp(testkit::ParserAccess& parser, std::uint16_t id)
{
    try {
        return parser.getTextStringById(id);
    } catch (const std::runtime_error& failure) {
        return std::string("! ") + failure.what();
    }
}

TEST(TextIndex, answersAsTheScanFromTheStartDoesInWhateverOrder)
{
    Generator generator;
    testkit::ParserAccess parser;
    unsigned texts = 0;
    unsigned failures = 0;
    for (int round = 0; round < 20000; ++round) {
        const Bytes payload = generator.table();
        const Bytes mxData = testkit::MxBuffer().group(0x20D3, payload).bytes();
        const std::vector<char> data(mxData.begin(), mxData.end());
        const PlainTable plain(mxData, static_cast<std::uint32_t>(payload.size()));
        parser.index(data);
        for (int lookup = 0; lookup < 8; ++lookup) {
            const auto id =
                static_cast<std::uint16_t>(generator.below(3) << 8 | generator.below(3));
            const std::string expected = plain.lookUp(id);
            ASSERT_EQ(lookUp(parser, id), expected) << "round " << round << ", id " << id;
            ++(expected.rfind("! ", 0) == 0 ? failures : texts);
        }
    }
    EXPECT_GT(texts, 10000U);
    EXPECT_GT(failures, 10000U);
}

TEST(TextIndex, isForgottenWhenAnotherBufferStandsInTheSamePlace)
{
    testkit::ParserAccess parser;
    std::vector<char> data =
        testkit::MxBuffer().group(0x20D3, testkit::textTablePayload({{1, "old"}})).chars();
    parser.index(data);
    EXPECT_EQ(lookUp(parser, 1), "old");
    const std::vector<char> other =
        testkit::MxBuffer().group(0x20D3, testkit::textTablePayload({{2, "new"}})).chars();
    std::copy(other.begin(), other.end(), data.begin());
    parser.index(data);
    EXPECT_EQ(lookUp(parser, 1), "! Cannot find requested text string: ID = 1");
    EXPECT_EQ(lookUp(parser, 2), "new");
}

TEST(TextIndex, ADamagedRecordFailsTheLookUpsThatReachItAndNoOthers)
{
    testkit::ParserAccess parser;
    const std::vector<char> data =
        testkit::MxBuffer()
            .group(0x20D3, testkit::hexBytes("0000 0001 41 0d0a 0002 42 42"))
            .chars();
    parser.index(data);
    EXPECT_EQ(lookUp(parser, 3), std::string("! ") + unterminated);
    EXPECT_EQ(lookUp(parser, 1), "A");
    EXPECT_EQ(lookUp(parser, 2), "BB");
    EXPECT_EQ(lookUp(parser, 3), std::string("! ") + unterminated);
}

} // namespace
