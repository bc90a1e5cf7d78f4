#include "CompanionTest.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <random>

namespace {

using testkit::Bytes;
using testkit::join;
using testkit::ParameterRecord;

const unsigned widths[] = {0, 1, 2, 1, 2, 1, 4, 4, 8, 8}; // bytes, by datatype

// The text that is shown for the parameter: six decimals where it is converted.
class ReadBackTest : public CompanionTest
{
protected:
    static std::string shown(Bytes record, Bytes block)
    {
        if ((record[5] & 4) != 0) {
            Converted result;
            mxfileext::getConvertedParameter(0, block.data(), record.data(), &result.value,
                                             &result.min, &result.max, result.unit);
            char text[64];
            std::snprintf(text, sizeof text, "%f", double{result.value});
            return text;
        }
        mxfileext::ParameterValue_t value;
        mxfileext::getParameterValue(record.data(), block.data(), &value);
        return textsOf(value)[0];
    }

    static Bytes afterReadBack(Bytes record, const Bytes& image)
    {
        Bytes changed = image;
        mxfileext::setParameter(0, changed.data(), record.data(), shown(record, image));
        return changed;
    }
};

class RandomRecords
{
public:
    std::uint64_t bits(unsigned count)
    {
        const std::uint64_t number = engine();
        return count == 64 ? number : number & ((std::uint64_t{1} << count) - 1);
    }

    std::uint8_t below(unsigned end) { return static_cast<std::uint8_t>(engine() % end); }

    ParameterRecord record(std::size_t imageSize)
    {
        ParameterRecord record;
        record.number = static_cast<std::uint8_t>(bits(8));
        record.datatype = static_cast<std::uint8_t>(1 + below(9));
        record.position = static_cast<std::uint8_t>(
            4 + below(static_cast<unsigned>(imageSize) - widths[record.datatype] + 1));
        record.showMe = static_cast<std::uint8_t>(bits(8));
        record.conversionId = static_cast<std::uint8_t>(bits(8));
        record.bitOffset = below(8);
        record.bitLength = below(9U - record.bitOffset);
        return record;
    }

