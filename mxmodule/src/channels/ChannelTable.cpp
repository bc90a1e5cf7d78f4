#include "channels/ChannelTable.h"

#include <mxauthor/MxFile.h>
#include <mxformat/ImageAllocator.h>

namespace mxmodule {

namespace {

constexpr std::size_t shortestSymbol = 2;

// The records of the channels; none if the group is malformed.
std::vector<mxauthor::ChannelRecord> recordsOf(const std::vector<char>& mxData)
{
    // The parser has not read the bytes after a failure.
    for (const mxauthor::Group& group : mxauthor::readWholeGroups(mxData).file.groups) {
        if (const auto* channels = std::get_if<mxauthor::Channels>(&group.content)) {
            return channels->records;
        }
    }
    return {};
}

// Finds the record of each channel of a device. The device has its channels in the order of the
// records, without those omitted because of their name. As a number has one name, either all of its
// records are in the device or none is.
class RecordSearch
{
public:
    explicit RecordSearch(const std::vector<char>& mxData) : records(recordsOf(mxData)) {}

    // Returns whether the value of the next channel, which has this number, is signed.
    bool isSigned(std::uint8_t number)
    {
        while (next < records.size()) {
            const mxauthor::ChannelRecord& record = records[next++];
            if (record.number.value == number) {
                return record.isSigned();
            }
        }
        return false;
    }

private:
    std::vector<mxauthor::ChannelRecord> records;
    std::size_t next = 0;
};

ChannelTable::Channel join(const devices::parser::IDeviceParser::ChannelMappingInfo& info,
                           const DeviceReport::Channel& channel, bool isSigned)
{
    return {channel.id,
            channel.number,
            channel.name,
            info.iecSymbol,
            static_cast<char>(info.area),
            static_cast<char>(info.sizeLetter),
            info.byteAddress,
            info.bitOffset,
            channel.bitLength,
            info.mask,
            isSigned};
}

ChannelTable::Data dataOf(const DeviceReport& report, const char* offset, const char* size)
{
    return {std::stoul(report.property(offset)), std::stoul(report.property(size))};
}

} // namespace

bool ChannelTable::Channel::isBitField() const
{
    return sizeLetter == 'X' || symbol.find('#') != std::string::npos;
}

std::uint64_t ChannelTable::Channel::firstBit() const
{
    return std::uint64_t{byteAddress} * 8 + (isBitField() ? bitOffset % 8U : 0);
}

unsigned ChannelTable::Channel::bits() const
{
    return isBitField() ? bitLength : 8U * mxformat::bytesOfSizeLetter(sizeLetter);
}

ChannelTable makeChannelTable(devices::parser::IDeviceParser& parser,
                              devices::parser::mx::Parser_kv38::DeviceP& device,
                              const DeviceReport& report, const std::vector<char>& mxData)
{
    const auto mapping = parser.getChannelMappingInfoList(&device);
    ChannelTable map{report.label,
                     report.deviceTypeId,
                     dataOf(report, "inDataOffset", "inDataSize"),
                     dataOf(report, "outDataOffset", "outDataSize"),
                     {},
                     {}};
    RecordSearch records(mxData);
    auto info = mapping.begin();
    for (const DeviceReport::Channel& channel : report.channels) {
        const bool isSigned = records.isSigned(channel.number);
        if (channel.symbol.size() < shortestSymbol) {
            map.withoutSymbol.push_back(channel);
        } else {
            map.channels.push_back(join(**info, channel, isSigned));
            ++info;
        }
    }
    return map;
}

} // namespace mxmodule
