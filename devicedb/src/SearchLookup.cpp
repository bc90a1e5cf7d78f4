#include "SearchLookup.h"

#include "ModuleFields.h"
#include "SearchFacts.h"
#include "SearchFolding.h"
#include "SearchParts.h"

#include <algorithm>

namespace devices::database {

namespace {

void addPartsOf(const std::string& folded, TextClass poorest, bool ranks,
                std::vector<WantedPart>& parts)
{
    for (const std::string& part : partsCovering(folded)) {
        parts.push_back({part, "", poorest, ranks});
    }
}

// A part that follows no other than `part`.
std::string afterPart(const std::string& part)
{
    return part + '\0';
}

void addNumbers(Fact fact, const ModuleCondition& condition, std::vector<WantedPart>& parts)
{
    const std::string number = factPart(fact, comparedNumber(condition));
    const auto add = [&](const std::string& begin, const std::string& end) {
        parts.push_back({begin, end, TextClass::Names, false});
    };
    switch (condition.comparison) {
    case Comparison::Equal:
        return add(number, "");
    case Comparison::Less:
        return add(beginOfFacts(fact), number);
    case Comparison::LessOrEqual:
        return add(beginOfFacts(fact), afterPart(number));
    case Comparison::Greater:
        return add(afterPart(number), endOfFacts(fact));
    case Comparison::GreaterOrEqual:
        return add(number, endOfFacts(fact));
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
    const bool isEqual = condition.comparison == Comparison::Equal;
    if (field.field.isNumber) {
        addNumbers(*field.fact, condition, parts);
    } else if (field.fact && isEqual) {
        parts.push_back({factPart(*field.fact, condition.value), "", TextClass::Names, false});
    } else if (field.texts && (isEqual || condition.comparison == Comparison::Contains)) {
        addPartsOf(foldedForSearch(condition.value), *field.texts, false, parts);
    }
}

} // namespace

SearchLookup::SearchLookup(const ModuleQuery& query)
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
