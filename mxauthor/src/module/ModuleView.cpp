#include "module/ModuleView.h"

#include <mxformat/DataSizes.h>
#include <mxformat/ImageAllocator.h>
#include <text/Beginning.h>

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
    if (const auto* table = content<TextTable>(mxformat::group::texts)) {
        for (const TextRecord& record : table->texts) {
            texts.emplace(record.id.value, &record);
        }
    }
    if (const auto* names = content<ChannelNames>(mxformat::group::channelNames)) {
        for (const ChannelName& entry : names->entries) {
            channelNames.emplace(entry.channel.value, &entry);
        }
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
    const auto found = texts.find(id);
    return found == texts.end() ? nullptr : found->second;
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
    if (const auto* lists = content<OptionLists>(mxformat::group::optionLists)) {
        for (const OptionList& list : lists->lists) {
            for (const Option& option : list.options) {
                if (list.id.value == id) {
                    found.push_back(&option);
                }
            }
        }
    }
    return found;
}

const Bytes& ModuleView::block() const
{
    static const Bytes none;
    const auto* const found = content<ParameterBlock>(mxformat::group::parameterBlock);
    return found == nullptr ? none : found->block.value;
}

std::uint32_t ModuleView::dataSize(const std::string& key) const
{
    std::uint32_t size = 0;
    const auto* const sizes = content<DataSizes>(mxformat::group::dataSizes);
    for (std::size_t i = 0; sizes != nullptr && i < sizes->lines.size(); ++i) {
        const std::string& line = sizes->lines[i].value;
        if (line.compare(0, key.size(), key) != 0) {
            continue;
        }
        for (const char code : line.substr(key.size())) {
            size += mxformat::sizeOfDataCode(code).value_or(0);
        }
    }
    return size;
}

std::optional<std::uint32_t> ModuleView::moduleId() const
{
    const auto* const identity = content<Identity>(mxformat::group::identity);
    for (std::size_t i = 0; identity != nullptr && i < identity->datasets.size(); ++i) {
        const Dataset& dataset = identity->datasets[i];
        if (dataset.id.value == mxformat::identityDataset) {
            std::uint32_t id = 0;
            for (std::size_t byte = 1; byte < dataset.data.value.size(); ++byte) {
                id = id << 8 | dataset.data.value[byte];
            }
            return dataset.data.value.size() == mxformat::identitySize ? std::optional(id)
                                                                       : std::nullopt;
        }
    }
    return std::nullopt;
}

void ModuleView::addChannels()
{
    const auto* const channels = content<Channels>(mxformat::group::channels);
    if (channels == nullptr) {
        return;
    }
    const std::vector<ChannelPlace> places = channelPlaces(channels->records);
    for (std::size_t i = 0; i < places.size(); ++i) {
        const ChannelRecord& record = channels->records[i];
        const ChannelName* const entry = channelName(record.number.value);
        allChannels.push_back(
            {&record, entry == nullptr ? "" : textOf(entry->textId.value), places[i]});
    }
}

void ModuleView::addParameters()
{
    const auto* const parameters = content<Parameters>(mxformat::group::parameters);
    if (parameters == nullptr) {
        return;
    }
    allParameters.reserve(parameters->records.size());
    for (const ParameterRecord& record : parameters->records) {
        allParameters.push_back(
            {&record, textOf(record.nameId.value), parameterValue(record, block())});
    }
}

std::string named(const char* what, unsigned number, const std::string& name)
{
    const std::string base = std::string(what) + " " + std::to_string(number);
    return name.empty() ? base : base + " \"" + text::shortened(name) + "\"";
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
