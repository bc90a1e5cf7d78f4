#include "devices/parser/mx/ByteReaders.h"
#include "devices/parser/mx/Parser_kv38.h"

#include "DecimalText.h"
#include "LogLine.h"
#include "RecordLayout.h"
#include "TextIndex.h"

#include <cassert>

namespace devices::parser::mx {

namespace {

constexpr std::uint16_t channelNameGroup = 0x20D7;

constexpr std::uint8_t inputFlag = 0x80;
constexpr std::uint8_t kindMask = 0x1F;
constexpr std::uint8_t unknownKind = 31;

// The next free place of a process image.
struct ImagePosition
{
    std::uint32_t& byte;
    std::uint32_t& bit; // within the open byte; 0: no byte is open
};

std::uint32_t bitMask(std::uint8_t bitLength)
{
    return bitLength >= 32 ? 0xFFFFFFFFU : (1U << bitLength) - 1;
}

// Where a value of `size` bytes starts when bits of the byte `byte` are already taken. These are
// the modules' own rules: they do not always give a multiple of the size.
std::uint32_t behindOpenByte(std::uint32_t byte, std::uint32_t size)
{
    const std::uint32_t next = byte + 1;
    switch (size) {
    case 2:
        return (byte + 2) & ~1U;
    case 4:
        return next + (next & 3U);
    case 8:
        return next + (next & 7U);
    default:
        return next;
    }
}

// Takes one bit. Returns its byte.
std::uint32_t takeBit(ImagePosition position)
{
    const std::uint32_t address = position.byte;
    position.bit += 1;
    if (position.bit % 8 == 0) {
        position.bit = 0;
        position.byte += 1;
    }
    return address;
}

// Takes a bit field. Returns its first byte. However long the field, the image grows by one byte at
// most.
std::uint32_t takeBits(ImagePosition position, std::uint8_t bitLength)
{
    const std::uint32_t address = position.byte;
    position.bit += bitLength;
    if (position.bit >= 8) {
        position.bit &= 7U;
        position.byte += 1;
    }
    return address;
}

// Takes `size` whole bytes. Returns the first.
std::uint32_t takeBytes(ImagePosition position, std::uint32_t size)
{
    if (position.bit != 0) {
        position.byte = behindOpenByte(position.byte, size);
    }
    const std::uint32_t address = position.byte;
    position.bit = 0;
    position.byte += size;
    return address;
}

// The IEC size letter of a value of `size` bytes.
const char* sizeLetter(std::uint32_t size)
{
    switch (size) {
    case 1:
        return "B";
    case 2:
        return "W";
    case 4:
        return "D";
    default:
        return "L";
    }
}

// The size in bytes of a channel kind that stands for whole bytes, else 0.
std::uint32_t wholeBytes(std::uint8_t kind)
{
    switch (static_cast<MxParameterDatatype>(kind)) {
    case MxParameterDatatype::UInt8:
    case MxParameterDatatype::SInt8:
        return 1;
    case MxParameterDatatype::UInt16:
    case MxParameterDatatype::SInt16:
        return 2;
    case MxParameterDatatype::UInt32:
    case MxParameterDatatype::SInt32:
        return 4;
    case MxParameterDatatype::UInt64:
    case MxParameterDatatype::SInt64:
        return 8;
    default:
        return 0;
    }
}

bool isBitField(std::uint8_t kind)
{
    return static_cast<MxParameterDatatype>(kind) == MxParameterDatatype::Byte;
}

// Which bits of its byte a bit field takes: _2 for one bit, #2,7 for three.
void appendBits(std::string& symbol, const MxChannelPrivateProps& props)
{
    symbol += props.bitLength == 1 ? '_' : '#';
    appendDecimal(symbol, props.bitOffset);
    if (props.bitLength != 1) {
        symbol += ',';
        appendDecimal(symbol, bitMask(props.bitLength));
    }
}

// Allocates the channel's place and sets size letter, address and symbol. A kind that stands for no
// data gets none of them.
void allocate(Parser_kv38::ChannelP& channel, std::uint8_t kind, char area, ImagePosition position)
{
    auto& props = channel.privateProps;
    if (isBitField(kind) && props.bitLength == 1) {
        channel.dataType = "X";
        props.byteAddress = takeBit(position);
    } else if (isBitField(kind)) {
        channel.dataType = "B";
        props.byteAddress = takeBits(position, props.bitLength);
    } else if (const std::uint32_t size = wholeBytes(kind)) {
        channel.dataType = sizeLetter(size);
        props.byteAddress = takeBytes(position, size);
    } else {
        if (kind == unknownKind) {
            channel.dataType.clear();
        }
        channel.iecSymbol.clear();
        return;
    }
    channel.iecSymbol.assign(1, area);
    channel.iecSymbol += channel.dataType;
    appendDecimal(channel.iecSymbol, props.byteAddress);
    if (isBitField(kind)) {
        appendBits(channel.iecSymbol, props);
    }
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
    const std::uint8_t channelNumber = readU8(x20D0);
    const std::uint32_t recordLength = 2U * readU8(x20D0 + 6) + channelRecordHeaderSize;

    std::string name;
    std::uint32_t size = 0;
    if (const std::uint8_t* names = getGroup(channelNameGroup, &size)) {
        if (const auto entry = texts().channelNames.find(names, size, channelNumber)) {
            // The last entry may end behind the payload, but not behind the mx buffer.
            const std::uint8_t* textId = bytesAt(names, *entry + 1, 2, channelNameGroup);
            name = getTextStringById(readU16BE(textId));
        }
    }

    const auto channel = std::make_shared<ChannelP>();
    setupChannel(channel.get(), name, channelNumber, readU8(x20D0 + 1), readU8(x20D0 + 3),
                 readU8(x20D0 + 4));
    // A dropped channel has taken its place in the process image all the same.
    if (channel->name == "-") {
        return recordLength;
    }
    if (channel->name.empty()) {
        channel->name = "channel_" + std::to_string(channelNumber);
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
    channel.privateProps.channelNumber = channelNumber;
    channel.privateProps.bitOffset = bitOffset;
    channel.privateProps.bitLength = bitLength;
    channel.privateProps.flagBit6 = kind >> 6 & 1;

    const std::uint8_t channelKind = kind & kindMask;
    if ((kind & inputFlag) != 0) {
        allocate(channel, channelKind, 'I', {inBytePosition, inBitPosition});
        channel.direction = "in";
    } else {
        allocate(channel, channelKind, 'Q', {outBytePosition, outBitPosition});
        channel.direction = "out";
    }
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
