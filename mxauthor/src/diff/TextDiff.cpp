#include "diff/Differences.h"

#include <algorithm>
#include <map>
#include <set>

namespace mxauthor {

namespace {

using Texts = std::map<std::uint16_t, std::string>;

Texts textsOf(const ModuleView& module)
{
    Texts texts;
    if (const auto* table = module.content<TextTable>(0x20D3)) {
        for (const TextRecord& record : table->texts) {
            texts.emplace(record.id.value, record.text.value);
        }
    }
    return texts;
}

bool stands(const std::string& text, const Texts& texts)
{
    return std::any_of(texts.begin(), texts.end(),
                       [&text](const auto& entry) { return entry.second == text; });
}

std::string quoted(const std::string& text)
{
    return "\"" + text + "\"";
}

} // namespace

// Compilers give identifiers anew: a text that stands under another one is no difference.
void compareTexts(const ModuleView& before, const ModuleView& after, Differences& differences)
{
    const Texts old = textsOf(before);
    const Texts now = textsOf(after);
    std::set<std::uint16_t> reworded;
    for (const auto& [id, text] : old) {
        const auto found = now.find(id);
        if (stands(text, now)) {
            continue;
        }
        if (found != now.end() && !stands(found->second, old)) {
            reworded.insert(id);
            differences.add(Effect::Cosmetic, "text", named("text", id, ""),
                            quoted(text) + " becomes " + quoted(found->second));
        } else {
            differences.add(Effect::Cosmetic, "text", named("text", id, ""),
                            quoted(text) + " is gone");
        }
    }
    for (const auto& [id, text] : now) {
        if (reworded.count(id) == 0 && !stands(text, old)) {
            differences.add(Effect::Cosmetic, "text", named("text", id, ""),
                            quoted(text) + " is new");
        }
    }
}

} // namespace mxauthor