    Bytes image(std::size_t size)
    {
        // Bytes at the edges of the datatypes are as frequent as all the others together.
        static const std::uint8_t edges[] = {0x00, 0x7F, 0x80, 0xFF};
        Bytes bytes;
        while (bytes.size() < size) {
            bytes.push_back(bits(1) == 0 ? edges[bits(2)] : static_cast<std::uint8_t>(bits(8)));
        }
        return bytes;
    }

private:
    std::mt19937_64 engine{20240611};
};

// Conversions of every kind: any 32 bits are a factor and an offset.
std::vector<ConversionEntry> anyConversions(RandomRecords& random)
{
    std::vector<ConversionEntry> entries;
    for (unsigned id = 0; id < 256; ++id) {
        const bool anyBits = random.bits(1) == 0;
        const auto factor = static_cast<std::uint32_t>(random.bits(32));
        // Sign and fraction at random, the exponent such that the factor is near 1.
        entries.push_back(
            {static_cast<std::uint8_t>(id), anyBits ? factor : (factor & 0x80FFFFFFU) | 0x3E000000U,
             static_cast<std::uint32_t>(random.bits(anyBits ? 32 : 31)) & 0xC7FFFFFFU});
    }
    return entries;
}

TEST_F(ReadBackTest, shownTextLeavesTheImageAsItWas)
{
    RandomRecords random;
    giveConversions(anyConversions(random));
    tellSize(16);
    for (int i = 0; i < 20000; ++i) {
        const ParameterRecord record = random.record(16);
        const Bytes image = random.image(16);
        ASSERT_EQ(afterReadBack(record.bytes(), image), image)
            << "run " << i << " \"" << shown(record.bytes(), image) << '"';
    }
}

// The bytes of `record` in an image of 16 bytes that the parameter owns.
Bytes maskOf(const ParameterRecord& record)
{
    Bytes mask(16, 0);
    const std::size_t offset = record.position - 4U;
    for (unsigned i = 0; i < widths[record.datatype]; ++i) {
        mask[offset + i] = 0xFF;
    }
    if (record.datatype == 5) {
        const unsigned length = record.bitLength == 0 ? 8U - record.bitOffset : record.bitLength;
        mask[offset] = static_cast<std::uint8_t>(((1U << length) - 1) << record.bitOffset);
    }
    return mask;
}

TEST_F(ReadBackTest, textOfAnotherImageMovesItsBitsAndNoOthers)
{
    RandomRecords random;
    tellSize(16);
    for (int i = 0; i < 20000; ++i) {
        ParameterRecord record = random.record(16);
        record.showMe = static_cast<std::uint8_t>(record.showMe & 0xFB);
        const Bytes image = random.image(16);
        const Bytes other = random.image(16);
        const Bytes mask = maskOf(record);
        Bytes expected = image;
        for (std::size_t b = 0; b < 16; ++b) {
            expected[b] = static_cast<std::uint8_t>((image[b] & ~mask[b]) | (other[b] & mask[b]));
        }
        ASSERT_EQ(imageAfter(record, image, shown(record.bytes(), other)), expected) << "run " << i;
    }
}

// A group record as it stands in a module file.
using Groups = std::map<unsigned, Bytes>;

// The first occurrence of each group; a group that is cut off is left out.
Groups groupsOf(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    const Bytes bytes{std::istreambuf_iterator<char>(file), {}};
    Groups groups;
    for (std::size_t pos = 0; bytes.size() - pos >= 6;) {
        const unsigned id = bytes[pos] * 256U + bytes[pos + 1];
        const std::size_t size = bytes[pos + 2] * 256U + bytes[pos + 3];
        if (size < 6 || size > bytes.size() - pos) {
            break;
        }
        const auto begin = bytes.begin() + static_cast<std::ptrdiff_t>(pos);
        groups.try_emplace(id, begin, begin + static_cast<std::ptrdiff_t>(size));
        pos += size;
    }
    return groups;
}

Bytes payloadOf(const Groups& groups, unsigned id)
{
    const auto found = groups.find(id);
    return found == groups.end() ? Bytes()
                                 : Bytes(found->second.begin() + 4, found->second.end() - 2);
}

// The default parameter block, after the header whose length its second byte states.
Bytes defaultBlock(const Groups& groups)
{
    Bytes payload = payloadOf(groups, 0x0010);
    if (payload.size() < 2) {
        return {};
    }
    const unsigned header = (payload[1] + 4U * (payload[1] & 0x3FU) + 2U) % 256;
    return Bytes(payload.begin() + header, payload.end());
}

void giveAll(const Groups& groups)
{
    for (const auto& [id, bytes] : groups) {
        mxfileext::parseGroup(0, static_cast<unsigned short>(id), bytes.data(),
                              static_cast<unsigned short>(bytes.size()));
    }
}

TEST_F(ReadBackTest, shownTextLeavesTheDefaultBlockOfEveryExampleAsItWas)
{
    unsigned parameters = 0;
    unsigned convertedOnes = 0;
    for (const auto& entry : std::filesystem::directory_iterator(EXAMPLE_MODULES)) {
        if (entry.path().extension() != ".bin") {
            continue;
        }
        forgetAll();
        const Groups groups = groupsOf(entry.path());
        const Bytes block = defaultBlock(groups);
        const Bytes records = payloadOf(groups, 0x20C0);
        giveAll(groups);
        tellSize(block.size());
        for (std::size_t pos = 0; pos + 29 <= records.size(); pos += 29) {
            const auto begin = records.begin() + static_cast<std::ptrdiff_t>(pos);
            const Bytes record(begin, begin + 29);
            EXPECT_EQ(afterReadBack(record, block), block) << entry.path() << " at " << pos;
            ++parameters;
            convertedOnes += (record[5] & 4U) >> 2;
        }
    }
    EXPECT_GT(parameters, 20U);
    EXPECT_GT(convertedOnes, 0U);
}

} // namespace
