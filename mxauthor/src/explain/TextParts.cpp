#include "explain/GroupParts.h"
#include "module/TextReferences.h"

#include <map>

namespace mxauthor {

namespace {

using Users = std::map<std::uint16_t, std::string>;

// The first few references to each text.
Users usersOfTexts(const ModuleView& module)
{
    constexpr unsigned shown = 3;
    Users users;
    std::map<std::uint16_t, unsigned> counts;
    for (const TextReference& reference : textReferences(module)) {
        std::string& all = users[reference.id];
        const unsigned count = ++counts[reference.id];
        if (count == shown + 1) {
            all += ", ...";
        } else if (count <= shown) {
            all += (all.empty() ? "" : ", ") + std::string(reference.what) +
                   (reference.subject.empty() ? "" : " of " + reference.subject);
        }
    }
    return users;
}

} // namespace

std::string textMeaning(const ModuleView& module, std::uint16_t id, bool zeroIsNone)
{
    if (id == 0 && zeroIsNone) {
        return "none";
    }
    const TextRecord* const text = module.text(id);
    return text == nullptr ? "a text that is missing" : quoted(text->text.value);
}

void explainGroup(PartList& parts, const ModuleView& module, const TextTable& group)
{
    parts.number(group.head, "head", "");
    parts.unread();
    const Users users = usersOfTexts(module);
    for (std::size_t i = 0; i < group.texts.size(); ++i) {
        const TextRecord& record = group.texts[i];
        const bool isFirst = module.text(record.id.value) == &record;
        const auto user = users.find(record.id.value);
        parts.beginRecord(i, named("text", record.id.value, ""));
        parts.number(record.id, "id", user == users.end() ? "nothing refers to it" : user->second);
        parts.text(record.text, "text", isFirst ? "" : "the first text of this identifier counts");
        if (!isFirst) {
            parts.unread();
        }
    }
}

} // namespace mxauthor
