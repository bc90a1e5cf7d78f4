#include "ModuleGenerator.h"

#include "MxBuffer.h"

#include <mxformat/Datatype.h>
#include <mxformat/Groups.h>
#include <mxformat/ParameterRecord.h>

#include <algorithm>
#include <random>
#include <stdexcept>
#include <string>
#include <utility>

namespace bench {

namespace {

using testkit::Bytes;
using testkit::u16;

constexpr std::uint32_t anyModuleId = 0x5A0B0001;
constexpr unsigned firstTextId = 100;
constexpr std::size_t shortestText = 4;
constexpr unsigned blockSize = 248;   // the largest block is 255 bytes; this one holds whole slots
constexpr std::size_t headerSize = 8; // group 0 with the content length

// Own random numbers: the distributions of <random> differ between libraries.
class Dice
{
public:
    unsigned below(unsigned limit) { return static_cast<unsigned>(engine() % limit); }

private:
    std::mt19937 engine{38};
};

Bytes channelRecords(const ModuleShape& shape)
{
    constexpr std::uint8_t kinds[] = {0x85, 0x05, 0x82, 0x02, 0x81, 0x86, 0x88, 0x04};
    std::vector<Bytes> records;
    for (unsigned number = 0; number < shape.channels; ++number) {
        testkit::ChannelRecord record;
        record.number = static_cast<std::uint8_t>(number);
        record.kind = kinds[number % std::size(kinds)];
        record.bitOffset = static_cast<std::uint8_t>(number % 8);
        records.push_back(record.bytes());
    }
    return testkit::join(records);
}

Bytes channelNames(const ModuleShape& shape)
{
    std::vector<Bytes> entries;
    for (unsigned number = 0; number < shape.channels; ++number) {
        entries.push_back({static_cast<std::uint8_t>(number)});
        entries.push_back(u16(firstTextId + number % shape.texts));
    }
    return testkit::join(entries);
}

std::uint8_t listIdentifier(const ModuleShape& shape, unsigned list)
{
    return static_cast<std::uint8_t>(shape.sameList ? 1 : 1 + list);
}

// Every eighth parameter has a conversion, every n-th an option list.
testkit::ParameterRecord parameterRecord(const ModuleShape& shape, unsigned index, Dice& dice)
{
    testkit::ParameterRecord record;
    record.number = static_cast<std::uint8_t>(index);
    record.nameId = static_cast<std::uint16_t>(firstTextId + dice.below(shape.texts));
    record.position = mxformat::statedPosition(static_cast<std::uint8_t>(index * 8 % blockSize));
    record.datatype = static_cast<std::uint8_t>(1 + index % mxformat::datatypes.size());
    record.channelNumber = static_cast<std::uint8_t>(
        shape.channels == 0 ? mxformat::moduleLevel : index % (shape.channels + 1));
    if (record.channelNumber == shape.channels) {
        record.channelNumber = mxformat::moduleLevel;
    }
    if (shape.parametersPerChoice != 0 && index % shape.parametersPerChoice == 0) {
        record.mapId = listIdentifier(shape, index % shape.optionLists);
    } else if (index % 8 == 7) {
        record.showMe |= mxformat::convertedFlag;
        record.conversionId = static_cast<std::uint8_t>(1 + index % 3);
    } else if (index % 3 == 0) {
        record.unitId = static_cast<std::uint16_t>(firstTextId + dice.below(shape.texts));
    }
    return record;
}

Bytes parameterRecords(const ModuleShape& shape, Dice& dice)
{
    std::vector<Bytes> records;
    for (unsigned index = 0; index < shape.parameters; ++index) {
        records.push_back(parameterRecord(shape, index, dice).bytes());
    }
    return testkit::join(records);
}

Bytes optionLists(const ModuleShape& shape, Dice& dice)
{
    std::vector<Bytes> lists;
    for (unsigned list = 0; list < shape.optionLists; ++list) {
        std::vector<std::pair<std::uint64_t, unsigned>> options;
        for (unsigned value = 0; value < shape.options; ++value) {
            options.emplace_back(value, firstTextId + dice.below(shape.texts));
        }
        lists.push_back(testkit::optionList(listIdentifier(shape, list), options));
    }
    return testkit::join(lists);
}

// Factor and offset of three conversions: 0.001, 0.1 and -2, none with an offset.
Bytes conversions()
{
    return testkit::join({testkit::hexBytes("01 3a83126f 00000000"), u16(firstTextId),
                          testkit::hexBytes("02 3dcccccd 00000000"), u16(firstTextId + 1),
                          testkit::hexBytes("03 c0000000 00000000"), u16(firstTextId + 2)});
}

// Distributes `spare` characters evenly over the shortest texts.
Bytes texts(const ModuleShape& shape, std::size_t spare)
{
    std::vector<std::pair<unsigned, std::string>> table;
    for (unsigned index = 0; index < shape.texts; ++index) {
        const std::size_t extra = spare / shape.texts + (index < spare % shape.texts ? 1 : 0);
        std::string text = "t" + std::to_string(index);
        text.resize(std::max(shortestText, text.size()), '.');
        text.append(extra, static_cast<char>('a' + index % 26));
        table.emplace_back(firstTextId + index, text);
    }
    return testkit::textTablePayload(table);
}

Bytes image(std::size_t size, Dice& dice)
{
    Bytes bytes(size);
    std::generate(bytes.begin(), bytes.end(),
                  [&dice] { return static_cast<std::uint8_t>(dice.below(256)); });
    return bytes;
}

Bytes parameterBlock()
{
    Bytes block(2 + blockSize, 0); // version 0, the shortest header
    for (unsigned index = 0; index < blockSize; ++index) {
        block[2 + index] = static_cast<std::uint8_t>(index % 8 == 0 ? index / 8 % 4 : 0);
    }
    return block;
}

testkit::MxBuffer groups(const ModuleShape& shape, std::uint32_t moduleId, std::size_t spare)
{
    Dice dice;
    // Four bytes for each channel are enough for those of either direction.
    const std::string data(std::max(shape.channels, 1U), 'D');
    const std::string block(blockSize / 4, 'D');
    testkit::MxBuffer module = testkit::minimalModule(
        {"InData=" + data, "OutData=" + data, "Parameter=" + block}, moduleId);
    module.group(mxformat::group::parameterBlock, parameterBlock())
        .group(mxformat::group::parameters, parameterRecords(shape, dice))
        .group(mxformat::group::optionLists, optionLists(shape, dice))
        .group(mxformat::group::conversions, conversions())
        .group(mxformat::group::channels, channelRecords(shape))
        .group(mxformat::group::channelNames, channelNames(shape))
        .group(mxformat::group::texts, texts(shape, spare));
    if (shape.imageBytes != 0) {
        module.group(mxformat::group::productImage, image(shape.imageBytes, dice));
    }
    return module;
}

} // namespace

std::vector<char> generateModule(const ModuleShape& shape)
{
    return generateModule(shape, anyModuleId);
}

std::vector<char> generateModule(const ModuleShape& shape, std::uint32_t moduleId)
{
    const std::size_t least = headerSize + groups(shape, moduleId, 0).bytes().size();
    if (least > shape.fileBytes) {
        throw std::invalid_argument("The module needs " + std::to_string(least) +
                                    " bytes, its shape says " + std::to_string(shape.fileBytes));
    }
    const Bytes content = groups(shape, moduleId, shape.fileBytes - least).bytes();
    return testkit::MxBuffer()
        .group(0, u16(static_cast<unsigned>(shape.fileBytes)))
        .raw(content)
        .chars();
}

} // namespace bench
