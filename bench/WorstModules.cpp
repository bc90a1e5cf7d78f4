#include "WorstModules.h"

#include "MxBuffer.h"

#include <mxformat/ChannelRecord.h>
#include <mxformat/Groups.h>
#include <mxformat/OptionRecord.h>
#include <mxformat/ParameterRecord.h>

#include <algorithm>
#include <string>
#include <utility>

namespace bench {

namespace {

using testkit::Bytes;

constexpr std::uint8_t anyNumber = 7; // of every channel, and of parameters of channels
constexpr std::uint8_t anyList = 1;
constexpr std::uint16_t unknownGroup = 0x7ABC;
constexpr unsigned firstIdOfTexts = 100;
constexpr std::size_t parameterSize = mxformat::parameterRecordSize;
constexpr std::size_t channelSize = mxformat::channelRecordHeaderSize;
constexpr std::size_t channelNameSize = 3;
constexpr std::size_t largestList = 255;
constexpr std::size_t otherBytes = 750; // groups in every module, and all headers

// The groups that differ between the shapes.
struct Content
{
    Bytes parameters;
    Bytes channels;
    Bytes names;
    Bytes options;
    std::vector<std::pair<unsigned, std::string>> texts{{firstIdOfTexts, "on"}};
    std::size_t emptyGroups = 0;
};

void append(Bytes& bytes, const Bytes& more)
{
    bytes.insert(bytes.end(), more.begin(), more.end());
}

Bytes parameters(std::size_t count, testkit::ParameterRecord record, bool distinct = false)
{
    Bytes bytes;
    for (std::size_t i = 0; i < count; ++i) {
        record.number = static_cast<std::uint8_t>(i);
        if (distinct) {
            record.nameId = static_cast<std::uint16_t>(firstIdOfTexts + count - 1 - i);
        }
        append(bytes, record.bytes());
    }
    return bytes;
}

Bytes channels(std::size_t count)
{
    Bytes bytes;
    for (std::size_t i = 0; i < count; ++i) {
        append(bytes, testkit::ChannelRecord{anyNumber, 0x81, 8, 0, 0}.bytes());
    }
    return bytes;
}

Content oneLongOptionList(std::size_t size)
{
    Content content;
    testkit::ParameterRecord record;
    record.mapId = anyList;
    content.parameters = parameters(size / 2 / parameterSize, record);
    for (std::size_t left = size / 2 / mxformat::optionSize; left != 0;) {
        const std::size_t count = std::min(left, largestList);
        append(content.options,
               testkit::optionList(anyList,
                                   {count, std::pair<std::uint64_t, unsigned>(0, firstIdOfTexts)}));
        left -= count;
    }
    return content;
}

Content distinctTexts(std::size_t size)
{
    constexpr std::size_t textSize = 5; // identifier, one character, line end
    const std::size_t count = size / (parameterSize + textSize);
    Content content;
    content.parameters = parameters(count, {}, true);
    content.texts.clear();
    for (std::size_t i = 0; i < count; ++i) {
        content.texts.emplace_back(firstIdOfTexts + i, "t");
    }
    return content;
}

Content channelsOfParameters(std::size_t size)
{
    Content content;
    testkit::ParameterRecord record;
    record.channelNumber = anyNumber;
    content.parameters = parameters(size / 2 / parameterSize, record);
    content.channels = channels(size / 2 / channelSize);
    return content;
}

Content channelNames(std::size_t size)
{
    Content content;
    content.channels = channels(size / 2 / channelSize);
    const std::size_t count = size / 2 / channelNameSize;
    for (std::size_t i = 0; i < count; ++i) {
        const auto number = static_cast<std::uint8_t>(i + 1 == count ? anyNumber : 0);
        append(content.names, {number, 0, firstIdOfTexts});
    }
    return content;
}

Content longTexts(std::size_t size)
{
    Content content;
    testkit::ParameterRecord record;
    record.unitId = firstIdOfTexts;
    content.parameters = parameters(size / 2 / parameterSize, record);
    content.texts = {{firstIdOfTexts, std::string(size / 2, 'x')}};
    return content;
}

Content longOptionTexts(std::size_t size)
{
    Content content = oneLongOptionList(2 * size / 3);
    content.texts = {{firstIdOfTexts, std::string(size / 3, 'x')}};
    return content;
}

Content optionLists(std::size_t size)
{
    constexpr std::size_t smallestList = 2;
    Content content;
    testkit::ParameterRecord record;
    record.mapId = anyList;
    content.parameters = parameters(1, record);
    content.options = testkit::optionList(anyList, {{0, firstIdOfTexts}});
    for (std::size_t i = 0; i < size / smallestList; ++i) {
        append(content.options, testkit::optionList(anyList, {}));
    }
    return content;
}

Content groups(std::size_t size)
{
    constexpr std::size_t smallestGroup = 6;
    Content content;
    content.emptyGroups = size / smallestGroup;
    return content;
}

Content contentOf(WorstShape shape, std::size_t size)
{
    switch (shape) {
    case WorstShape::OneLongOptionList:
        return oneLongOptionList(size);
    case WorstShape::DistinctTexts:
        return distinctTexts(size);
    case WorstShape::ChannelsOfParameters:
        return channelsOfParameters(size);
    case WorstShape::ChannelNames:
        return channelNames(size);
    case WorstShape::LongTexts:
        return longTexts(size);
    case WorstShape::LongOptionTexts:
        return longOptionTexts(size);
    case WorstShape::OptionLists:
        return optionLists(size);
    case WorstShape::Groups:
        break;
    }
    return groups(size);
}

} // namespace

std::vector<char> worstModule(WorstShape shape, std::size_t size)
{
    const Content content = contentOf(shape, size - otherBytes);
    testkit::MxBuffer module = testkit::minimalModule({"Parameter=D"});
    module.group(mxformat::group::parameterBlock, Bytes{0, 0, 0, 0, 0, 0})
        .group(mxformat::group::parameters, content.parameters)
        .group(mxformat::group::optionLists, content.options)
        .group(mxformat::group::channels, content.channels)
        .group(mxformat::group::channelNames, content.names)
        .group(mxformat::group::texts, testkit::textTablePayload(content.texts));
    for (std::size_t i = 0; i < content.emptyGroups; ++i) {
        module.group(unknownGroup, {});
    }
    return module.chars();
}

} // namespace bench
