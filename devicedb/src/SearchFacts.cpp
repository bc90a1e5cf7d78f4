#include "SearchFacts.h"

#include "SearchParts.h"

#include <set>

namespace devices::database {

namespace {

// No text has it.
constexpr char beginOfFact = '\0';

std::string beginOf(char letter)
{
    return {beginOfFact, letter};
}

char letterOf(Fact fact)
{
    return static_cast<char>(fact);
}

char nearLetterOf(Fact fact)
{
    return static_cast<char>(letterOf(fact) - 'a' + 'A');
}

// Most significant byte first.
void appendBytes(std::string& part, std::uint64_t number, unsigned count)
{
    for (unsigned shift = 8 * count; shift > 0;) {
        shift -= 8;
        part += static_cast<char>(number >> shift & 0xFFU);
    }
}

// The highest four bits of a number, after how many follow them.
std::uint64_t roughly(std::int64_t number)
{
    std::uint64_t high = number < 0 ? 0 : static_cast<std::uint64_t>(number);
    std::uint64_t following = 0;
    for (; high >= 16; high >>= 1U) {
        ++following;
    }
    return following << 4U | high;
}

void addNumber(Fact fact, std::int64_t number, std::set<std::string>& parts)
{
    parts.insert(factPart(fact, number));
    parts.insert(nearFactPart(fact, number));
}

void addText(Fact fact, const std::string& text, std::set<std::string>& parts)
{
    for (const TextPart part : partsOf(text)) {
        parts.insert(beginOf(letterOf(fact)) + bytesOfPart(part));
    }
}

std::int64_t countOf(std::size_t elements)
{
    return static_cast<std::int64_t>(elements);
}

void addContent(const ModuleContent& content, std::set<std::string>& parts)
{
    addNumber(Fact::Channels, countOf(content.channels.size()), parts);
    addNumber(Fact::Parameters, countOf(content.parameters.size()), parts);
    std::set<std::string> units; // a few, which many parameters have
    for (const ModuleContent::Channel& channel : content.channels) {
        addText(Fact::Direction, channel.direction, parts);
        addText(Fact::SizeLetter, channel.sizeLetter, parts);
    }
    for (const ModuleContent::Parameter& parameter : content.parameters) {
        units.insert(parameter.unit);
    }
    for (const std::string& unit : units) {
        addText(Fact::Unit, unit, parts);
    }
}

} // namespace

bool isFact(const std::string& part)
{
    return !part.empty() && part.front() == beginOfFact;
}

std::string factPart(Fact fact, std::int64_t number)
{
    std::string part = beginOf(letterOf(fact));
    appendBytes(part, static_cast<std::uint64_t>(number), 8);
    return part;
}

std::string nearFactPart(Fact fact, std::int64_t number)
{
    std::string part = beginOf(nearLetterOf(fact));
    appendBytes(part, roughly(number), 2);
    return part;
}

std::string beginOfNear(Fact fact)
{
    return beginOf(nearLetterOf(fact));
}

std::string endOfNear(Fact fact)
{
    return beginOf(static_cast<char>(nearLetterOf(fact) + 1));
}

std::vector<std::string> factPartsCovering(Fact fact, const std::string& text)
{
    std::vector<std::string> parts = partsCovering(text);
    for (std::string& part : parts) {
        part.insert(0, beginOf(letterOf(fact)));
    }
    return parts;
}

std::vector<std::string> factPartsOf(const ModuleSummary& module, const ModuleContent* content)
{
    std::set<std::string> parts;
    addNumber(Fact::InBytes, module.inDataSize, parts);
    addNumber(Fact::OutBytes, module.outDataSize, parts);
    addNumber(Fact::ParameterBytes, countOf(module.parameterBlockSize), parts);
    addNumber(Fact::FileBytes, countOf(module.mxFileSize), parts);
    addContent(content == nullptr ? ModuleContent() : *content, parts);
    return {parts.begin(), parts.end()};
}

std::vector<std::string> factPartsOf(const ModuleKey& key)
{
    std::set<std::string> parts;
    addText(Fact::Family, key.family, parts);
    addText(Fact::ModuleId, key.moduleIdText, parts);
    return {parts.begin(), parts.end()};
}

std::string joinedFacts(const std::vector<std::string>& parts)
{
    std::string joined;
    for (const std::string& part : parts) {
        joined += static_cast<char>(part.size());
        joined += part;
    }
    return joined;
}

std::vector<std::string> splitFacts(const std::string& joined)
{
    std::vector<std::string> parts;
    for (std::size_t at = 0; at < joined.size();) {
        const std::size_t length = static_cast<unsigned char>(joined[at]);
        parts.push_back(joined.substr(at + 1, length));
        at += 1 + length;
    }
    return parts;
}

} // namespace devices::database
