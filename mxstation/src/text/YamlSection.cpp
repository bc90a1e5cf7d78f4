#include "text/YamlSection.h"

#include <fmt/format.h>
#include <text/Beginning.h>
#include <text/WholeNumber.h>

#include <algorithm>
#include <iterator>

namespace mxstation {

namespace {

constexpr std::size_t mostTextBytes = 65535; // no text of an mx file has more

void addNotExpected(const YamlNode& node, const std::string& expected, StationErrors& errors,
                    const std::vector<std::string>& accepted = {})
{
    const bool isQuoted = wholeNumberIn(node) && node.isWord;
    errors.add(
        node.place,
        fmt::format("found {}{}, expected {}", isQuoted ? "the text " : "", node.shown(), expected),
        isQuoted ? "a number is without quotation marks" : "", accepted);
}

} // namespace

YamlSection::YamlSection(const YamlNode& node, const std::string& what,
                         const std::vector<std::string>& keys, StationErrors& errors)
{
    for (const auto& [key, value] : node.members) {
        if (key->kind != YamlNode::Kind::Scalar) {
            errors.add(key->place, fmt::format("found {}, expected a {}", key->shown(), what));
        } else if (std::find(keys.begin(), keys.end(), key->text) == keys.end()) {
            errors.addUnknown(key->place, what, key->text, keys);
            hasIncomplete = true;
        } else if (!values.emplace(key->text, value).second) {
            errors.add(key->place, fmt::format("\"{}\" is stated twice", key->text));
        } else if (value->kind == YamlNode::Kind::Nothing) {
            errors.add(key->place, fmt::format("\"{}\" has no value", key->text));
            hasIncomplete = true;
        }
    }
}

const YamlNode* YamlSection::find(const std::string& key) const
{
    const auto found = values.find(key);
    const bool isStated = found != values.end() && found->second->kind != YamlNode::Kind::Nothing;
    return isStated ? found->second.get() : nullptr;
}

std::optional<std::uint64_t> wholeNumberIn(const YamlNode& node)
{
    const bool isHexadecimal = node.text.compare(0, 2, "0x") == 0;
    if (node.kind != YamlNode::Kind::Scalar) {
        return std::nullopt;
    }
    return text::wholeNumber<std::uint64_t>(node.text.substr(isHexadecimal ? 2 : 0),
                                            isHexadecimal ? 16 : 10);
}

std::optional<std::string> readText(const YamlNode& node, const std::string& what,
                                    StationErrors& errors)
{
    if (node.kind == YamlNode::Kind::Scalar && node.text.size() > mostTextBytes) {
        errors.add(node.place, fmt::format("found a text of {} bytes, expected {} of at most {}",
                                           node.text.size(), what, mostTextBytes));
        return std::nullopt;
    }
    if (node.kind == YamlNode::Kind::Scalar && !node.text.empty()) {
        return node.text;
    }
    errors.add(node.place, fmt::format("found {}, expected {}", node.shown(), what));
    return std::nullopt;
}

std::optional<std::uint32_t> readNumber(const YamlNode& node, std::uint32_t least,
                                        std::uint32_t most, StationErrors& errors)
{
    const auto number = wholeNumberIn(node);
    if (!number || node.isWord || *number < least || *number > most) {
        addNotExpected(node, fmt::format("a whole number from {} to {}", least, most), errors);
        return std::nullopt;
    }
    return static_cast<std::uint32_t>(*number);
}

std::optional<std::uint32_t> readOneOf(const YamlNode& node, const std::string& what,
                                       const std::vector<std::uint32_t>& numbers,
                                       StationErrors& errors)
{
    const auto number = wholeNumberIn(node);
    if (number && !node.isWord &&
        std::find(numbers.begin(), numbers.end(), *number) != numbers.end()) {
        return static_cast<std::uint32_t>(*number);
    }
    std::vector<std::string> accepted;
    std::transform(numbers.begin(), numbers.end(), std::back_inserter(accepted),
                   [](std::uint32_t one) { return std::to_string(one); });
    const std::string first =
        fmt::format("{}", fmt::join(accepted.begin(), accepted.end() - 1, ", "));
    addNotExpected(node, fmt::format("{} {} or {}", what, first, accepted.back()), errors,
                   accepted);
    return std::nullopt;
}

std::optional<std::size_t> readWord(const YamlNode& node, const std::string& what,
                                    const std::vector<std::string>& words, StationErrors& errors)
{
    const auto found = std::find(words.begin(), words.end(), node.text);
    if (node.kind == YamlNode::Kind::Scalar && found != words.end()) {
        return static_cast<std::size_t>(found - words.begin());
    }
    if (node.kind == YamlNode::Kind::Scalar) {
        errors.addUnknown(node.place, what, node.text, words);
    } else {
        errors.add(node.place, fmt::format("found {}, expected one of the words {}", node.shown(),
                                           text::beginningOfList(words, words.size(), ", ", ", ")));
    }
    return std::nullopt;
}

} // namespace mxstation
