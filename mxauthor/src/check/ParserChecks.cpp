#include "check/Checks.h"

#include <devices/parser/mx/HexText.h>

#include <array>

namespace mxauthor {

namespace {

const CheckRule parserRows[] = {
    {"parser-refuses", error, "The device parser rejects the file, with this message.",
     "group 0010: Invalid size property in group 0x0010 (2)"},
    {"modbus-refuses", error,
     "The default parameters have no Modbus registers; the device parser gives the reason.",
     "group 20c0: Parameter out of bounds: Filter"},
};
const auto& [parserRefuses, modbusRefuses] = parserRows;

// How the parser's messages without a group identifier begin, and the groups that they are about.
struct MessageStart
{
    const char* text;
    std::uint16_t group;
};

constexpr std::array<MessageStart, 10> messageStarts = {
    {{"Cannot find requested text string", mxformat::group::texts},
     {"Invalid textstring termination", mxformat::group::dataSizes},
     {"Invalid textstring termination", mxformat::group::texts},
     {"Invalid datatype", mxformat::group::parameters},
     {"Parser::getModuleIdAndType()", mxformat::group::identity},
     {"Default parameter block in mx data", mxformat::group::parameterBlock},
     {"The current parameter array size", mxformat::group::dataSizes},
     {"Parameter out of bounds", mxformat::group::parameters},
     {"Bit field of", mxformat::group::parameters},
     {"Parameter option list", mxformat::group::optionLists}}};

bool isAbout(const std::string& message, std::uint16_t group)
{
    for (const MessageStart& start : messageStarts) {
        if (start.group == group && message.rfind(start.text, 0) == 0) {
            return true;
        }
    }
    const std::string digits = devices::parser::mx::u16AsHex(group);
    return message.find("group " + digits) != std::string::npos ||
           message.find("group 0x" + digits) != std::string::npos;
}

// The group that `message` is about; of two, the one with the wrong shape. Null when there is none.
const Group* groupOf(const std::string& message, const MxFile& file)
{
    const Group* found = nullptr;
    for (const Group& group : file.groups) {
        const bool isBetter = found == nullptr || std::holds_alternative<RawGroup>(group.content);
        if (isBetter && isAbout(message, group.id)) {
            found = &group;
        }
    }
    return found;
}

} // namespace

const Check parserCheck(parserRows, nullptr);

bool isRefusal(const Finding& finding)
{
    return finding.rule == &parserRefuses;
}

// Framing errors point after the last whole group, others at the group that they name.
void addRefusal(Refused what, const std::string& message, const MxFile& file, Findings& findings)
{
    const CheckRule& rule = what == Refused::File ? parserRefuses : modbusRefuses;
    const bool isFraming = message.rfind("Parser::parse()", 0) == 0;
    const Group* const group = isFraming ? nullptr : groupOf(message, file);
    if (group == nullptr) {
        findings.addToFile(rule, {0, file.tail.place.offset, 0}, message);
    } else {
        findings.add(rule, group->place, "", message);
    }
}

} // namespace mxauthor
