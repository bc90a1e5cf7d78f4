#include "text/ParameterEditor.h"

#include "text/ParameterMembers.h"
#include "text/YamlExtent.h"

#include <algorithm>

namespace mxstation {

namespace {

constexpr const char* ownValues = "the modules have values of their own";

bool isParameter(const mxmodule::Module& module, const std::string& name, std::size_t position)
{
    const auto found = module.parametersCalled(name);
    return found.size() == 1 && found.front() == position;
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

ParameterEditor::ParameterEditor(const std::string& text, const YamlNode& tree)
    : source(text), root(tree), edit(text)
{}

std::vector<YamlError> ParameterEditor::set(const YamlNode& entry, const YamlNode& list,
                                            const mxmodule::Module& module,
                                            const std::vector<ChangedValue>& values)
{
    errors.clear();
    edit.next();
    const YamlNode* const parameters =
        entry.kind == YamlNode::Kind::Map ? memberCalled(entry, "parameters") : nullptr;
    if (isOwn(entry) && parameters != nullptr) {
        setIn(*parameters, module, values);
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

void ParameterEditor::setIn(const YamlNode& parameters, const mxmodule::Module& module,
                            const std::vector<ChangedValue>& values)
{
    if (!isOwn(parameters)) {
        return;
    }
    const StatedValues stated = statedIn(parameters, module);
    std::vector<ChangedValue> added;
    for (const ChangedValue& value : values) {
        const auto found = stated.find(value.parameter);
        if (found != stated.end()) {
            replace(found->second, value);
        } else if (!value.isDefault && !addToGroup(parameters, module, value)) {
            added.push_back(value);
        }
    }
    const YamlNode& style = parameters.members.empty() ? root : parameters;
    addMembers(parameters, lastValue(parameters), membersOf(added, hasQuotedKeys(source, style)),
               parameters);
}

ParameterEditor::StatedValues ParameterEditor::statedIn(const YamlNode& parameters,
                                                        const mxmodule::Module& module) const
{
    StatedValues stated;
    const auto add = [&](const std::string& name, const Stated& one) {
        const auto found = module.parametersCalled(name);
        if (found.size() == 1) {
            stated.emplace(found.front(), one);
        }
    };
    for (const auto& [key, value] : parameters.members) {
        if (value->kind != YamlNode::Kind::Map) {
            add(key->text, {&parameters, key.get(), value.get()});
            continue;
        }
        for (const auto& [name, inner] : value->members) {
            add(key->text + "/" + name->text, {value.get(), name.get(), inner.get()});
        }
    }
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
bool ParameterEditor::addToGroup(const YamlNode& parameters, const mxmodule::Module& module,
                                 const ChangedValue& value)
{
    for (const auto& [key, group] : parameters.members) {
        if (group->kind == YamlNode::Kind::Map &&
            isParameter(module, key->text + "/" + value.name, value.parameter)) {
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
