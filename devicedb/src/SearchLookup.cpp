#include "SearchLookup.h"

#include "ModuleFields.h"
#include "SearchFacts.h"
#include "SearchFolding.h"
#include "SearchParts.h"

#include <algorithm>

namespace devices::database {

namespace {

// A statement has a limited number of values and of ranges, and so many parts leave few modules.
constexpr std::size_t mostParts = 200;

void addPartsOf(const std::string& folded, TextClass poorest, bool ranks,
                std::vector<WantedPart>& parts)
{
    for (const std::string& part : partsCovering(folded)) {
        if (parts.size() < mostParts) {
            parts.push_back({part, "", poorest, ranks});
        }
    }
}

// Of a range the numbers at its ends have a part with others: the conditions themselves decide.
void addNumbers(Fact fact, const ModuleCondition& condition, std::vector<WantedPart>& parts)
{
    constexpr std::int64_t most = INT64_MAX - 1; // to which 1 can be added
    const std::int64_t number = comparedNumber(condition);
    const auto add = [&](const std::string& begin, const std::string& end) {
        parts.push_back({begin, end, TextClass::Names, false});
    };
    switch (condition.comparison) {
    case Comparison::Equal:
        return add(factPart(fact, number), "");
    case Comparison::Less:
        return add(beginOfNear(fact), nearFactPart(fact, std::max(number, -most) - 1) + '\0');
    case Comparison::LessOrEqual:
        return add(beginOfNear(fact), nearFactPart(fact, number) + '\0'); // up to this part
    case Comparison::Greater:
        return add(nearFactPart(fact, std::min(number, most) + 1), endOfNear(fact));
    case Comparison::GreaterOrEqual:
        return add(nearFactPart(fact, number), endOfNear(fact));
    case Comparison::NotEqual:
    case Comparison::Contains:
        break; // nearly every module
    }
}

// A module without the parts of the value can neither equal nor contain it. Other comparisons of
// texts hold for many modules.
void addCondition(const ModuleCondition& condition, std::vector<WantedPart>& parts)
{
    const FieldSql& field = fieldNamed(condition.field);
    if (field.field.isNumber) {
        addNumbers(*field.fact, condition, parts);
    } else if (condition.comparison != Comparison::Equal &&
               condition.comparison != Comparison::Contains) {
        return;
    } else if (field.texts) {
        addPartsOf(foldedForSearch(condition.value), *field.texts, false, parts);
    } else if (field.fact) {
        for (const std::string& part : factPartsCovering(*field.fact, condition.value)) {
            parts.push_back({part, "", TextClass::Names, false});
        }
    }
}

} // namespace

SearchLookup::SearchLookup(const PagedQuery& query)
{
    for (const std::string& word : query.words) {
        const std::string folded = foldedForSearch(word);
        if (!folded.empty() && std::find(words.begin(), words.end(), folded) == words.end()) {
            words.push_back(folded);
            addPartsOf(folded, TextClass::Options, true, parts);
        }
    }
    for (const ModuleCondition& condition : query.conditions) {
        addCondition(condition, parts);
    }
    if (parts.size() > mostParts) {
        parts.erase(parts.begin() + mostParts, parts.end());
    }
}

std::vector<std::string> SearchLookup::texts() const
{
    std::vector<std::string> found;
    for (const WantedPart& wanted : parts) {
        if (!isFact(wanted.part)) {
            found.push_back(wanted.part);
        }
    }
    return found;
}

} // namespace devices::database
