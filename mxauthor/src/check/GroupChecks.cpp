#include "check/Checks.h"
#include <text/Counted.h>

#include <devices/parser/mx/HexText.h>

#include <array>
#include <set>

namespace mxauthor {

namespace {

const CheckRule groupRows[] = {
    {"group-missing", error, "A group that every module must have is missing.",
     "group 0001 (module identity) is missing", "the key \"{key}\" states it"},
    {"repeated-group", warning, "A group occurs twice. Only the first one is read.",
     "group 0040: is repeated here, only the first one is read"},
    {"unknown-group", note,
     "The identifier is not one of the format. Readers skip the group; manufacturers store private "
     "data in such groups.",
     "group 7abc: not a group of the format, 5 bytes skipped"},
    {"group-shape", error,
     "The payload does not have the shape of its group: a line or a record without its end, or a "
     "size that ends a list early. Readers interpret it differently.",
     "group 0020: does not have the shape of this group, readers interpret it differently"},
    {"dead-record", warning,
     "Bytes after the last whole record of a group. Readers ignore them, or read a record that "
     "runs into the next group.",
     "group 20d0: 3 bytes after the last whole channel record"},
    {"unread-bytes", note, "Bytes of a group that are not read.",
     "group 20f0: 2 bytes after the calibration date, not read"},
};
const auto& [groupMissing, repeatedGroup, unknownGroup, groupShape, deadRecord, unreadBytes] =
    groupRows;

constexpr std::array<std::uint16_t, 4> requiredGroups = {
    mxformat::group::identity, mxformat::group::dataSizes, mxformat::group::catalogue,
    mxformat::group::component};

void checkPresence(const ModuleView& module, Findings& findings)
{
    const std::uint32_t end = module.file().tail.place.offset;
    for (const std::uint16_t id : requiredGroups) {
        if (module.group(id) == nullptr) {
            findings.addToFile(groupMissing, {id, end, 0},
                               "group " + devices::parser::mx::u16AsHex(id) + " (" +
                                   mxformat::groupName(id) + ") is missing");
        }
    }
}

void checkOccurrence(const Group& group, std::set<std::uint16_t>& seen, Findings& findings)
{
    if (!seen.insert(group.id).second) {
        findings.add(repeatedGroup, group.place, "",
                     "is repeated here, only the first one is read");
    } else if (std::string_view(mxformat::groupName(group.id)).empty()) {
        findings.add(unknownGroup, group.place, "",
                     "not a group of the format, " +
                         text::counted(group.place.length - mxformat::groupOverhead, "byte") +
                         " skipped");
    } else if (std::holds_alternative<RawGroup>(group.content)) {
        findings.add(groupShape, group.place, "",
                     "does not have the shape of this group, readers interpret it differently");
    }
}

template <typename Content>
void checkRestOf(const ModuleView& module, std::uint16_t id, const char* what, Findings& findings)
{
    const Field<Bytes>& rest = module.contentOrNone<Content>(id).rest;
    if (!rest.value.empty()) {
        findings.add(deadRecord, rest.place, "",
                     text::counted(rest.value.size(), "byte") + " after the last whole " + what);
    }
}

void checkUnreadBytes(const ModuleView& module, Findings& findings)
{
    const auto& rest = module.contentOrNone<Extension>(mxformat::group::extension).rest;
    if (!rest.value.empty()) {
        findings.add(unreadBytes, rest.place, "",
                     text::counted(rest.value.size(), "byte") +
                         " after the calibration date, not read");
    }
}

void checkGroups(const ModuleView& module, Findings& findings)
{
    std::set<std::uint16_t> seen;
    for (const Group& group : module.file().groups) {
        checkOccurrence(group, seen, findings);
    }
    if (!seen.empty()) {
        checkPresence(module, findings);
    }
    checkRestOf<Parameters>(module, mxformat::group::parameters, "parameter record", findings);
    checkRestOf<OptionLists>(module, mxformat::group::optionLists, "option list", findings);
    checkRestOf<Channels>(module, mxformat::group::channels, "channel record", findings);
    checkRestOf<ChannelNames>(module, mxformat::group::channelNames, "channel name", findings);
    checkUnreadBytes(module, findings);
}

} // namespace

const Check groupCheck(groupRows, checkGroups);

} // namespace mxauthor
