#include "text/ParameterMembers.h"

#include <text/TextWidth.h>
#include <text/YamlScalar.h>

namespace mxstation {

namespace {

constexpr std::size_t mostColumns = 72; // of a channel on one line

std::string inBrackets(const std::vector<YamlMember>& members)
{
    std::string all;
    for (const YamlMember& member : members) {
        all += (all.empty() ? "" : ", ") + member.flow;
    }
    return "{" + all + "}";
}

std::vector<std::string> indented(const std::string& key, const std::vector<YamlMember>& members)
{
    std::vector<std::string> lines{key + ":"};
    for (const YamlMember& member : members) {
        for (const std::string& line : member.lines) {
            lines.push_back("  " + line);
        }
    }
    return lines;
}

YamlMember groupMember(const std::string& name, const std::vector<YamlMember>& members,
                       bool isQuoted)
{
    const std::string line = yamlKey(name, isQuoted) + inBrackets(members);
    const bool isShort = text::columnsOf(line) <= mostColumns;
    return {line, isShort ? std::vector<std::string>{line}
                          : indented(valueText(name, isQuoted), members)};
}

} // namespace

std::string valueText(const std::string& value, bool isQuoted)
{
    return isQuoted ? text::yamlQuoted(value) : text::yamlScalar(value);
}

YamlMember memberOf(const ChangedValue& value, bool isQuoted)
{
    const std::string line = yamlKey(value.name, isQuoted) + valueText(value.value, isQuoted);
    return {line, {line}};
}

std::vector<YamlMember> membersOf(const std::vector<ChangedValue>& values, bool isQuoted)
{
    std::vector<YamlMember> all;
    for (std::size_t i = 0; i < values.size();) {
        if (values[i].group.empty()) {
            all.push_back(memberOf(values[i++], isQuoted));
            continue;
        }
        const std::string group = values[i].group;
        std::vector<YamlMember> members;
        for (; i < values.size() && values[i].group == group; ++i) {
            members.push_back(memberOf(values[i], isQuoted));
        }
        all.push_back(groupMember(group, members, isQuoted));
    }
    return all;
}

YamlMember parametersMember(const std::vector<YamlMember>& members, bool isQuoted)
{
    return {yamlKey("parameters", isQuoted) + inBrackets(members), indented("parameters", members)};
}

} // namespace mxstation
