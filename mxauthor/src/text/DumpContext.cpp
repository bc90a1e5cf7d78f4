#include "DumpContext.h"

#include <algorithm>

namespace mxauthor {

namespace {

constexpr std::size_t mostLookedAt = 60; // characters of a text used for a name

bool isAlphanumeric(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

// How common signs in units are spelled.
std::string spelled(char c)
{
    static const std::map<char, std::string> signs = {
        {'%', "percent"}, {'\xB0', "deg"}, {'\xB5', "u"}, {'\xB2', "2"}, {'\xB3', "3"}};
    const auto found = signs.find(c);
    return found != signs.end() ? found->second : std::string(isAlphanumeric(c) ? 1 : 0, c);
}

// A word made of the letters and digits of a text, "-" between them.
std::string wordOf(const std::string& text)
{
    std::string word;
    for (const char c : text.substr(0, mostLookedAt)) {
        if (const std::string letters = spelled(c); !letters.empty()) {
            word += letters;
        } else if (!word.empty() && word.back() != '-') {
            word += '-';
        }
    }
    while (!word.empty() && word.back() == '-') {
        word.pop_back();
    }
    return word;
}

// Assigns unique names.
class Names
{
public:
    explicit Names(std::string whatIsNamed) : what(std::move(whatIsNamed)) {}

    // A name that starts with a letter, is not a YAML keyword and was not assigned before.
    std::string unique(const std::string& text)
    {
        std::string word = wordOf(text);
        if (word.empty() || yamlText(word) != word) {
            word = what + (word.empty() ? "" : "-") + word;
        }
        unsigned& number = numbers[word]; // the last that was tried; the ones below stay taken
        std::string name = word;
        while (!taken.insert(name).second) {
            number = std::max(number + 1, 2U);
            name = word + "-" + std::to_string(number);
        }
        return name;
    }

private:
    std::string what;
    std::set<std::string> taken;
    std::map<std::string, unsigned> numbers;
};

template <typename Entries>
std::string nameOfId(const Entries& entries, const std::vector<std::string>& names, std::uint8_t id)
{
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (entries[i].id.value == id) {
            return names[i];
        }
    }
    return std::to_string(id);
}

} // namespace

DumpContext::DumpContext(const MxFile& file, const std::set<std::size_t>& raw, bool fixedTexts)
    : mxFile(file), fixed(fixedTexts)
{
    std::set<std::uint16_t> seen;
    for (std::size_t i = 0; i < file.groups.size(); ++i) {
        const Group& group = file.groups[i];
        size += writePayload(group.content).size() + mxformat::groupOverhead;
        const bool first = seen.insert(group.id).second;
        if (first && raw.count(i) == 0 && !std::holds_alternative<RawGroup>(group.content)) {
            typed.emplace(group.id, &group);
        }
    }
    for (const TextRecord& record : groupOrNone<TextTable>(mxformat::group::texts).texts) {
        if (texts.emplace(record.id.value, record.text.value).second) {
            idOfText.emplace(record.text.value, record.id.value);
        }
    }
    nameOptionLists();
    nameConversions();
}

bool DumpContext::isTyped(std::size_t index) const
{
    const Group& group = mxFile.groups[index];
    const auto found = typed.find(group.id);
    return found != typed.end() && found->second == &group;
}

std::string DumpContext::bytesOfText(std::uint16_t id) const
{
    const auto found = texts.find(id);
    return found == texts.end() ? "" : found->second;
}

bool DumpContext::isWrittenAsText(std::uint16_t id) const
{
    // A text with two identifiers gets the first. A long one is written in the table only:
    // thousands of parameters may use it.
    const auto found = texts.find(id);
    return found != texts.end() && !(fixed && found->second.size() > longestInlineText) &&
           idOfText.at(found->second) == id;
}

std::string DumpContext::text(std::uint16_t id) const
{
    return isWrittenAsText(id) ? yamlText(texts.at(id))
                               : FlowMapping().add("id", std::to_string(id)).text();
}

// An option list is named after the first parameter that uses it and has a name.
void DumpContext::nameOptionLists()
{
    const auto& parameters = groupOrNone<Parameters>(mxformat::group::parameters);
    std::map<std::uint8_t, std::string> users;
    for (const ParameterRecord& record : parameters.records) {
        std::string& user = users[record.optionList.value];
        if (user.empty()) {
            user = bytesOfText(record.nameId.value);
        }
    }
    Names names("options");
    for (const OptionList& list : groupOrNone<OptionLists>(mxformat::group::optionLists).lists) {
        listNames.push_back(names.unique(users[list.id.value]));
    }
}

// A conversion is named after its unit.
void DumpContext::nameConversions()
{
    Names names("conversion");
    const auto& conversions = groupOrNone<Conversions>(mxformat::group::conversions);
    for (const Conversion& entry : conversions.entries) {
        conversionWords.push_back(names.unique(bytesOfText(entry.unitId.value)));
    }
}

std::string DumpContext::optionListWord(std::uint8_t id) const
{
    return nameOfId(groupOrNone<OptionLists>(mxformat::group::optionLists).lists, listNames, id);
}

std::string DumpContext::conversionWord(std::uint8_t id) const
{
    const auto& conversions = groupOrNone<Conversions>(mxformat::group::conversions);
    return nameOfId(conversions.entries, conversionWords, id);
}

} // namespace mxauthor
