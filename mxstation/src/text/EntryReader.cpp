#include "text/EntryReader.h"

#include <fmt/format.h>

namespace mxstation {

namespace {

constexpr std::size_t mostValues = 10000; // no module has so many parameters
constexpr std::size_t mostNotes = 10000;

const std::vector<std::string> entryKeys = {"module",   "name", "parameters",
                                            "channels", "at",   "reserve"};

// Returns whether `node` is a map; an error otherwise.
bool requireMap(const YamlNode& node, const char* what, StationErrors& errors)
{
    if (node.kind == YamlNode::Kind::Map) {
        return true;
    }
    errors.add(node.place, fmt::format("found {}, expected {}", node.shown(), what));
    return false;
}

void addValue(const std::string& name, const YamlNode& key, const YamlNode& value, Entry& entry,
              StationErrors& errors)
{
    const auto text = readText(value, "the value of a parameter", errors);
    if (!text) {
        return;
    }
    if (entry.parameters.size() == mostValues) {
        errors.add(key.place, fmt::format("more than {} values, no module has so many parameters",
                                          mostValues));
    }
    if (entry.parameters.size() <= mostValues) {
        entry.parameters.push_back({name, *text, key.place});
    }
}

// `owner` is the prefix of the names for a channel, or empty.
void readValues(const YamlNode& map, const std::string& owner, Entry& entry, StationErrors& errors)
{
    for (const auto& [key, value] : map.members) {
        if (entry.parameters.size() > mostValues) {
            return;
        }
        const auto name = readText(*key, "the name of a parameter", errors);
        if (!name) {
            continue;
        }
        if (value->kind == YamlNode::Kind::Map && owner.empty()) {
            readValues(*value, *name + "/", entry, errors);
        } else {
            addValue(owner + *name, *key, *value, entry, errors);
        }
    }
}

ChannelNote readNote(const YamlNode& key, const YamlNode& value, StationErrors& errors)
{
    ChannelNote note;
    note.channel = readText(key, "the name or number of a channel", errors).value_or("");
    note.place = key.place;
    if (!requireMap(value, "a map with \"alias\", \"comment\" or both", errors)) {
        return note;
    }
    const YamlSection section(value, "key of a channel", {"alias", "comment"}, errors);
    if (const YamlNode* const alias = section.find("alias")) {
        note.alias = readText(*alias, "an alias", errors).value_or("");
        note.aliasPlace = alias->place;
    }
    if (const YamlNode* const comment = section.find("comment")) {
        note.comment = readText(*comment, "a comment", errors).value_or("");
    }
    return note;
}

std::optional<StatedByte> readByte(const YamlNode* node, StationErrors& errors)
{
    if (node == nullptr) {
        return std::nullopt;
    }
    const auto number = readNumber(*node, 0, mostBytesStated, errors);
    return number ? std::optional(StatedByte{*number, node->place}) : std::nullopt;
}

StatedBytes bytesOf(const YamlSection& section, const YamlNode& node, StationErrors& errors)
{
    return {readByte(section.find("in"), errors), readByte(section.find("out"), errors),
            node.place};
}

StatedBytes readAddresses(const YamlNode& node, StationErrors& errors)
{
    if (!requireMap(node, "a map with the byte of \"in\", \"out\" or both", errors)) {
        return {{}, {}, node.place};
    }
    return bytesOf(YamlSection(node, "image", {"in", "out"}, errors), node, errors);
}

// Whether no byte is stated, and none that cannot be read.
bool isWithoutBytes(const YamlSection& section, const StatedBytes& size)
{
    const auto isNone = [&section](const char* key, const std::optional<StatedByte>& bytes) {
        return section.find(key) == nullptr || (bytes && bytes->value == 0);
    };
    return isNone("in", size.input) && isNone("out", size.output);
}

Reserve readReserve(const YamlNode& node, StationErrors& errors)
{
    Reserve reserve;
    reserve.size.place = node.place;
    if (!requireMap(node, "a map with the bytes of \"in\", \"out\" or both", errors)) {
        return reserve;
    }
    const YamlSection section(node, "key of a reserved place", {"in", "out", "name"}, errors);
    reserve.size = bytesOf(section, node, errors);
    if (isWithoutBytes(section, reserve.size)) {
        errors.add(node.place, "the reserved place has no bytes, \"in\", \"out\" or both are "
                               "expected");
    }
    if (const YamlNode* const name = section.find("name")) {
        reserve.name = readText(*name, "a name", errors).value_or("");
    }
    return reserve;
}

void readModule(const YamlNode& node, ModuleSource& modules, Entry& entry, StationErrors& errors)
{
    const auto reference = readText(node, "an mx file or the identifier of a module", errors);
    if (reference) {
        entry.reference = *reference;
        entry.module = modules.find(*reference, node.place, errors);
    }
}

void readNotes(const YamlNode& node, Entry& entry, StationErrors& errors)
{
    if (!requireMap(node, "a map of channels", errors)) {
        return;
    }
    if (node.members.size() > mostNotes) {
        errors.add(node.place, fmt::format("found {} channels, no module has more than {}",
                                           node.members.size(), mostNotes));
        return;
    }
    for (const auto& [key, value] : node.members) {
        entry.channels.push_back(readNote(*key, *value, errors));
    }
}

// What only a module can have.
void readContent(const YamlSection& section, Entry& entry, StationErrors& errors)
{
    if (const YamlNode* const name = section.find("name")) {
        entry.name = readText(*name, "a name", errors).value_or("");
        entry.namePlace = name->place;
    }
    if (const YamlNode* const parameters = section.find("parameters")) {
        if (requireMap(*parameters, "a map of parameter names to values", errors)) {
            readValues(*parameters, "", entry, errors);
        }
    }
    if (const YamlNode* const channels = section.find("channels")) {
        readNotes(*channels, entry, errors);
    }
}

// A reserved place has no content: its values would be lost.
void rejectContent(const YamlSection& section, StationErrors& errors)
{
    for (const char* const key : {"name", "parameters", "channels"}) {
        if (const YamlNode* const node = section.find(key)) {
            errors.add(node->place,
                       fmt::format("\"{}\" is stated for a reserved place without \"module\"", key),
                       "the name of a reserved place is \"reserve: {in: BYTES, name: NAME}\"");
        }
    }
}

} // namespace

Entry readEntry(const YamlNode& node, ModuleSource& modules, StationErrors& errors)
{
    Entry entry;
    entry.place = node.place;
    if (node.kind == YamlNode::Kind::Scalar) {
        readModule(node, modules, entry, errors);
        return entry;
    }
    if (!requireMap(node, "an mx file, the identifier of a module, or a map", errors)) {
        return entry;
    }
    const YamlSection section(node, "key of a module", entryKeys, errors);
    const YamlNode* const module = section.find("module");
    const YamlNode* const reserve = section.find("reserve");
    if (module != nullptr) {
        readModule(*module, modules, entry, errors);
        readContent(section, entry, errors);
    } else if (reserve != nullptr) {
        rejectContent(section, errors);
    } else if (!section.hasIncompleteKeys()) {
        errors.add(node.place, "this entry has neither \"module\" nor \"reserve\"");
    }
    if (reserve != nullptr) {
        entry.reserve = readReserve(*reserve, errors);
    }
    if (const YamlNode* const at = section.find("at")) {
        entry.at = readAddresses(*at, errors);
    }
    return entry;
}

} // namespace mxstation
