#include "text/PinEditor.h"

namespace mxstation {

namespace {

constexpr const char* ownAddresses = "each place has addresses of its own";

std::string addressMembers(const AddedAddresses& addresses, bool isQuoted)
{
    std::string members;
    if (addresses.input) {
        members += yamlKey("in", isQuoted) + std::to_string(*addresses.input);
    }
    if (addresses.output) {
        members += (members.empty() ? "" : ", ") + yamlKey("out", isQuoted) +
                   std::to_string(*addresses.output);
    }
    return members;
}

YamlMember lineOf(const std::string& text)
{
    return {text, {text}};
}

YamlMember addressesMember(const AddedAddresses& addresses, bool isQuoted)
{
    return lineOf(yamlKey("at", isQuoted) + "{" + addressMembers(addresses, isQuoted) + "}");
}

} // namespace

PinEditor::PinEditor(const std::string& text, const YamlNode& tree)
    : source(text), root(tree), edit(text)
{}

std::vector<YamlError> PinEditor::add(const YamlNode& entry, const YamlNode& list,
                                      const AddedAddresses& addresses)
{
    const bool isMap = entry.kind == YamlNode::Kind::Map;
    const YamlNode* const stated = isMap ? memberCalled(entry, "at") : nullptr;
    if (!entry.aliases.empty()) {
        return usedAgain(entry, ownAddresses);
    }
    if (stated != nullptr && !stated->aliases.empty()) {
        return usedAgain(*stated, ownAddresses);
    }
    edit.next();
    const bool isQuoted = list.isFlow && hasQuotedKeys(source, root);
    const bool isAdded = stated != nullptr ? addToAddresses(*stated, addresses)
                         : isMap           ? addToMap(entry, addresses)
                                           : edit.wrapScalar(entry, list.isFlow, isQuoted,
                                                             addressesMember(addresses, isQuoted));
    return isAdded ? std::vector<YamlError>()
                   : std::vector<YamlError>{{entry.place, cannotBeAdded}};
}

bool PinEditor::addToMap(const YamlNode& entry, const AddedAddresses& addresses)
{
    const YamlNode* const module = ownMemberCalled(entry, "module");
    const YamlNode* value = module != nullptr ? module : ownMemberCalled(entry, "reserve");
    if (value != nullptr && value->kind == YamlNode::Kind::Map && !value->isFlow) {
        value = nullptr; // after its lines the addresses would be far from the beginning
    }
    return edit.insertMember(entry, value,
                             addressesMember(addresses, hasQuotedKeys(source, entry)));
}

bool PinEditor::addToAddresses(const YamlNode& stated, const AddedAddresses& addresses)
{
    if (stated.members.empty()) {
        return edit.insertMember(stated, nullptr,
                                 lineOf(addressMembers(addresses, hasQuotedKeys(source, root))));
    }
    const std::string members = addressMembers(addresses, hasQuotedKeys(source, stated));
    return edit.insertMember(stated, ownMemberCalled(stated, stated.members.back().first->text),
                             lineOf(members));
}

} // namespace mxstation
