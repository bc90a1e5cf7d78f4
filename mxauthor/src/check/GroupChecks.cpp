#include "check/Checks.h"
#include "mxauthor/Counted.h"
#include "mxauthor/Explain.h"

#include <devices/parser/mx/HexText.h>

#include <array>
#include <set>

namespace mxauthor {

namespace {

constexpr std::array<std::uint16_t, 4> requiredGroups = {0x0001, 0x0011, 0x0020, 0x0040};

void checkPresence(const ModuleView& module, Findings& findings)
{
    const std::uint32_t end = module.file().tail.place.offset;
    for (const std::uint16_t id : requiredGroups) {
        if (module.group(id) == nullptr) {
            findings.addToFile("group-missing", {id, end, 0},
                               "group " + devices::parser::mx::u16AsHex(id) + " (" +
                                   groupTitle(id) + ") is missing");
        }
    }
}

void checkOccurrence(const Group& group, std::set<std::uint16_t>& seen, Findings& findings)
{
    if (!seen.insert(group.id).second) {
        findings.add("repeated-group", group.place, "",
                     "stands here again, only the first one is read");
    } else if (groupTitle(group.id).empty()) {
        findings.add("unknown-group", group.place, "",
                     "not a group of the format, " + counted(group.place.length - 6, "byte") +
                         " skipped");
    } else if (std::holds_alternative<RawGroup>(group.content)) {
        findings.add("group-shape", group.place, "",
                     "does not have the shape of this group, readers differ in what they take");
    }
}

void checkRest(const Field<Bytes>& rest, const char* what, Findings& findings)
{
    if (!rest.value.empty()) {
        findings.add("dead-record", rest.place, "",
                     counted(rest.value.size(), "byte") + " after the last whole " + what);
    }
}

template <typename Content>
void checkRestOf(const ModuleView& module, std::uint16_t id, const char* what, Findings& findings)
{
    if (const auto* content = module.content<Content>(id)) {
        checkRest(content->rest, what, findings);
    }
}

} // namespace

void checkGroups(const ModuleView& module, Findings& findings)
{
    std::set<std::uint16_t> seen;
    for (const Group& group : module.file().groups) {
        checkOccurrence(group, seen, findings);
    }
    if (!seen.empty()) {
        checkPresence(module, findings);
    }
    checkRestOf<Parameters>(module, 0x20C0, "parameter record", findings);
    checkRestOf<OptionLists>(module, 0x20C1, "option list", findings);
    checkRestOf<Channels>(module, 0x20D0, "channel record", findings);
    checkRestOf<ChannelNames>(module, 0x20D7, "channel name", findings);
}

} // namespace mxauthor
