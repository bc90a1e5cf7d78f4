#include "diff/Differences.h"

#include <map>

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

std::string quoted(const std::string& text)
{
    return "\"" + text + "\"";
}

} // namespace

void compareTexts(const ModuleView& before, const ModuleView& after, Differences& differences)
{
    const Texts old = textsOf(before);
    const Texts now = textsOf(after);
    for (const auto& [id, text] : old) {
        const std::string subject = named("text", id, "");
        const auto found = now.find(id);
        if (found == now.end()) {
            differences.add(Effect::Cosmetic, "text", subject, quoted(text) + " is gone");
        } else if (found->second != text) {
            differences.add(Effect::Cosmetic, "text", subject,
                            quoted(text) + " becomes " + quoted(found->second));
        }
    }
    for (const auto& [id, text] : now) {
        if (old.count(id) == 0) {
            differences.add(Effect::Cosmetic, "text", named("text", id, ""),
                            quoted(text) + " is new");
        }
    }
}

} // namespace mxauthor
