#include "SearchFacts.h"

#include <algorithm>
#include <set>

namespace devices::database {

namespace {

// No text has it.
constexpr char beginOfFact = '\0';

// Each part is stored after its length, which is one byte.
constexpr std::size_t longestFactText = 200;

std::set<std::string> contentFacts(const ModuleContent& content)
{
    std::set<std::string> parts;
    for (const ModuleContent::Channel& channel : content.channels) {
        parts.insert(factPart(Fact::Direction, channel.direction));
        parts.insert(factPart(Fact::SizeLetter, channel.sizeLetter));
    }
    for (const ModuleContent::Parameter& parameter : content.parameters) {
        parts.insert(factPart(Fact::Unit, parameter.unit));
    }
    return parts;
}

std::int64_t countOf(std::size_t elements)
{
    return static_cast<std::int64_t>(elements);
}

} // namespace

bool isFact(const std::string& part)
{
    return !part.empty() && part.front() == beginOfFact;
}

std::string beginOfFacts(Fact fact)
{
    return {beginOfFact, static_cast<char>(fact)};
}

std::string endOfFacts(Fact fact)
{
    return {beginOfFact, static_cast<char>(static_cast<char>(fact) + 1)};
}

// Most significant byte first, with the sign reversed: negative numbers come first.
std::string factPart(Fact fact, std::int64_t number)
{
    const std::uint64_t ordered = static_cast<std::uint64_t>(number) ^ std::uint64_t{1} << 63;
    std::string part = beginOfFacts(fact);
    for (int shift = 56; shift >= 0; shift -= 8) {
        part += static_cast<char>(ordered >> shift & 0xFFU);
    }
    return part;
}

std::string factPart(Fact fact, const std::string& text)
{
    return beginOfFacts(fact) + text.substr(0, longestFactText);
}

std::vector<std::string> factPartsOf(const RecordSizes& sizes, const ModuleContent* content)
{
    std::vector<std::string> parts = {factPart(Fact::InBytes, sizes.in),
                                      factPart(Fact::OutBytes, sizes.out),
                                      factPart(Fact::ParameterBytes, sizes.parameterBlock),
                                      factPart(Fact::FileBytes, sizes.mxFile)};
    const ModuleContent none;
    const ModuleContent& counted = content == nullptr ? none : *content;
    parts.push_back(factPart(Fact::Channels, countOf(counted.channels.size())));
    parts.push_back(factPart(Fact::Parameters, countOf(counted.parameters.size())));
    for (const std::string& part : contentFacts(counted)) {
        parts.push_back(part);
    }
    return parts;
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
