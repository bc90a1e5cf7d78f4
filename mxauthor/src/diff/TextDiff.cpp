#include "diff/Differences.h"

#include <set>

namespace mxauthor {

namespace {

using Wordings = std::set<std::string>;

Wordings wordingsOf(const ModuleView& module)
{
    Wordings wordings;
    for (const auto& entry : module.texts()) {
        wordings.insert(entry.second->text.value);
    }
    return wordings;
}

} // namespace

// Compilers assign identifiers anew: another identifier of a text is not a difference.
void compareTexts(const ModuleView& before, const ModuleView& after, Differences& differences)
{
    const Wordings oldWordings = wordingsOf(before);
    const Wordings newWordings = wordingsOf(after);
    std::set<std::uint16_t> reworded;
    for (const auto& [id, record] : before.texts()) {
        const std::string& text = record->text.value;
        if (newWordings.count(text) != 0) {
            continue;
        }
        const TextRecord* const now = after.text(id);
        if (now != nullptr && oldWordings.count(now->text.value) == 0) {
            reworded.insert(id);
            differences.add(Effect::Cosmetic, "text", named("text", id, ""),
                            quoted(text) + " becomes " + quoted(now->text.value));
        } else {
            differences.add(Effect::Cosmetic, "text", named("text", id, ""),
                            quoted(text) + " is gone");
        }
    }
    for (const auto& [id, record] : after.texts()) {
        const std::string& text = record->text.value;
        if (reworded.count(id) == 0 && oldWordings.count(text) == 0) {
            differences.add(Effect::Cosmetic, "text", named("text", id, ""),
                            quoted(text) + " is new");
        }
    }
}

} // namespace mxauthor
