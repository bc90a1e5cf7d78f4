#include "diff/Differences.h"

#include <text/Beginning.h>

#include <map>
#include <set>

namespace mxauthor {

namespace {

using Texts = std::map<std::uint16_t, std::string>;

Texts textsOf(const ModuleView& module)
{
    Texts texts;
    if (const auto* table = module.content<TextTable>(mxformat::group::texts)) {
        for (const TextRecord& record : table->texts) {
            texts.emplace(record.id.value, record.text.value);
        }
    }
    return texts;
}

using Wordings = std::set<std::string>;

Wordings wordingsOf(const Texts& texts)
{
    Wordings wordings;
    for (const auto& entry : texts) {
        wordings.insert(entry.second);
    }
    return wordings;
}

bool stands(const std::string& text, const Wordings& wordings)
{
    return wordings.count(text) != 0;
}

std::string quotedWording(const std::string& text)
{
    return "\"" + text::shortened(text) + "\"";
}

} // namespace

// Compilers assign identifiers anew: another identifier of a text is not a difference.
void compareTexts(const ModuleView& before, const ModuleView& after, Differences& differences)
{
    const Texts old = textsOf(before);
    const Texts now = textsOf(after);
    const Wordings oldWordings = wordingsOf(old);
    const Wordings newWordings = wordingsOf(now);
    std::set<std::uint16_t> reworded;
    for (const auto& [id, text] : old) {
        const auto found = now.find(id);
        if (stands(text, newWordings)) {
            continue;
        }
        if (found != now.end() && !stands(found->second, oldWordings)) {
            reworded.insert(id);
            differences.add(Effect::Cosmetic, "text", named("text", id, ""),
                            quotedWording(text) + " becomes " + quotedWording(found->second));
        } else {
            differences.add(Effect::Cosmetic, "text", named("text", id, ""),
                            quotedWording(text) + " is gone");
        }
    }
    for (const auto& [id, text] : now) {
        if (reworded.count(id) == 0 && !stands(text, oldWordings)) {
            differences.add(Effect::Cosmetic, "text", named("text", id, ""),
                            quotedWording(text) + " is new");
        }
    }
}

} // namespace mxauthor
