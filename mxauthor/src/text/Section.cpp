#include "Section.h"

#include "FormKeys.h"
#include "Placeholders.h"

#include <text/Hexadecimal.h>
#include <text/NearestWords.h>
#include <text/Windows1252.h>

#include <algorithm>
#include <set>

namespace mxauthor {

namespace {

using Pairs = std::vector<std::pair<YAML::Node, YAML::Node>>;

std::string shown(const YAML::Node& node)
{
    return "\"" + node.Scalar() + "\"";
}

// Describes what was found where something else is expected.
std::string foundText(const YAML::Node& node)
{
    if (node.IsScalar()) {
        return ", found " + shown(node);
    }
    return node.IsMap() ? ", found keys with values" : ", found a list";
}

bool isHexadecimal(const std::string& text)
{
    return !text.empty() && text.find_first_not_of("0123456789abcdefABCDEF") == std::string::npos;
}

std::string hexHint(const std::string& text)
{
    return isHexadecimal(text) ? ", did you mean 0x" + text + "?" : "";
}

// Why a key is unknown: often it is a key with its value, or half a number.
std::string unknownKey(const std::string& name, const YAML::Node& value,
                       const std::vector<std::string>& keys)
{
    const std::string text = "unknown key \"" + name + "\"";
    const std::string key = name.substr(0, name.find(':'));
    if (key + ":" == name) {
        return text + ", one colon is expected after a key";
    }
    if (key != name && std::find(keys.begin(), keys.end(), key) != keys.end()) {
        return text + ", a blank is missing after \"" + key + ":\"";
    }
    if (value.IsNull() && name.find_first_of("0123456789") == 0) {
        return text + ", a comma begins another key: numbers have a decimal point";
    }
    return text + text::acceptedWords(name, keys);
}

// A key without a value: no further error is reported for the value.
void reportMissingValue(const YAML::Node& key, SourceErrors& errors)
{
    errors.add(key, shown(key) + " has no value; the empty text is \"\", and # begins a comment");
}

} // namespace

std::optional<std::string> readScalar(const YAML::Node& node, SourceErrors& errors)
{
    if (node.IsNull()) {
        return std::nullopt; // reported with its key
    }
    if (!node.IsScalar()) {
        errors.add(node, "one value expected here" + foundText(node));
        return std::nullopt;
    }
    if (node.Tag().size() > 1 && node.Tag().front() == '!') {
        errors.add(node, "a text that begins with \"!\" needs quotation marks");
        return std::nullopt;
    }
    return node.Scalar();
}

std::optional<Integer> readInteger(const YAML::Node& node, SourceErrors& errors)
{
    const auto text = readScalar(node, errors);
    if (!text) {
        return std::nullopt;
    }
    const auto number = parseInteger(*text);
    if (!number) {
        errors.add(node, shown(node) + (hasPlaceholder(*text)
                                            ? " is a number only in a line with \"repeat\""
                                            : " is not a whole number from -2^63 to 2^64 - 1, "
                                              "decimal or hexadecimal with 0x" +
                                                  hexHint(*text)));
    }
    return number;
}

std::optional<std::uint64_t> readNumber(const YAML::Node& node, std::uint64_t limit,
                                        SourceErrors& errors)
{
    const auto text = readScalar(node, errors);
    if (!text) {
        return std::nullopt;
    }
    const std::string accepted = "0 to " + std::to_string(limit) + " is accepted";
    const auto number = parseInteger(*text);
    if (!number && isIntegerText(*text)) {
        errors.add(node, *text + " is out of range, " + accepted);
        return std::nullopt;
    }
    if (!number) {
        errors.add(node,
                   shown(node) + (hasPlaceholder(*text)
                                      ? " is a number only in a line with \"repeat\""
                                      : " is not a whole number, " + accepted + hexHint(*text)));
        return std::nullopt;
    }
    if (number->negative || number->magnitude > limit) {
        errors.add(node, *text + " is out of range, " + accepted);
        return std::nullopt;
    }
    return number->magnitude;
}

std::optional<std::string> readText(const YAML::Node& node, SourceErrors& errors)
{
    const auto utf8 = readScalar(node, errors);
    if (!utf8) {
        return std::nullopt;
    }
    const auto [bytes, rejected] = text::utf8ToWindows1252(*utf8);
    if (rejected) {
        errors.add(node, "character \"" + *rejected +
                             "\" is not in Windows-1252, the code page of "
                             "mx files");
        return std::nullopt;
    }
    if (bytes.find_first_of(std::string("\0\r\n", 3)) != std::string::npos) {
        errors.add(node, "a text of an mx file cannot hold a line end or NUL");
        return std::nullopt;
    }
    return bytes;
}

std::optional<Bytes> readHex(const YAML::Node& node, SourceErrors& errors)
{
    const auto text = readScalar(node, errors);
    if (!text) {
        return std::nullopt;
    }
    auto bytes = text::fromHex(*text);
    if (!bytes) {
        errors.add(node, "hexadecimal text of whole bytes expected, such as \"00 1f\"");
    }
    return bytes;
}

std::vector<YAML::Node> readSequence(const YAML::Node& node, SourceErrors& errors)
{
    if (node.IsNull()) {
        return {};
    }
    if (!node.IsSequence()) {
        errors.add(node,
                   "a list expected here, [...] or lines that begin with \"- \"" + foundText(node));
        return {};
    }
    for (const YAML::Node& item : node) {
        if (item.IsNull()) {
            errors.add(item, "an entry of the list is empty");
        }
    }
    return {node.begin(), node.end()};
}

namespace {

Pairs pairsOf(const YAML::Node& node, SourceErrors& errors)
{
    if (node.IsNull()) {
        return {};
    }
    if (!node.IsMap()) {
        errors.add(node,
                   "keys with values expected here, such as \"KEY: VALUE\"" + foundText(node));
        return {};
    }
    Pairs pairs;
    std::set<std::string> names;
    for (const auto& item : node) {
        const auto name = readScalar(item.first, errors);
        if (!name) {
            continue;
        }
        if (!names.insert(*name).second) {
            errors.add(item.first, "\"" + *name + "\" is stated twice");
            continue;
        }
        pairs.emplace_back(item.first, item.second);
    }
    return pairs;
}

} // namespace

Pairs readMapping(const YAML::Node& node, SourceErrors& errors)
{
    Pairs pairs = pairsOf(node, errors);
    for (const auto& [key, value] : pairs) {
        if (value.IsNull()) {
            reportMissingValue(key, errors);
        }
    }
    return pairs;
}

Section::Section(const YAML::Node& node, const std::string& mappingName, SourceErrors& errors)
    : mapping(node), problems(errors)
{
    const std::vector<std::string>& keys = keysOf(mappingName);
    for (const auto& [key, value] : pairsOf(node, errors)) {
        const std::string& name = key.Scalar();
        if (std::find(keys.begin(), keys.end(), name) == keys.end()) {
            errors.addCause(key, mapping, unknownKey(name, value, keys));
            unknown.push_back(name);
            continue;
        }
        if (value.IsNull()) {
            reportMissingValue(key, errors);
        }
        values.emplace(name, value);
    }
    noteMisspeltKeys(keys);
}

void Section::noteMisspeltKeys(const std::vector<std::string>& keys)
{
    for (const std::string& name : unknown) {
        const std::vector<std::string> nearest =
            text::nearestWords(name.substr(0, name.find(':')), keys);
        if (!nearest.empty() && !has(nearest.front())) {
            misspelt.insert(nearest.front());
        }
    }
}

std::optional<YAML::Node> Section::find(const std::string& key) const
{
    const auto found = values.find(key);
    return found == values.end() ? std::nullopt : std::optional<YAML::Node>(found->second);
}

std::optional<YAML::Node> Section::require(const std::string& key) const
{
    auto value = find(key);
    if (!value && mapping.IsMap() && !isMisspelt(key) && !isMisspelt("each")) {
        problems.add(mapping, "\"" + key + "\" is missing");
    }
    return value;
}

RecordOrigin Section::origin() const
{
    RecordOrigin origin;
    origin.mark = problems.markOf(mapping);
    origin.repetition = problems.repetitionOf(mapping);
    for (const auto& [key, value] : values) {
        std::vector<YAML::Mark>& marks = origin.values[key];
        marks.push_back(problems.markOf(value));
        if (value.IsSequence()) {
            std::transform(value.begin(), value.end(), std::back_inserter(marks),
                           [this](const YAML::Node& item) { return problems.markOf(item); });
        }
    }
    return origin;
}

std::uint64_t Section::number(const std::string& key, std::uint64_t limit,
                              std::uint64_t fallback) const
{
    const auto value = find(key);
    const bool isOfRepeat = value && isMisspelt("repeat") && value->IsScalar();
    if (!value || (isOfRepeat && hasPlaceholder(value->Scalar()))) {
        return fallback;
    }
    return readNumber(*value, limit, problems).value_or(fallback);
}

std::uint8_t Section::byte(const std::string& key, std::uint8_t fallback) const
{
    return static_cast<std::uint8_t>(number(key, 0xFF, fallback));
}

std::uint16_t Section::word(const std::string& key, std::uint16_t fallback) const
{
    return static_cast<std::uint16_t>(number(key, 0xFFFF, fallback));
}

Bytes Section::hex(const std::string& key, const Bytes& fallback) const
{
    const auto value = find(key);
    return value ? readHex(*value, problems).value_or(fallback) : fallback;
}

bool Section::flag(const std::string& key) const
{
    const auto value = find(key);
    if (!value) {
        return false;
    }
    const auto text = readScalar(*value, problems);
    if (text && *text != "true" && *text != "false") {
        problems.add(*value, shown(*value) + " is neither true nor false");
    }
    return text && *text == "true";
}

} // namespace mxauthor
