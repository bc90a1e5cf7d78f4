#include "explain/ExplanationParts.h"

#include <fmt/format.h>
#include <text/Hexadecimal.h>
#include <text/ShownText.h>

namespace mxmodule {

std::string hexOfPart(const Explanation& explanation, const ExplainedPart& part)
{
    return text::hexOfBytes(explanation.file().bytes(), part.offset, part.length);
}

std::string valueOfPart(const ExplainedPart& part)
{
    if (part.kind == ExplainedPart::Kind::Text) {
        return "\"" + text::forTerminal(part.value) + "\"";
    }
    return part.value;
}

std::string meaningOfPart(const ExplainedPart& part)
{
    std::string meaning = text::forTerminal(part.meaning);
    if (part.isRead) {
        return meaning;
    }
    return meaning.empty() ? "(not read)" : meaning + " (not read)";
}

std::string headingOf(const ExplainedGroup& group)
{
    return fmt::format("group {}, {}: {} bytes at {:#08x} ({}){}", text::hexOf(group.id, 4),
                       group.name.empty() ? "not of the format" : group.name, group.length,
                       group.offset, group.offset, group.isRead ? "" : ", not read");
}

bool beginsRecord(const ExplainedPart& part, const ExplainedPart* previous)
{
    return beginsGroup(part, previous) || previous->record != part.record;
}

bool beginsGroup(const ExplainedPart& part, const ExplainedPart* previous)
{
    return previous == nullptr || previous->group != part.group;
}

} // namespace mxmodule
