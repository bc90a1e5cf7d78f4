#include "channels/ChannelTable.h"

#include "PlainValues.h"
#include "ProcessParser.h"
#include "TranslatedModule.h"

#include <mxformat/Datatype.h>
#include <mxformat/ImageAllocator.h>
#include <text/Utf8.h>

#include <utility>

namespace mxmodule {

namespace {

using MappingInfo = devices::parser::IDeviceParser::ChannelMappingInfo;
using ChannelP = TranslatedModule::Parser::ChannelP;

constexpr std::size_t shortestSymbol = 2;

bool isSigned(const mxformat::ChannelRecord& record)
{
    const auto* const type = mxformat::findDatatype(mxformat::channelKind(record.kind));
    return type != nullptr && type->isSigned;
}

// Finds the record of each channel of a device. The device has its channels in the order of the
// records, without those omitted because of their name. As a number has one name, either all of its
// records are in the device or none is.
class RecordSearch
{
public:
    explicit RecordSearch(const std::vector<mxformat::ChannelRecord>& all) : records(all) {}

    // Returns the position of the record of the next channel, which has this number.
    std::size_t recordOf(std::uint8_t number)
    {
        while (records.at(next).number != number) {
            ++next;
        }
        return next++;
    }

private:
    const std::vector<mxformat::ChannelRecord>& records;
    std::size_t next = 0;
};

// The byte address already includes whole bytes of the bit offset.
void findBits(MappedChannel& channel)
{
    channel.isBitField = channel.kind == 'X' || channel.symbol.find('#') != std::string::npos;
    const unsigned bit = channel.isBitField ? channel.bitOffset % 8U : 0;
    channel.firstBit = std::uint64_t{channel.byteAddress} * 8 + bit;
    channel.bits =
        channel.isBitField ? channel.bitLength : 8U * mxformat::bytesOfSizeLetter(channel.kind);
}

void fill(MappedChannel& mapped, const ChannelP& channel, MappingInfo& info,
          const mxformat::ChannelRecord& record)
{
    mapped.id = channel.id;
    mapped.number = channel.privateProps.channelNumber;
    mapped.name = text::toUtf8(channel.name);
    mapped.isInput = info.area == 'I';
    mapped.symbol = std::move(info.iecSymbol);
    mapped.kind = static_cast<char>(info.sizeLetter);
    mapped.byteAddress = info.byteAddress;
    mapped.bitOffset = info.bitOffset;
    mapped.bitLength = channel.privateProps.bitLength;
    mapped.mask = info.mask;
    mapped.isSigned = isSigned(record);
    findBits(mapped);
}

std::vector<std::unique_ptr<MappingInfo>> mappingOf(const TranslatedModule& module,
                                                    Observer* observer)
{
    std::vector<std::unique_ptr<MappingInfo>> mapping;
    withParser(observer, [&](TranslatedModule::Parser& parser) {
        mapping = parser.getChannelMappingInfoList(&module.device());
    });
    return mapping;
}

// The map of `module` without its channels, of which up to `count` follow.
ChannelTable emptyTable(const TranslatedModule& module, std::size_t count)
{
    const TranslatedModule::Device& device = module.device();
    ChannelTable map{device.brandLabelName,
                     device.deviceTypeId,
                     {module.offsets().input, device.privateProps.inDataSize},
                     {module.offsets().output, device.privateProps.outDataSize},
                     {},
                     {},
                     module.channelRecords(),
                     {}};
    map.channels.reserve(count);
    map.recordOfChannel.reserve(count);
    return map;
}

} // namespace

ChannelTable makeChannelTable(const TranslatedModule& module, Observer* observer)
{
    const auto mapping = mappingOf(module, observer);
    ChannelTable map = emptyTable(module, mapping.size());
    RecordSearch search(map.records);
    auto info = mapping.begin();
    for (const auto& attribute : module.device().attributes) {
        if (attribute->typeCode() != datamodel::channelTypeCode) {
            continue;
        }
        const auto& channel = static_cast<const ChannelP&>(*attribute);
        const std::size_t record = search.recordOf(channel.privateProps.channelNumber);
        if (channel.iecSymbol.size() < shortestSymbol) {
            map.withoutSymbol.push_back(plainChannel(reportOf(channel)));
        } else {
            fill(map.channels.emplace_back(), channel, **info++, map.records[record]);
            map.recordOfChannel.push_back(record);
        }
    }
    return map;
}

} // namespace mxmodule
