#include "text/EntryEditor.h"

#include "text/ParameterMembers.h"
#include "text/YamlRemoval.h"
#include "text/YamlSection.h"

#include <text/WholeNumber.h>

#include <algorithm>

namespace mxstation {

namespace {

constexpr const char* ownContent = "each entry has content of its own";

std::size_t positionOf(const YamlNode& map, const std::string& key)
{
    const auto found = std::find_if(map.members.begin(), map.members.end(),
                                    [&key](const auto& one) { return one.first->text == key; });
    return static_cast<std::size_t>(found - map.members.begin());
}

std::string textOf(const StatedMember& member, bool isQuoted)
{
    const std::string& value = *member.value;
    return yamlKey(member.key, isQuoted) + (member.isNumber ? value : valueText(value, isQuoted));
}

// Also a number in another form, such as 0x10.
bool hasValue(const YamlNode& value, const StatedMember& member)
{
    return member.isNumber
               ? !value.isWord &&
                     wholeNumberIn(value) == text::wholeNumber<std::uint64_t>(*member.value, 10)
               : value.text == *member.value;
}

// Those that are stated, as one line.
std::string lineOfMembers(const std::vector<StatedMember>& members, bool isQuoted)
{
    std::string line;
    for (const StatedMember& member : members) {
        if (member.value) {
            line += (line.empty() ? "" : ", ") + textOf(member, isQuoted);
        }
    }
    return line;
}

// `line`, members, in the maps called `keys`: the last one in brackets, those around it as lines.
YamlMember nested(const MemberPath& keys, const std::string& line, bool isQuoted)
{
    YamlMember member{line, {line}};
    for (auto key = keys.rbegin(); key != keys.rend(); ++key) {
        const bool isLast = key == keys.rbegin();
        member.flow = yamlKey(*key, isQuoted) + "{" + member.flow + "}";
        if (isLast) {
            member.lines = {member.flow};
            continue;
        }
        for (std::string& one : member.lines) {
            one.insert(0, "  ");
        }
        member.lines.insert(member.lines.begin(), valueText(*key, isQuoted) + ":");
    }
    return member;
}

} // namespace

void EntryEditor::state(const MemberPath& path, const std::vector<StatedMember>& members)
{
    const Maps maps = mapsAlong(path);
    if (maps.size() <= path.size()) {
        add(path, maps, members);
        return;
    }
    for (const bool isStated : {true, false}) { // a map that keeps one member stays
        for (const StatedMember& member : members) {
            if (member.value.has_value() == isStated) {
                stateOne(path, member);
            }
        }
    }
}

// The map of the entry and those along `path`, as far as they are stated.
EntryEditor::Maps EntryEditor::mapsAlong(const MemberPath& path) const
{
    const YamlNode* node = &text.entry(entry);
    text.require(usedAgain(*node, ownContent));
    Maps maps;
    if (node->kind == YamlNode::Kind::Scalar) {
        return maps;
    }
    for (std::size_t i = 0; node != nullptr; ++i) {
        text.require(usedAgain(*node, ownContent));
        if (node->kind != YamlNode::Kind::Map) {
            text.reject(node->place);
        }
        maps.push_back(node);
        node = i < path.size() ? memberCalled(*node, path[i]) : nullptr;
    }
    return maps;
}

void EntryEditor::stateOne(const MemberPath& path, const StatedMember& member)
{
    const Maps maps = mapsAlong(path);
    if (maps.size() <= path.size()) {
        return; // it was removed with its last member
    }
    const YamlNode& map = *maps.back();
    const YamlNode* const value = memberCalled(map, member.key);
    if (value == nullptr && member.value) {
        YamlEdit edit(text.source());
        const std::string line = textOf(member, isQuoted());
        take(edit, edit.insertMember(map, valueBefore(map, member.key), {line, {line}}));
    } else if (value != nullptr && member.value) {
        replace(map, *value, member);
    } else if (value != nullptr) {
        MemberPath removed = path;
        removed.push_back(member.key);
        remove(removed);
    }
}

void EntryEditor::replace(const YamlNode& map, const YamlNode& value, const StatedMember& member)
{
    text.require(usedAgain(value, ownContent));
    const std::string& source = text.source();
    const std::size_t begin = contentOfNode(source, value);
    const auto end = endOfNode(source, value);
    if (value.kind != YamlNode::Kind::Scalar || !end || begin >= *end) {
        text.reject(map.members[positionOf(map, member.key)].first->place);
    }
    if (!hasValue(value, member)) {
        YamlEdit edit(source);
        const bool hasQuotes = source[begin] == '"' || hasQuotedKeys(source, map);
        edit.replace(begin, *end,
                     member.isNumber ? *member.value : valueText(*member.value, hasQuotes));
        take(edit, true);
    }
}

void EntryEditor::add(const MemberPath& path, const Maps& maps,
                      const std::vector<StatedMember>& members)
{
    const std::string line = lineOfMembers(members, isQuoted());
    if (line.empty()) {
        return;
    }
    const YamlNode& node = text.entry(entry);
    YamlEdit edit(text.source());
    if (maps.empty()) {
        const YamlMember member = nested(path, line, isQuoted());
        take(edit, edit.wrapScalar(node, text.list()->isFlow, isQuoted(), member));
        return;
    }
    const auto known = static_cast<std::ptrdiff_t>(maps.size()) - 1;
    const YamlMember member = nested({path.begin() + known, path.end()}, line, isQuoted());
    const YamlNode& map = *maps.back();
    take(edit, edit.insertMember(map, valueBefore(map, path[maps.size() - 1]), member));
}

void EntryEditor::remove(const MemberPath& path)
{
    const Maps maps = mapsAlong({path.begin(), path.end() - 1});
    std::size_t level = maps.size();
    if (level < path.size() || memberCalled(*maps.back(), path.back()) == nullptr) {
        return;
    }
    do {
        --level;
    } while (level > 0 && maps[level]->members.size() == 1);
    YamlEdit edit(text.source());
    take(edit,
         removeMember(edit, text.source(), *maps[level], positionOf(*maps[level], path[level])));
}

// After which value of `map` the member `key` is added: the addresses and names of an entry are at
// its beginning.
const YamlNode* EntryEditor::valueBefore(const YamlNode& map, const std::string& key) const
{
    if (&map != &text.entry(entry) || key == "channels") {
        return map.members.empty() ? nullptr : ownMemberCalled(map, map.members.back().first->text);
    }
    const YamlNode* const module = ownMemberCalled(map, "module");
    const YamlNode* const first = module != nullptr ? module : ownMemberCalled(map, "reserve");
    return first != nullptr && first->kind == YamlNode::Kind::Map && !first->isFlow ? nullptr
                                                                                    : first;
}

// As in JSON.
bool EntryEditor::isQuoted() const
{
    return (text.list()->isFlow && hasQuotedKeys(text.source(), text.root())) ||
           hasQuotedKeys(text.source(), text.entry(entry));
}

void EntryEditor::take(const YamlEdit& edit, bool isPossible)
{
    const SourcePlace place = text.entry(entry).place;
    if (!isPossible) {
        text.reject(place);
    }
    text.take(edit.text(0), place);
}

} // namespace mxstation
