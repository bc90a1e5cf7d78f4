#include "StatedRow.h"

#include "RowModules.h"

#include <algorithm>
#include <iterator>
#include <tuple>

namespace randomstations {

const std::vector<std::string> rowParameters = {"Mains suppression", "AI 1/Upper limit",
                                                "AI 1/Filter depth", "AI 2/Upper limit",
                                                "AI 3/Hysteresis"};
const std::vector<std::string> rowChannels = {"AI 1", "AI 2", "AI 3"};

namespace {

const std::vector<std::string> words = {"60",
                                        "9 V",
                                        "-1 V",
                                        "yes",
                                        "a: b",
                                        "x # y",
                                        "gr\xC3\xB6\xC3\x9F"
                                        "er",
                                        "\"q\"",
                                        "it's",
                                        "*a",
                                        "&b",
                                        " blank ",
                                        "{}",
                                        "[a, b]",
                                        "null",
                                        "~",
                                        "0x10",
                                        "1e3",
                                        "a\tb",
                                        "a\nb",
                                        "Long level",
                                        "# c0",
                                        "- x",
                                        "? y",
                                        "!z",
                                        "%",
                                        "a\\nb",
                                        "\xE2\x80\xA8",
                                        "Pump"};

bool isSimple(const std::string& text)
{
    return text.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ/._") ==
               std::string::npos &&
           text != "null" && text.front() != '.' && text.front() != '/';
}

std::string inQuotes(const std::string& text)
{
    std::string quoted = "\"";
    for (const char c : text) {
        quoted += c == '\n' ? "\\n" : c == '\t' ? "\\t" : c == '"' || c == '\\' ? "\\" : "";
        quoted += c == '\n' || c == '\t' ? "" : std::string(1, c);
    }
    return quoted + "\"";
}

std::string parameterGroup(const std::string& name)
{
    return name.find('/') == std::string::npos ? "" : name.substr(0, name.find('/'));
}

} // namespace

bool RowContent::operator==(const RowContent& other) const
{
    const auto all = [](const RowContent& one) {
        return std::tie(one.reference, one.name, one.reserve, one.at, one.values, one.notes);
    };
    return all(*this) == all(other);
}

std::uint32_t RowWriter::below(std::uint32_t count)
{
    return randomstations::below(random, count);
}

std::string RowWriter::word()
{
    return words[below(static_cast<std::uint32_t>(words.size()))];
}

// "# c7", or nothing; no comments in JSON.
std::string RowWriter::comment(std::set<std::string>& owner)
{
    if (isJson || !oneOf(2)) {
        return "";
    }
    const std::string made = "# c" + std::to_string(++commentCount) + ".";
    owner.insert(made);
    return made;
}

std::string RowWriter::scalar(const std::string& value)
{
    if (!isJson && isSimple(value) && !oneOf(3)) {
        return value;
    }
    const bool isSingle = !isJson && oneOf(3) && value.find_first_of("'\n") == std::string::npos;
    return isSingle ? "'" + value + "'" : inQuotes(value);
}

RowContent RowWriter::content()
{
    RowContent entry;
    const bool isPlace = oneOf(4);
    entry.reference = isPlace ? "" : oneOf(3) ? "MX0304.bin" : oneOf(2) ? "gone.bin" : "MX0304.bin";
    entry.name = oneOf(2) ? word() : "";
    if (isPlace || oneOf(6)) {
        entry.reserve = {1 + below(9), below(9)};
    }
    if (oneOf(2)) {
        entry.at = {below(2) == 0 ? std::optional(below(100)) : std::nullopt, below(100)};
    }
    for (int i = isPlace || oneOf(2) ? 0 : 3; i > 0; --i) {
        entry.values[rowParameters[below(5)]] = word();
        entry.notes[rowChannels[below(3)]] = {word(), oneOf(2) ? word() : ""};
    }
    return entry;
}

std::string RowWriter::map(const std::vector<std::string>& parts) const
{
    std::string all;
    for (const std::string& part : parts) {
        all += (all.empty() ? "" : ", ") + part;
    }
    return "{" + all + "}";
}

std::string RowWriter::key(const std::string& name) const
{
    return (isJson || !isSimple(name) ? inQuotes(name) : name) + ": ";
}

// "KEY: {MEMBERS}", or the members in lines after the key; nothing without any.
void RowWriter::addMap(const std::string& name, const std::vector<std::string>& inner, bool isFlow,
                       Parts& parts)
{
    if (inner.empty()) {
        return;
    }
    if (isFlow || oneOf(2)) {
        parts.members.push_back(key(name) + map(inner));
        return;
    }
    std::string lines = name + ":";
    const std::string after = comment(*parts.owner);
    lines += after.empty() ? "" : " " + after;
    for (const std::string& line : inner) {
        const std::string above = comment(*parts.owner);
        const std::string beside = comment(*parts.owner);
        lines += above.empty() ? "" : "\n    " + above;
        lines += "\n  " + line + (beside.empty() ? "" : "   " + beside);
    }
    parts.members.push_back(lines);
}

void RowWriter::addPlace(const RowContent& entry, bool isFlow, Parts& parts)
{
    std::vector<std::string> reserve;
    if (entry.reserve.first + entry.reserve.second != 0) {
        reserve = {key("in") + std::to_string(entry.reserve.first),
                   key("out") + std::to_string(entry.reserve.second)};
    }
    if (!entry.name.empty()) {
        (entry.isPlace() ? reserve : parts.members).push_back(key("name") + scalar(entry.name));
    }
    addMap("reserve", reserve, isFlow, parts);
    std::vector<std::string> at;
    if (entry.at.first) {
        at.push_back(key("in") + std::to_string(*entry.at.first));
    }
    if (entry.at.second) {
        at.push_back(key("out") + std::to_string(*entry.at.second));
    }
    addMap("at", at, isFlow, parts);
}

void RowWriter::addValues(const RowContent& entry, bool isFlow, Parts& parts)
{
    std::vector<std::string> values;
    std::map<std::string, std::vector<std::string>> groups;
    for (const auto& [name, value] : entry.values) {
        const std::string group = parameterGroup(name);
        const bool isAlone = group.empty() || oneOf(3);
        const std::string own = isAlone ? name : name.substr(group.size() + 1);
        (isAlone ? values : groups[group]).push_back(key(own) + scalar(value));
    }
    for (const auto& [group, inner] : groups) {
        values.push_back(key(group) + map(inner));
    }
    addMap("parameters", values, isFlow, parts);
}

void RowWriter::addNotes(const RowContent& entry, bool isFlow, Parts& parts)
{
    std::vector<std::string> notes;
    for (const auto& [channel, note] : entry.notes) {
        std::vector<std::string> inner{key("alias") + scalar(note.first)};
        if (!note.second.empty()) {
            inner.push_back(key("comment") + scalar(note.second));
        }
        notes.push_back(key(channel) + map(inner));
    }
    addMap("channels", notes, isFlow, parts);
}

// "KEY: VALUE" of each member; those with lines have them after the key.
std::vector<std::string> RowWriter::members(const RowContent& entry, bool isFlow,
                                            std::set<std::string>& owner)
{
    Parts parts{{}, &owner};
    if (!entry.isPlace()) {
        parts.members.push_back(key("module") + scalar(entry.reference));
    }
    addPlace(entry, isFlow, parts);
    addValues(entry, isFlow, parts);
    addNotes(entry, isFlow, parts);
    std::shuffle(parts.members.begin(), parts.members.end(), random);
    return parts.members;
}

// An entry of a list of lines.
void RowWriter::addLines(const RowContent& entry, std::set<std::string>& owner)
{
    const bool isScalar = entry == RowContent{entry.reference, ""};
    const std::vector<std::string> all = members(entry, false, owner);
    const std::string beside = comment(owner);
    const std::string after = beside.empty() ? "" : "  " + beside;
    if (isScalar && !oneOf(3)) {
        text += indent + "- " + scalar(entry.reference) + after + "\n";
        return;
    }
    if (oneOf(4)) {
        text += indent + "- " + map(members(entry, true, owner)) + after + "\n";
        return;
    }
    const bool isOwnLine = oneOf(5);
    text += indent + "-" + (isOwnLine ? after + "\n" : " ");
    for (std::size_t i = 0; i < all.size(); ++i) {
        std::string lines = all[i];
        for (std::size_t at = lines.find('\n'); at != std::string::npos;
             at = lines.find('\n', at + 1)) {
            lines.insert(at + 1, indent + "  ");
        }
        const std::string own = lines.find('\n') == std::string::npos ? comment(owner) : "";
        text += (i == 0 && !isOwnLine ? "" : indent + "  ") + lines +
                (own.empty() ? "" : " " + own) + "\n";
    }
    if (!isOwnLine && !after.empty()) {
        text += indent + "    " + beside + "\n"; // further to the right than the dash
    }
}

void RowWriter::addBlockRow(StatedRow& row)
{
    indent = std::string(2 * below(3), ' ');
    const bool isSpaced = oneOf(3);
    text += "modules:\n";
    for (RowContent& entry : row.entries) {
        const std::string free = comment(row.comments);
        const std::string above = comment(entry.comments);
        text += free.empty() ? "" : indent + free + "\n\n";
        text += above.empty() ? "" : indent + above + "\n";
        addLines(entry, entry.comments);
        text += isSpaced ? "\n" : "";
    }
}

void RowWriter::addFlowRow(StatedRow& row)
{
    const bool isLines = oneOf(2);
    text += "[";
    for (std::size_t i = 0; i < row.entries.size(); ++i) {
        RowContent& entry = row.entries[i];
        const bool isScalar = entry == RowContent{entry.reference, ""};
        const std::string beside = i == 0 ? "" : comment(row.comments);
        text += (i == 0 ? "" : isLines ? "," : ", ") + (beside.empty() ? "" : " " + beside);
        text += isLines || !beside.empty() ? "\n    " : "";
        text += isScalar ? scalar(entry.reference) : map(members(entry, true, entry.comments));
    }
    text += isLines ? "\n  ]" : "]";
}

StatedRow RowWriter::row()
{
    StatedRow made;
    text.clear();
    commentCount = 0;
    isJson = oneOf(5);
    const std::uint32_t count = below(6);
    for (std::uint32_t i = 0; i < count; ++i) {
        made.entries.push_back(content());
    }
    if (isJson) {
        text = "{\"station\": \"A\",\n \"modules\": ";
        addFlowRow(made);
        text += "}\n";
    } else {
        text = oneOf(2) ? "station: A " + comment(made.comments) + "\n" : "";
        if (count == 0 || oneOf(3)) {
            text += "modules: ";
            addFlowRow(made);
            text += "\n";
        } else {
            addBlockRow(made);
        }
        text += oneOf(2) ? "layout: plain\n" : "";
    }
    for (const RowContent& entry : made.entries) {
        std::copy_if(entry.comments.begin(), entry.comments.end(),
                     std::inserter(made.comments, made.comments.end()),
                     [this](const std::string& one) { return text.find(one) != text.npos; });
    }
    if (oneOf(3)) {
        text.pop_back(); // no last line end
    }
    if (oneOf(4)) {
        for (std::size_t at = text.find('\n'); at != std::string::npos;
             at = text.find('\n', at + 2)) {
            text.insert(at, "\r");
        }
    }
    made.text = text;
    return made;
}

} // namespace randomstations
