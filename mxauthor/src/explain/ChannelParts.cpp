#include "explain/GroupParts.h"

namespace mxauthor {

namespace {

std::string kindMeaning(std::uint8_t kind, const ChannelPlace& place)
{
    std::string text = mxformat::isInput(kind) ? "input" : "output";
    text += ", kind " + std::to_string(mxformat::channelKind(kind));
    text += (kind & mxformat::channelFlagMask) != 0 ? ", flag 6" : "";
    return text + (place.symbol.empty() ? ", no address" : ", " + place.symbol);
}

std::string nameOf(const ModuleView& module, std::uint8_t number)
{
    const ChannelName* const entry = module.channelName(number);
    return entry == nullptr ? "" : module.textOf(entry->textId.value);
}

} // namespace

void explainGroup(PartList& parts, const ModuleView& module, const Channels& group)
{
    const std::vector<ChannelPlace> places = channelPlaces(group.records);
    for (std::size_t i = 0; i < group.records.size(); ++i) {
        const ChannelRecord& record = group.records[i];
        const std::uint8_t number = record.number.value;
        parts.beginRecord(i, named("channel", number, nameOf(module, number)));
        parts.number(record.number, "number", "channel number");
        parts.number(record.kind, "kind", kindMeaning(record.kind.value, places[i]));
        parts.number(record.unread2, "unread_2", "");
        parts.unread();
        parts.number(record.bitLength, "bit_length", "bits");
        parts.number(record.bitOffset, "bit_offset", "bit of the symbol");
        parts.number(record.unread5, "unread_5", "");
        parts.unread();
        parts.number(record.wordCount, "word_count", "words follow");
        for (const Field<std::uint16_t>& word : record.words) {
            parts.number(word, "word", "");
            parts.unread();
        }
    }
    parts.endRecords();
    parts.bytes(group.rest, "rest", "incomplete record");
}

void explainGroup(PartList& parts, const ModuleView& module, const ChannelNames& group)
{
    for (std::size_t i = 0; i < group.entries.size(); ++i) {
        const ChannelName& entry = group.entries[i];
        const bool isFirst = module.channelName(entry.channel.value) == &entry;
        parts.beginRecord(i, named("channel", entry.channel.value, ""));
        parts.number(entry.channel, "channel", "channel number");
        parts.number(entry.textId, "text_id",
                     "name: " + textMeaning(module, entry.textId.value, false));
        if (!isFirst) {
            parts.unread();
        }
    }
    parts.endRecords();
    parts.bytes(group.rest, "rest", "incomplete entry");
}

} // namespace mxauthor
