#include "Sections.h"
#include "text/RepeatedLines.h"
#include "text/TypeWords.h"
#include <text/Counted.h>

#include <mxformat/ImageAllocator.h>
#include <text/Hexadecimal.h>

#include <algorithm>
#include <array>

namespace mxauthor {

namespace {

constexpr std::uint8_t flagBits = 0xFF & ~(mxformat::inputFlag | mxformat::channelKindMask);
constexpr std::size_t mostWords = 0xFF;

bool isBitField(std::uint8_t kind)
{
    return mxformat::channelKind(kind) == mxformat::bitFieldDatatype;
}

// The default of a record.
struct Usual
{
    std::uint8_t number = 0;
    std::array<mxformat::ImageAllocator, 2> images; // outputs, inputs

    mxformat::ImageAllocator& image(std::uint8_t kind)
    {
        return images.at(mxformat::isInput(kind) ? 1 : 0);
    }
    std::uint8_t bit(std::uint8_t kind)
    {
        return static_cast<std::uint8_t>(isBitField(kind) ? image(kind).bit() : 0);
    }
    void pass(const ChannelRecord& record)
    {
        number = static_cast<std::uint8_t>(record.number.value + 1);
        const std::uint8_t kind = record.kind.value;
        static_cast<void>(image(kind).take(mxformat::channelKind(kind), record.bitLength.value));
    }
};

std::string kindWord(const ChannelRecord& record)
{
    const std::uint8_t kind = record.kind.value;
    return isBitField(kind) && record.bitLength.value == 1 ? bitWord
                                                           : typeWord(mxformat::channelKind(kind));
}

std::string wordList(const std::vector<Field<std::uint16_t>>& words)
{
    std::vector<std::string> texts;
    std::transform(words.begin(), words.end(), std::back_inserter(texts),
                   [](const auto& word) { return hexText(word.value, 4); });
    return flowList(texts);
}

// Numbers that occur twice in the group must be marked as repeated.
void addOddities(FlowMapping& line, const ChannelRecord& record, bool again)
{
    if ((record.kind.value & flagBits) != 0) {
        line.add("flags", hexText(record.kind.value & flagBits, 2));
    }
    if (record.unread2.value != 0 || record.unread5.value != 0) {
        const Bytes unread = {record.unread2.value, record.unread5.value};
        line.add("unread", yamlQuoted(text::toHex(unread)));
    }
    if (again) {
        line.add("again", "true");
    }
}

std::string channelLine(const ChannelRecord& record, const std::string& name, Usual& usual,
                        bool again)
{
    FlowMapping line;
    if (!name.empty()) {
        line.add("name", name);
    }
    if (record.number.value != usual.number) {
        line.add("number", std::to_string(record.number.value));
    }
    const std::uint8_t kind = record.kind.value;
    line.add(mxformat::isInput(kind) ? "in" : "out", kindWord(record));
    if (record.bitLength.value != bitsOfKindWord(kindWord(record))) {
        line.add("bits", std::to_string(record.bitLength.value));
    }
    if (record.bitOffset.value != usual.bit(kind)) {
        line.add("bit", std::to_string(record.bitOffset.value));
    }
    if (!record.words.empty()) {
        line.add("words", wordList(record.words));
    }
    addOddities(line, record, again);
    return line.text();
}

// The kind byte without its flags, and the usual number of bits of that kind.
std::pair<std::uint8_t, std::uint8_t> readChannelKind(const Section& section)
{
    const auto in = section.find("in");
    const auto out = section.find("out");
    if (!section.node().IsMap()) {
        return {0, 0};
    }
    const bool isMisspelt =
        section.isMisspelt("in") || section.isMisspelt("out") || section.isMisspelt("each");
    if (!in && !out && isMisspelt) {
        return {0, 0};
    }
    if (!in == !out) {
        section.errors().add(section.node(), "either in or out expected, with the kind of the "
                                             "channel: in: Bit");
        return {0, 0};
    }
    const YAML::Node& node = in ? *in : *out;
    const auto word = readScalar(node, section.errors());
    const std::uint8_t kind =
        readTypeWord(node, kindWords(), mxformat::channelKindMask, section.errors());
    const std::uint8_t direction = in ? mxformat::inputFlag : std::uint8_t{0};
    return {static_cast<std::uint8_t>(direction | kind), bitsOfKindWord(word.value_or(""))};
}

std::uint8_t readFlags(const Section& section)
{
    const std::uint8_t flags = section.byte("flags", 0);
    if ((flags & flagBits) != flags) {
        section.errors().add(*section.find("flags"),
                             "only the bits " + hexText(flagBits, 2) + " are flags");
    }
    return flags & flagBits;
}

void readWords(const Section& section, ChannelRecord& record)
{
    const auto node = section.find("words");
    if (!node) {
        return;
    }
    if (node->IsSequence() && node->size() > mostWords) {
        section.errors().add(*node,
                             std::to_string(node->size()) + " words, a channel has 255 at most");
        return;
    }
    for (const YAML::Node& item : readSequence(*node, section.errors())) {
        const auto word = readNumber(item, 0xFFFF, section.errors()).value_or(0);
        record.words.emplace_back(static_cast<std::uint16_t>(word));
    }
}

void readUnread(const Section& section, ChannelRecord& record)
{
    const Bytes unread = section.hex("unread", Bytes(2));
    if (unread.size() != 2) {
        section.errors().add(*section.find("unread"), text::counted(unread.size(), "byte") +
                                                          ", there are 2: those at offsets "
                                                          "2 and 5 of the record");
        return;
    }
    record.unread2 = unread[0];
    record.unread5 = unread[1];
}

// `line` is the line of the first such channel; none if the same line makes both.
std::string repeatedNumber(std::uint8_t number, std::optional<int> line, bool isStated)
{
    const std::string channel = "channel " + std::to_string(number);
    if (!isStated && number == 0) {
        return "no number is left for this channel, the last is 255";
    }
    return line ? channel + " is in line " + std::to_string(*line) + " already"
                : channel + " is made twice by this repeated line: leave out \"number\", or let "
                            "it advance, such as <n>";
}

ChannelRecord readChannel(const Section& section, Usual& usual)
{
    const auto [kind, bits] = readChannelKind(section);
    ChannelRecord record;
    record.number = section.byte("number", usual.number);
    record.kind = static_cast<std::uint8_t>(kind | readFlags(section));
    record.bitLength = section.byte("bits", bits);
    record.bitOffset = section.byte("bit", usual.bit(kind));
    readUnread(section, record);
    readWords(section, record);
    return record;
}

} // namespace

std::string dumpChannels(const DumpContext& context)
{
    const auto* group = context.group<Channels>(mxformat::group::channels);
    if (group == nullptr) {
        return "";
    }
    if (group->records.empty()) {
        return "channels: []\n";
    }
    const auto names = namesAtChannels(context);
    std::string text = "channels:\n";
    Usual usual;
    std::set<std::uint8_t> seen;
    for (std::size_t i = 0; i < group->records.size(); ++i) {
        const ChannelRecord& record = group->records[i];
        const bool named = names && names->at(i);
        const bool again = !seen.insert(record.number.value).second;
        text += "  - " +
                channelLine(record, named ? context.text(*names->at(i)) : "", usual, again) + "\n";
        usual.pass(record);
    }
    return text;
}

void buildChannels(const YAML::Node& node, BuildContext& context)
{
    Channels group;
    Usual usual;
    std::map<std::uint8_t, int> lines;
    const RepeatableList form{
        "channels", {"name"}, largestPayload / mxformat::channelRecordHeaderSize};
    for (const YAML::Node& item : writtenOutLines(node, form, context.errors)) {
        const Section section(item, "channel", context.errors);
        const ChannelRecord& record = group.records.emplace_back(readChannel(section, usual));
        usual.pass(record);
        context.records[mxformat::group::channels].push_back(section.origin());
        const std::uint8_t number = record.number.value;
        const int line = context.errors.markOf(item).line + 1;
        const auto [first, isFirst] = lines.emplace(number, line);
        const bool again = section.flag("again");
        if (!isFirst && !again) {
            context.errors.add(
                section.find("number").value_or(item),
                repeatedNumber(number,
                               first->second == line ? std::nullopt : std::optional(first->second),
                               section.has("number")));
        }
        if (const auto name = section.find("name")) {
            ChannelName& entry = context.channelNames.emplace_back();
            entry.channel = number;
            entry.textId = readTextId(*name, context);
            context.records[mxformat::group::channelNames].push_back(section.origin());
        }
    }
    context.setGroup(mxformat::group::channels, std::move(group), node);
}

} // namespace mxauthor
