#include "text/ParameterEditor.h"

#include "text/ParameterMembers.h"
#include "text/YamlExtent.h"

#include <algorithm>

namespace mxstation {

namespace {

constexpr const char* ownValues = "the modules have values of their own";

bool isParameter(const ParametersCalled& called, const std::string& name, std::size_t position)
{
    const auto found = called(name);
    return found.size() == 1 && found.front() == position;
}

// The member that states a value, after that of its channel.
using MemberNodes = std::vector<const std::pair<YamlNodeP, YamlNodeP>*>;

template <typename Take>
void forEachStated(const YamlNode& parameters, const Take& take)
{
    for (const auto& member : parameters.members) {
        if (member.second->kind != YamlNode::Kind::Map) {
            take(MemberNodes{&member});
            continue;
        }
        for (const auto& inner : member.second->members) {
            take(MemberNodes{&member, &inner});
        }
    }
}

std::string nameOf(const MemberNodes& path)
{
    const std::string& first = path.front()->first->text;
    return path.size() == 1 ? first : first + "/" + path.back()->first->text;
}

const YamlNode* lastValue(const YamlNode& map)
{
    if (map.members.empty()) {
        return nullptr;
    }
    const auto& [key, value] = map.members.back();
    return value->offset > key->offset ? value.get() : nullptr;
}

// New values that are the defaults need no statement.
std::vector<ChangedValue> withoutDefaults(std::vector<ChangedValue> values)
{
    values.erase(std::remove_if(values.begin(), values.end(),
                                [](const ChangedValue& one) { return one.isDefault; }),
                 values.end());
    return values;
}

} // namespace

std::vector<std::string> statedPath(const YamlNode& parameters, const ParametersCalled& called,
                                    std::size_t position)
{
    std::vector<std::string> keys;
    forEachStated(parameters, [&](const MemberNodes& path) {
        if (keys.empty() && isParameter(called, nameOf(path), position)) {
            for (const auto* const member : path) {
                keys.push_back(member->first->text);
            }
        }
    });
    return keys;
}

ParameterEditor::ParameterEditor(const std::string& text, const YamlNode& tree)
    : source(text), root(tree), edit(text)
{}

std::vector<YamlError> ParameterEditor::set(const YamlNode& entry, const YamlNode& list,
                                            const ParametersCalled& called,
                                            const std::vector<ChangedValue>& values)
{
    errors.clear();
    edit.next();
    const YamlNode* const parameters =
        entry.kind == YamlNode::Kind::Map ? memberCalled(entry, "parameters") : nullptr;
    if (isOwn(entry) && parameters != nullptr) {
        setIn(*parameters, called, values);
    } else if (errors.empty()) {
        addParameters(entry, list, withoutDefaults(values));
    }
    return errors;
}

bool ParameterEditor::isOwn(const YamlNode& node)
{
    const auto again = usedAgain(node, ownValues);
    errors.insert(errors.end(), again.begin(), again.end());
    return again.empty();
}

void ParameterEditor::addParameters(const YamlNode& entry, const YamlNode& list,
                                    const std::vector<ChangedValue>& values)
{
    if (values.empty()) {
        return;
    }
    if (entry.kind == YamlNode::Kind::Map) {
        const bool isQuoted = hasQuotedKeys(source, entry);
        const YamlNode* const name = ownMemberCalled(entry, "name");
        const YamlNode* const module = ownMemberCalled(entry, "module");
        const YamlNode* const after =
            name != nullptr && (module == nullptr || name->offset > module->offset) ? name : module;
        addMembers(entry, after, {parametersMember(membersOf(values, isQuoted), isQuoted)}, entry);
        return;
    }
    const bool isQuoted = list.isFlow && hasQuotedKeys(source, root);
    if (!edit.wrapScalar(entry, list.isFlow, isQuoted,
                         parametersMember(membersOf(values, isQuoted), isQuoted))) {
        errors.push_back({entry.place, cannotBeStated});
    }
}

void ParameterEditor::setIn(const YamlNode& parameters, const ParametersCalled& called,
                            const std::vector<ChangedValue>& values)
{
    if (!isOwn(parameters)) {
        return;
    }
    const StatedValues stated = statedIn(parameters, called);
    std::vector<ChangedValue> added;
    for (const ChangedValue& value : values) {
        const auto found = stated.find(value.parameter);
        if (found != stated.end()) {
            replace(found->second, value);
        } else if (!value.isDefault && !addToGroup(parameters, called, value)) {
            added.push_back(value);
        }
    }
    const YamlNode& style = parameters.members.empty() ? root : parameters;
    addMembers(parameters, lastValue(parameters), membersOf(added, hasQuotedKeys(source, style)),
               parameters);
}

ParameterEditor::StatedValues ParameterEditor::statedIn(const YamlNode& parameters,
                                                        const ParametersCalled& called) const
{
    StatedValues stated;
    forEachStated(parameters, [&](const MemberNodes& path) {
        const auto found = called(nameOf(path));
        if (found.size() == 1) {
            const YamlNode& map = path.size() == 1 ? parameters : *path.front()->second;
            const auto& [key, value] = *path.back();
            stated.emplace(found.front(), Stated{&map, key.get(), value.get()});
        }
    });
    return stated;
}

void ParameterEditor::replace(const Stated& stated, const ChangedValue& value)
{
    if (!isOwn(*stated.map) || !isOwn(*stated.value)) {
        return;
    }
    const std::size_t begin = contentOfNode(source, *stated.value);
    const auto end = endOfNode(source, *stated.value);
    if (!end || begin >= *end) {
        errors.push_back({stated.key->place, "this value cannot be replaced as it is written"});
        return;
    }
    const bool isQuoted = source[begin] == '"' || hasQuotedKeys(source, *stated.map);
    edit.replace(begin, *end, valueText(value.value, isQuoted));
}

// Returns whether the parameter has a place below its channel, which is stated already.
bool ParameterEditor::addToGroup(const YamlNode& parameters, const ParametersCalled& called,
                                 const ChangedValue& value)
{
    for (const auto& [key, group] : parameters.members) {
        if (group->kind == YamlNode::Kind::Map &&
            isParameter(called, key->text + "/" + value.name, value.parameter)) {
            if (isOwn(*group)) {
                const YamlNode& style = group->members.empty() ? parameters : *group;
                addMembers(*group, lastValue(*group),
                           {memberOf(value, hasQuotedKeys(source, style))}, *key);
            }
            return true;
        }
    }
    return false;
}

void ParameterEditor::addMembers(const YamlNode& map, const YamlNode* after,
                                 const std::vector<YamlMember>& members, const YamlNode& place)
{
    for (const YamlMember& member : members) {
        if (!edit.insertMember(map, after, member)) {
            errors.push_back({place.place, cannotBeStated});
        }
    }
}

} // namespace mxstation
