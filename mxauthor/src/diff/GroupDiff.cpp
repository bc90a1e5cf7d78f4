#include "diff/Differences.h"

#include <devices/parser/mx/HexText.h>

#include <set>

namespace mxauthor {

namespace {

// The payload of the first group `id`; an empty list holds none.
std::vector<Bytes> payloadOf(const ModuleView& module, std::uint16_t id)
{
    const Group* const group = module.group(id);
    return group == nullptr ? std::vector<Bytes>{}
                            : std::vector<Bytes>{writePayload(group->content)};
}

bool isRaw(const ModuleView& module, std::uint16_t id)
{
    const Group* const group = module.group(id);
    return group != nullptr && std::holds_alternative<RawGroup>(group->content);
}

void compareGroup(const ModuleView& before, const ModuleView& after, std::uint16_t id,
                  Differences& differences)
{
    const auto old = payloadOf(before, id);
    const auto now = payloadOf(after, id);
    const bool isMakers = std::string_view(mxformat::groupName(id)).empty();
    const bool isUnknown = isRaw(before, id) || isRaw(after, id);
    const char* text = "holds other bytes";
    if (old.empty() != now.empty()) {
        text = old.empty() ? "is new" : "is gone";
    } else if (old == now || !(isMakers || isUnknown)) {
        return; // typed groups are compared by their content
    }
    // How readers interpret a group of the wrong shape is unknown.
    differences.add(isMakers ? Effect::Cosmetic : Effect::Compatible, "group",
                    "group " + devices::parser::mx::u16AsHex(id), text);
}

} // namespace

void compareOtherGroups(const ModuleView& before, const ModuleView& after, Differences& differences)
{
    std::set<std::uint16_t> ids;
    for (const ModuleView* module : {&before, &after}) {
        for (const Group& group : module->file().groups) {
            ids.insert(group.id);
        }
    }
    for (const std::uint16_t id : ids) {
        compareGroup(before, after, id, differences);
    }
}

} // namespace mxauthor
