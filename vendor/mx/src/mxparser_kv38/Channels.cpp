#include "devices/parser/mx/ByteReaders.h"
#include "devices/parser/mx/Parser_kv38.h"

#include "DecimalText.h"
#include "LogLine.h"
#include "TextIndex.h"

#include <mxformat/ChannelRecord.h>
#include <mxformat/Groups.h>
#include <mxformat/ImageAllocator.h>

#include <cassert>

namespace devices::parser::mx {

namespace {

namespace group = mxformat::group;

// Takes the next free place of an image, whose counters are given.
std::optional<mxformat::ChannelPlace> takePlace(std::uint8_t kindNumber, std::uint8_t bitLength,
                                                std::uint32_t& nextByte, std::uint32_t& nextBit)
{
    mxformat::ImageAllocator image(nextByte, nextBit);
    const auto place = image.take(kindNumber, bitLength);
    nextByte = image.byte();
    nextBit = image.bit();
    return place;
}

// The symbol of the byte that holds the single-bit channel `symbol`: IX3_2 lies in IB3.
std::string byteSymbol(const std::string& symbol)
{
    std::string key = symbol.substr(0, symbol.find('_'));
    key[1] = 'B';
    return key;
}

} // namespace

std::uint32_t Parser_kv38::parseChannel(const std::uint8_t* x20D0)
{
    traceEntry(logger, "parseChannel");
    assert(this->dev);
    assert(x20D0);
    const auto record = mxformat::readRecord<mxformat::ChannelRecord>(x20D0);
    const std::uint32_t recordLength = mxformat::channelRecordSize(record.wordCount);

    std::string name;
    std::uint32_t size = 0;
    if (const std::uint8_t* names = getGroup(group::channelNames, &size)) {
        if (const auto entry = texts().channelNames.find(names, size, record.number)) {
            // The last entry may end after the payload, but not after the mx buffer.
            const std::uint8_t* textId = bytesAt(names, *entry + 1, 2, group::channelNames);
            name = getTextStringById(readU16BE(textId));
        }
    }

    const auto channel = std::make_shared<ChannelP>();
    setupChannel(channel.get(), name, record.number, record.kind, record.bitLength,
                 record.bitOffset);
    // A dropped channel keeps its place in the process image.
    if (channel->name == "-") {
        return recordLength;
    }
    if (channel->name.empty()) {
        channel->name = "channel_" + std::to_string(record.number);
    }
    const std::uint32_t id = assignIdAndAddAttribute(channel);
    if (channel->dataType == "X") {
        addToAggregatedChannelCandidate(byteSymbol(channel->iecSymbol), decimalText(id));
    }
    return recordLength;
}

void Parser_kv38::setupChannel(datamodel::Channel* chan, const std::string& name,
                               std::uint8_t channelNumber, std::uint8_t kind,
                               std::uint8_t bitLength, std::uint8_t bitOffset)
{
    traceEntry(logger, "setupChannel");
    assert(chan);
    auto& channel = static_cast<ChannelP&>(*chan);
    MxChannelPrivateProps& props = channel.privateProps;
    props.channelNumber = channelNumber;
    props.bitOffset = bitOffset;
    props.bitLength = bitLength;
    props.flagBit6 = (kind & mxformat::channelFlagMask) != 0 ? 1 : 0;

    const bool isInput = mxformat::isInput(kind);
    const std::uint8_t kindNumber = mxformat::channelKind(kind);
    const auto place = isInput ? takePlace(kindNumber, bitLength, inBytePosition, inBitPosition)
                               : takePlace(kindNumber, bitLength, outBytePosition, outBitPosition);
    if (place) {
        channel.dataType.assign(1, place->sizeLetter);
        channel.iecSymbol = place->symbol(isInput, bitLength, bitOffset);
        props.byteAddress = place->byte;
    } else {
        channel.iecSymbol.clear();
        if (kindNumber == mxformat::kindWithoutData) {
            channel.dataType.clear();
        }
    }
    channel.direction = isInput ? "in" : "out";
    channel.name = name;
    channel.numberText1 = "0.0";
    channel.numberText2 = "0.0";
    channel.extraText.clear();
}

void Parser_kv38::addToAggregatedChannelCandidate(const std::string& key, const std::string& id)
{
    traceEntry(logger, "addToAggregatedChannelCandidate");
    aggregatedChannelCandidates[key].push_back(id);
}

} // namespace devices::parser::mx
