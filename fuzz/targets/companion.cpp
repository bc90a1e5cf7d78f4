// The companion library: groups, a parameter block, records, values to write. Input: the groups
// 0x20c2 and 0x20d3 and the block, each preceded by its length (2, 2 and 1 byte), then a record of
// 29 bytes; the rest is the value.
#include "FuzzInput.h"
#include "FuzzTarget.h"

#include <mxfileext/mxfileext.h>
#include <mxformat/Groups.h>
#include <mxformat/ParameterRecord.h>

#include <array>
#include <cstdlib>
#include <exception>
#include <string>

namespace {

using Bytes = std::vector<unsigned char>;

void giveGroup(std::uint16_t id, const Bytes& payload)
{
    Bytes group{static_cast<unsigned char>(id >> 8), static_cast<unsigned char>(id)};
    const auto length = static_cast<std::uint16_t>(payload.size() + mxformat::groupOverhead);
    group.push_back(static_cast<unsigned char>(length >> 8));
    group.push_back(static_cast<unsigned char>(length));
    group.insert(group.end(), payload.begin(), payload.end());
    group.insert(group.end(), mxformat::groupChecksumSize, 0);
    mxfileext::parseGroup(0, id, group.data(), static_cast<unsigned short>(group.size()));
}

struct Texts
{
    std::string value;
    std::string min;
    std::string max;
};

Texts readTexts(const Bytes& record, const Bytes& block)
{
    mxfileext::ParameterValue_t value{};
    mxfileext::getParameterValue(record.data(), block.empty() ? nullptr : block.data(), &value);
    Texts texts;
    mxfileext::parameterValueToString(value, texts.value, texts.min, texts.max);
    return texts;
}

void readConverted(Bytes record, Bytes block)
{
    float value = 0;
    float min = 0;
    float max = 0;
    std::string unit;
    mxfileext::getConvertedParameter(0, block.empty() ? nullptr : block.data(), record.data(),
                                     &value, &min, &max, unit);
}

// Writes `text` into a copy of `block`. Returns whether the parameter accepted it.
bool write(Bytes record, Bytes& block, const std::string& text)
{
    const Bytes before = block;
    try {
        mxfileext::setParameter(0, block.data(), record.data(), text);
        return true;
    } catch (const std::exception&) {
        if (block != before) {
            std::abort(); // rejected, but the image has changed
        }
        return false;
    }
}

void writeValues(const Bytes& record, const Bytes& block, const std::string& text)
{
    Bytes image = block;
    if (write(record, image, text)) {
        readTexts(record, image);
        readConverted(record, image);
    }
    // Writing the value read from a parameter must not change the image.
    if (!mxformat::isConverted(
            mxformat::readRecord<mxformat::ParameterRecord>(record.data()).flags)) {
        image = block;
        const std::string own = readTexts(record, block).value;
        if (write(record, image, own) && image != block) {
            std::abort();
        }
    }
}

void readLeftAligned(const Bytes& record, const Bytes& block)
{
    const std::vector<char> raw(block.begin(), block.end());
    std::array<unsigned char, 8> out{};
    try {
        mxfileext::getLeftAlignedRawParameter(raw, out.data(), record[3], record[4], record[27],
                                              record[26]);
    } catch (const std::exception&) {
        // a valid result
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz::Words words({data, data + size});
    const Bytes conversions = words.takeBytes(words.takeU16() % 4096U);
    const Bytes texts = words.takeBytes(words.takeU16() % 4096U);
    const Bytes block = words.takeBytes(words.takeByte());
    Bytes record = words.takeBytes(mxformat::parameterRecordSize);
    record.resize(mxformat::parameterRecordSize);
    const Bytes rest = words.takeRest();

    mxfileext::clearParsedData(0);
    giveGroup(mxformat::group::texts, texts);
    giveGroup(mxformat::group::conversions, conversions);
    giveGroup(mxformat::group::conversions, texts); // the first group of an identifier counts
    Bytes given = block;
    mxfileext::initializeModule(given.empty() ? nullptr : reinterpret_cast<char*>(given.data()),
                                static_cast<unsigned short>(given.size()));
    readTexts(record, block);
    readConverted(record, block);
    readLeftAligned(record, block);
    writeValues(record, block, {rest.begin(), rest.end()});
    return 0;
}
