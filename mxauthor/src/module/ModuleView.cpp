#include "module/ModuleView.h"

#include <mxformat/BigEndian.h>
#include <mxformat/DataSizes.h>
#include <mxformat/ImageAllocator.h>
#include <mxformat/TextTable.h>
#include <text/Beginning.h>

#include <algorithm>
#include <array>

namespace mxauthor {

namespace {

ChannelPlace placeOf(const mxformat::ChannelPlace& taken, const ChannelRecord& record)
{
    const std::uint8_t bitLength = record.bitLength.value;
    const std::uint8_t bitOffset = record.bitOffset.value;
    ChannelPlace place;
    place.input = mxformat::isInput(record.kind.value);
    place.symbol = taken.symbol(place.input, bitLength, bitOffset);
    place.byteAddress = taken.byte;
    place.firstBit = std::uint64_t{taken.byte} * 8;
    if (taken.isBitField) {
        // The byte address includes whole bytes already: only the place within the byte matters.
        place.firstBit += bitOffset % 8U;
        place.bits = bitLength;
    } else {
        place.naturalSize = taken.size;
        place.bits = taken.size * 8U;
    }
    return place;
}

} // namespace

std::vector<ChannelPlace> channelPlaces(const std::vector<ChannelRecord>& records)
{
    std::array<mxformat::ImageAllocator, 2> images; // of outputs and inputs
    std::vector<ChannelPlace> places;
    places.reserve(records.size());
    for (const ChannelRecord& record : records) {
        const std::uint8_t kind = record.kind.value;
        const bool input = mxformat::isInput(kind);
        const auto taken =
            images.at(input ? 1 : 0).take(mxformat::channelKind(kind), record.bitLength.value);
        places.push_back(taken ? placeOf(*taken, record) : ChannelPlace{"", input});
    }
    return places;
}

ModuleView::ModuleView(const MxFile& file) : source(file)
{
    for (const Group& found : file.groups) {
        groups.emplace(found.id, &found);
    }
    for (const TextRecord& record : contentOrNone<TextTable>(mxformat::group::texts).texts) {
        allTexts.emplace(record.id.value, &record);
    }
    const auto& names = contentOrNone<ChannelNames>(mxformat::group::channelNames);
    for (const ChannelName& entry : names.entries) {
        channelNames.emplace(entry.channel.value, &entry);
    }
    if (const Group* const table = group(mxformat::group::conversions)) {
        const Bytes payload = writePayload(table->content);
        allConversions = {payload.data(), payload.size()};
    }
    addChannels();
    addParameters();
}

const Group* ModuleView::group(std::uint16_t id) const
{
    const auto found = groups.find(id);
    return found == groups.end() ? nullptr : found->second;
}

const TextRecord* ModuleView::text(std::uint16_t id) const
{
    const auto found = allTexts.find(id);
    return found == allTexts.end() ? nullptr : found->second;
}

std::string ModuleView::textOf(std::uint16_t id) const
{
    const TextRecord* const found = text(id);
    return found == nullptr ? "" : found->text.value;
}

const ChannelName* ModuleView::channelName(std::uint8_t number) const
{
    const auto found = channelNames.find(number);
    return found == channelNames.end() ? nullptr : found->second;
}

std::vector<const Option*> ModuleView::options(std::uint8_t id) const
{
    std::vector<const Option*> found;
    for (const OptionList& list : contentOrNone<OptionLists>(mxformat::group::optionLists).lists) {
        for (const Option& option : list.options) {
            if (list.id.value == id) {
                found.push_back(&option);
            }
        }
    }
    return found;
}

const Bytes& ModuleView::block() const
{
    return contentOrNone<ParameterBlock>(mxformat::group::parameterBlock).block.value;
}

std::uint32_t ModuleView::dataSize(const std::string& key) const
{
    std::uint32_t size = 0;
    for (const auto& line : contentOrNone<DataSizes>(mxformat::group::dataSizes).lines) {
        if (line.value.compare(0, key.size(), key) == 0) {
            for (const char code : line.value.substr(key.size())) {
                size += mxformat::sizeOfDataCode(code).value_or(0);
            }
        }
    }
    return size;
}

std::optional<std::uint32_t> ModuleView::moduleId() const
{
    for (const Dataset& dataset : contentOrNone<Identity>(mxformat::group::identity).datasets) {
        if (dataset.id.value == mxformat::identityDataset) {
            const Bytes& data = dataset.data.value;
            return data.size() == mxformat::identitySize
                       ? std::optional(mxformat::readBigEndian<std::uint32_t>(
                             data.data() + mxformat::moduleIdOffset))
                       : std::nullopt;
        }
    }
    return std::nullopt;
}

void ModuleView::addChannels()
{
    const auto& records = contentOrNone<Channels>(mxformat::group::channels).records;
    const std::vector<ChannelPlace> places = channelPlaces(records);
    for (std::size_t i = 0; i < places.size(); ++i) {
        const ChannelRecord& record = records[i];
        const ChannelName* const entry = channelName(record.number.value);
        allChannels.push_back(
            {&record, entry == nullptr ? "" : textOf(entry->textId.value), places[i]});
    }
}

void ModuleView::addParameters()
{
    const auto& records = contentOrNone<Parameters>(mxformat::group::parameters).records;
    allParameters.reserve(records.size());
    for (const ParameterRecord& record : records) {
        allParameters.push_back(
            {&record, textOf(record.nameId.value), parameterValue(record, block())});
    }
}

std::string dateText(const Extension& extension)
{
    const Bytes& date = extension.date.value;
    return {date.begin(), std::find_if(date.begin(), date.end(), mxformat::endsText)};
}

std::string quoted(const std::string& text)
{
    return "\"" + text::shortened(text) + "\"";
}

std::string named(const char* what, unsigned number, const std::string& name)
{
    const std::string base = std::string(what) + " " + std::to_string(number);
    return name.empty() ? base : base + " " + quoted(name);
}

std::string named(const ModuleView::Parameter& parameter)
{
    return named("parameter", parameter.record->number.value, parameter.name);
}

std::string named(const ModuleView::Channel& channel)
{
    return named("channel", channel.record->number.value, channel.name);
}

} // namespace mxauthor
