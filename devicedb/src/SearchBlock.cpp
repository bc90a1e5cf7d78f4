#include "SearchBlock.h"

#include "SqlConnection.h"

#include <algorithm>

namespace devices::database {

namespace {

// A member is two bytes, the more significant first: its place, and in the lowest two bits the
// class.
constexpr unsigned bitsOfClass = 2;
constexpr std::size_t bytesOfMember = 2;

std::string storedMembers(const std::vector<std::uint16_t>& members)
{
    std::string bytes;
    bytes.reserve(bytesOfMember * members.size());
    for (const std::uint16_t member : members) {
        bytes += static_cast<char>(member >> 8U);
        bytes += static_cast<char>(member & 0xFFU);
    }
    return bytes;
}

// Members come in the order of their places, the best class first.
void addMember(std::vector<std::uint16_t>& members, std::size_t place, std::size_t textClass)
{
    if (members.empty() || members.back() >> bitsOfClass != place) {
        members.push_back(static_cast<std::uint16_t>(place << bitsOfClass | textClass));
    }
}

} // namespace

void BlockParts::add(const SearchTexts& texts, const std::vector<std::string>& facts)
{
    for (std::size_t textClass = 0; textClass < texts.size(); ++textClass) {
        for (const TextPart part : partsOf(texts[textClass])) {
            addMember(ofTexts[part], count, textClass);
        }
    }
    for (const std::string& fact : facts) {
        addMember(ofFacts[fact], count, 0);
    }
    ++count;
}

std::vector<std::pair<std::string, std::string>> BlockParts::stored() const
{
    std::vector<std::pair<std::string, std::string>> rows;
    rows.reserve(ofTexts.size() + ofFacts.size());
    for (const auto& part : ofTexts) {
        rows.emplace_back(bytesOfPart(part.first), storedMembers(part.second));
    }
    for (const auto& part : ofFacts) {
        rows.emplace_back(part.first, storedMembers(part.second));
    }
    std::sort(rows.begin(), rows.end());
    return rows;
}

void requirePairs(const std::string& stored)
{
    if (stored.size() % bytesOfMember != 0) {
        throw SqlFailure("a block of the search index holds " + std::to_string(stored.size()) +
                         " bytes of members, expected an even number");
    }
}

} // namespace devices::database
