#include "module/ChannelPlaces.h"

#include <devices/parser/mx/Parser_kv38.h>

namespace mxauthor {

namespace {

using devices::parser::mx::Parser_kv38;

constexpr std::uint8_t inputFlag = 0x80;

// Lets the device parser's own rules allocate, record by record.
class Allocation : public Parser_kv38
{
public:
    using Parser_kv38::setupChannel;
};

unsigned bytesOfLetter(const std::string& letter)
{
    if (letter == "W") {
        return 2;
    }
    if (letter == "D") {
        return 4;
    }
    return letter == "L" ? 8 : 1;
}

bool isBitField(const Parser_kv38::ChannelP& channel)
{
    return channel.dataType == "X" || channel.iecSymbol.find('#') != std::string::npos;
}

ChannelPlace placeOf(const Parser_kv38::ChannelP& channel, bool input)
{
    ChannelPlace place;
    place.symbol = channel.iecSymbol;
    place.input = input;
    if (place.symbol.empty()) {
        return place;
    }
    place.byteAddress = channel.privateProps.byteAddress;
    place.firstBit = std::uint64_t{place.byteAddress} * 8;
    if (isBitField(channel)) {
        // The byte address counts whole bytes already: only the place within the byte counts.
        place.firstBit += channel.privateProps.bitOffset % 8U;
        place.bits = channel.privateProps.bitLength;
        return place;
    }
    place.naturalSize = bytesOfLetter(channel.dataType);
    place.bits = place.naturalSize * 8;
    return place;
}

} // namespace

std::vector<ChannelPlace> channelPlaces(const std::vector<ChannelRecord>& records)
{
    Allocation allocation;
    std::vector<ChannelPlace> places;
    places.reserve(records.size());
    for (const ChannelRecord& record : records) {
        Parser_kv38::ChannelP channel;
        allocation.setupChannel(&channel, "", record.number.value, record.kind.value,
                                record.bitLength.value, record.bitOffset.value);
        places.push_back(placeOf(channel, (record.kind.value & inputFlag) != 0));
    }
    return places;
}

} // namespace mxauthor
