#include "ChannelGroups.h"

#include "mxauthor/Skeleton.h"
#include "text/TypeWords.h"

#include <Poco/String.h>

#include <text/NearestWords.h>

#include <algorithm>
#include <charconv>
#include <sstream>

namespace mxauthor {

namespace {

constexpr unsigned mostChannels = 255; // 255 as a parameter's channel means the module

struct ShortKind
{
    const char* word;
    bool isInput;
    const char* kind;
};

constexpr ShortKind shortKinds[] = {
    {"DI", true, "Bit"}, {"DO", false, "Bit"}, {"AI", true, "SInt16"}, {"AO", false, "SInt16"}};

[[noreturn]] void reject(const std::string& text)
{
    throw SkeletonError("channels", text);
}

std::vector<std::string> wordsOf(const std::string& text)
{
    std::istringstream stream(text);
    std::vector<std::string> words;
    for (std::string word; stream >> word;) {
        words.push_back(word);
    }
    return words;
}

// Removes and returns the number at the start of "3 AI" or "3AI". Empty without digits.
std::string takeDigits(std::string& text)
{
    const std::size_t begin = std::min(text.find_first_not_of(" \t"), text.size());
    const std::size_t end = std::min(text.find_first_not_of("0123456789", begin), text.size());
    std::string digits = text.substr(begin, end - begin);
    text.erase(0, end);
    return digits;
}

unsigned countOf(const std::string& digits)
{
    unsigned count = 0;
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), count);
    if (read.ec != std::errc() || count > mostChannels) {
        reject(digits + " channels are too many, a module has " + std::to_string(mostChannels) +
               " at most");
    }
    if (count == 0) {
        reject("0 channels are not accepted: leave them out");
    }
    return count;
}

void readStatedKind(const std::vector<std::string>& words, ChannelGroup& group)
{
    group.isInput = Poco::toUpper(words[0]) == "IN";
    group.prefix = group.isInput ? "Input" : "Output";
    if (words.size() != 2) {
        reject("\"" + words[0] + "\" needs a kind" + text::acceptedWords("", kindWords()));
    }
    const std::vector<std::string>& kinds = kindWords();
    const auto found = std::find_if(kinds.begin(), kinds.end(), [&words](const auto& kind) {
        return Poco::toUpper(kind) == Poco::toUpper(words[1]);
    });
    if (found == kinds.end()) {
        reject("unknown kind \"" + words[1] + "\"" + text::acceptedWords(words[1], kinds));
    }
    group.kind = *found;
}

void readShortKind(const std::vector<std::string>& words, ChannelGroup& group)
{
    std::vector<std::string> accepted;
    for (const ShortKind& kind : shortKinds) {
        accepted.emplace_back(kind.word);
        if (words.size() == 1 && Poco::toUpper(words[0]) == kind.word) {
            group.prefix = kind.word;
            group.isInput = kind.isInput;
            group.kind = kind.kind;
            return;
        }
    }
    if (words.size() > 1) {
        reject("\"" + words[0] + " " + words[1] +
               "\" is more than one kind, a comma separates them: \"3 AI, 2 DO\"");
    }
    accepted.insert(accepted.end(), {"in TYPE", "out TYPE"});
    reject("unknown kind of channels \"" + words[0] + "\"" +
           text::acceptedWords(words[0], accepted));
}

ChannelGroup readGroup(const std::string& part)
{
    std::string rest = part;
    const std::string digits = takeDigits(rest);
    const std::vector<std::string> words = wordsOf(rest);
    if (digits.empty() && words.empty()) {
        reject("a comma with nothing before or after it");
    }
    if (digits.empty() || words.empty()) {
        reject("\"" + part + "\": a number and a kind expected, such as \"3 AI, 2 DO\"");
    }
    ChannelGroup group;
    group.count = countOf(digits);
    if (Poco::toUpper(words[0]) == "IN" || Poco::toUpper(words[0]) == "OUT") {
        readStatedKind(words, group);
    } else {
        readShortKind(words, group);
    }
    return group;
}

// Channels with an existing prefix continue its numbering.
void numberNames(std::vector<ChannelGroup>& groups)
{
    for (std::size_t i = 0; i < groups.size(); ++i) {
        for (std::size_t before = 0; before < i; ++before) {
            groups[i].first += groups[before].prefix == groups[i].prefix ? groups[before].count : 0;
        }
    }
}

} // namespace

unsigned ChannelGroup::bits() const
{
    return bitsOfKindWord(kind);
}

std::vector<ChannelGroup> readChannelGroups(const std::string& text)
{
    std::vector<ChannelGroup> groups;
    if (wordsOf(text).empty()) {
        return groups;
    }
    std::size_t all = 0;
    std::istringstream parts(text + ",");
    for (std::string part; std::getline(parts, part, ',');) {
        groups.push_back(readGroup(part));
        all += groups.back().count;
    }
    if (all > mostChannels) {
        reject(std::to_string(all) + " channels are too many, a module has " +
               std::to_string(mostChannels) + " at most");
    }
    numberNames(groups);
    return groups;
}

std::string repeatKey(const ChannelGroup& group)
{
    return group.count == 1 ? "" : "repeat: " + std::to_string(group.count) + ", ";
}

std::string numberFrom(const ChannelGroup& group, unsigned first)
{
    if (group.count == 1) {
        return std::to_string(first);
    }
    if (first == 0) {
        return "<n-1>";
    }
    return first == 1 ? "<n>" : "<n+" + std::to_string(first - 1) + ">";
}

} // namespace mxauthor
