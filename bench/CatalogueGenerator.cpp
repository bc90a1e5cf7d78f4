#include "CatalogueGenerator.h"

#include "CatalogueVocabulary.h"

#include <devices/parser/mx/HexText.h>

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

namespace bench {

namespace {

using devices::database::DeviceProperties;
using devices::database::ModuleContent;

// SplitMix64: those of the standard library give other numbers on other platforms.
class Numbers
{
public:
    explicit Numbers(std::uint64_t seed) : state(seed) {}

    std::uint64_t next()
    {
        state += 0x9E3779B97F4A7C15U;
        std::uint64_t mixed = state;
        mixed = (mixed ^ (mixed >> 30U)) * 0xBF58476D1CE4E5B9U;
        mixed = (mixed ^ (mixed >> 27U)) * 0x94D049BB133111EBU;
        return mixed ^ (mixed >> 31U);
    }

    std::size_t below(std::size_t limit) { return static_cast<std::size_t>(next() % limit); }

    bool inPercent(unsigned percent) { return below(100) < percent; }

    template <typename T>
    const T& oneOf(const std::vector<T>& values)
    {
        return values[below(values.size())];
    }

private:
    std::uint64_t state;
};

std::string withNumber(const char* form, std::size_t number)
{
    return fmt::format(fmt::runtime(form), fmt::arg("i", number));
}

// One of 400 words that few modules have, such as the name of a customer.
std::string rareWord(std::size_t number)
{
    static const std::vector<const char*> syllables{
        "ba", "be", "bi", "bo", "bu", "da", "de", "do", "fa", "fe", "fi", "ga", "go", "ha",
        "he", "ka", "ko", "la", "le", "li", "lo", "ma", "me", "mi", "mo", "na", "ne", "no",
        "pa", "pe", "ra", "re", "ri", "ro", "sa", "se", "so", "ta", "te", "ti", "to", "va",
        "ve", "vo", "wa", "we", "wo", "za", "zo", "zu", "öl", "ün", "är"};
    Numbers random(number % 400);
    std::string word;
    for (std::size_t length = 3 + random.below(2); length > 0; --length) {
        word += random.oneOf(syllables);
    }
    return word;
}

// 7919 is prime to 100,000: the five digits of neighbours differ, no code occurs twice.
std::string orderCode(const ModuleKind& kind, std::size_t number)
{
    constexpr std::size_t codes = 100000;
    constexpr std::string_view letters = "ABCDEFGHKLMN";
    return fmt::format("{}{}-{:05}.{}{}", kind.letters, 3 + number % 5, number * 7919 % codes,
                       letters[number / codes % letters.size()],
                       number / codes / letters.size() % 10);
}

std::string label(const ModuleKind& kind, std::size_t channels, Numbers& random)
{
    std::string text = fmt::format(fmt::runtime(random.oneOf(kind.labels)), fmt::arg("n", channels),
                                   fmt::arg("r", random.oneOf(kind.ranges)),
                                   fmt::arg("x", random.oneOf(kind.extras)));
    if (random.inPercent(45)) {
        text += std::string(" ") + random.oneOf(labelSuffixes());
    }
    if (random.inPercent(2)) {
        text += " " + rareWord(random.below(400));
    }
    return text;
}

void addChannels(ModuleContent& content, const char* name, std::size_t count, unsigned bits,
                 bool isInput)
{
    const char* const letter = bits == 1 ? "X" : bits == 8 ? "B" : bits == 16 ? "W" : "D";
    const std::string area = isInput ? "I" : "Q";
    for (std::size_t i = 0; i < count; ++i) {
        ModuleContent::Channel channel;
        channel.number = static_cast<unsigned>(content.channels.size());
        channel.name = withNumber(name, i + 1);
        channel.direction = isInput ? "in" : "out";
        channel.sizeLetter = letter;
        channel.symbol = bits == 1 ? fmt::format("{}X{}_{}", area, i / 8, i % 8)
                                   : fmt::format("{}{}{}", area, letter, i * bits / 8);
        content.channels.push_back(std::move(channel));
    }
}

std::vector<ModuleContent::Option> someOptions(Numbers& random)
{
    std::vector<ModuleContent::Option> options;
    if (random.inPercent(60)) {
        for (const char* text : random.oneOf(optionLists())) {
            options.push_back({text, std::to_string(options.size())});
        }
    }
    if (random.below(1000) == 0) {
        options.push_back({rareWord(random.below(400)) + "kurve", std::to_string(options.size())});
    }
    return options;
}

void addParameters(ModuleContent& content, std::size_t channels, Numbers& random)
{
    const std::size_t most = 5 + random.below(56);
    for (std::size_t forms = 4 + random.below(9); forms > 0; --forms) {
        const ParameterForm& form = random.oneOf(parameterForms());
        const bool isOfChannels = std::string_view(form.name).find('{') != std::string_view::npos;
        const auto options = someOptions(random);
        for (std::size_t i = 0; i < (isOfChannels ? channels : 1); ++i) {
            if (content.parameters.size() == most) {
                return;
            }
            ModuleContent::Parameter parameter;
            parameter.name = withNumber(form.name, i + 1);
            if (isOfChannels) {
                parameter.channel = static_cast<unsigned>(i);
            }
            parameter.widthBits = form.bits;
            parameter.defaultValue = std::to_string(random.below(10));
            parameter.minimum = "0";
            parameter.maximum = "100";
            parameter.unit = form.unit;
            parameter.options = options;
            content.parameters.push_back(std::move(parameter));
        }
    }
}

ModuleContent contentOf(const ModuleKind& kind, std::size_t number)
{
    Numbers random(number);
    ModuleContent content;
    const std::size_t channels = random.oneOf(kind.channels);
    content.label = label(kind, channels, random);
    content.orderCode = orderCode(kind, number);
    addChannels(content, random.oneOf(kind.channelNames), channels, kind.bits, kind.isInput);
    if (random.inPercent(30)) {
        addChannels(content, random.oneOf(stateNames()), channels, 1, true);
    }
    addParameters(content, channels, random);
    return content;
}

// The size of those of the examples, which is about this sum, and compressible like them.
std::vector<char> fileBytes(const ModuleContent& content, std::size_t number)
{
    Numbers random(~number);
    std::vector<char> bytes;
    const auto addRecord = [&](std::size_t size, const std::string& name) {
        for (std::size_t at = 0; at < size; ++at) {
            bytes.push_back(at % 4 == 0 ? static_cast<char>(random.below(256)) : '\0');
        }
        bytes.insert(bytes.end(), name.begin(), name.end());
    };
    addRecord(600, content.label + content.orderCode);
    for (const auto& channel : content.channels) {
        addRecord(20, channel.name);
    }
    for (const auto& parameter : content.parameters) {
        addRecord(28, parameter.channel.value_or(0) == 0 ? parameter.name : "");
    }
    bytes.push_back('\xFF');
    return bytes;
}

std::uint32_t bytesOf(const ModuleContent& content, const char* direction)
{
    std::size_t bits = 0;
    for (const auto& channel : content.channels) {
        const char letter = channel.sizeLetter[0];
        if (channel.direction == direction) {
            bits += letter == 'X' ? 1 : letter == 'B' ? 8 : letter == 'W' ? 16 : 32;
        }
    }
    return static_cast<std::uint32_t>((bits + 7) / 8);
}

DeviceProperties recordOf(const ModuleContent& content, std::uint32_t id, std::size_t number)
{
    DeviceProperties record;
    record.family = "kv38";
    record.moduleIdText = devices::parser::mx::u32AsHex(id);
    record.brandLabelName = content.label;
    record.text4 = record.text5 = std::string(1, '\0');
    record.inDataSize = bytesOf(content, "in");
    record.outDataSize = bytesOf(content, "out");
    record.mxFileData = new std::vector<char>(fileBytes(content, number));
    record.defaultParameterBlock =
        new std::vector<char>(std::min<std::size_t>(content.parameters.size(), 255), '\1');
    return record;
}

} // namespace

GeneratedModules::Module CatalogueGenerator::module(std::size_t number) const
{
    constexpr std::uint32_t idsOfKind = 0x01000000;
    const std::size_t percent = number * 100 / count;
    std::uint32_t kindNumber = 0;
    std::size_t percentOfEarlier = 0;
    while (percentOfEarlier + moduleKinds()[kindNumber].share <= percent) {
        percentOfEarlier += moduleKinds()[kindNumber++].share;
    }
    const ModuleContent content = contentOf(moduleKinds()[kindNumber], number);
    const std::uint32_t id =
        0x20000000 + kindNumber * idsOfKind + static_cast<std::uint32_t>(number);
    return {recordOf(content, id, number), content};
}

} // namespace bench
