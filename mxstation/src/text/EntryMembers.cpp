#include "text/EntryMembers.h"

#include "text/ParameterMembers.h"

#include <text/YamlScalar.h>

#include <algorithm>

namespace mxstation {

namespace {

// A path is plain after its "../" and "/" if every reader of YAML reads the rest as a text.
std::string referenceText(const std::string& reference, bool isQuoted)
{
    const std::size_t name = std::min(reference.find_first_not_of("./"), reference.size());
    const bool isPath = name > 0 && reference[name - 1] == '/' && name < reference.size();
    const std::string rest = reference.substr(isPath ? name : 0);
    return !isQuoted && isPath && text::yamlScalar(rest) == rest ? reference
                                                                 : valueText(reference, isQuoted);
}

std::uint32_t numberOf(const std::optional<StatedByte>& stated)
{
    return stated ? stated->value : 0;
}

} // namespace

YamlMember moduleMember(const AddModule& added, bool isQuoted)
{
    const std::string reference = referenceText(added.reference, isQuoted);
    if (added.name.empty()) {
        return {reference, {reference}};
    }
    const std::string module = yamlKey("module", isQuoted) + reference;
    const std::string name = yamlKey("name", isQuoted) + valueText(added.name, isQuoted);
    return {"{" + module + ", " + name + "}", {module, name}};
}

YamlMember reserveMember(const AddReserve& added, bool isQuoted)
{
    std::string members;
    const auto add = [&](const char* key, const std::string& value) {
        members += (members.empty() ? "" : ", ") + yamlKey(key, isQuoted) + value;
    };
    if (added.input != 0) {
        add("in", std::to_string(added.input));
    }
    if (added.output != 0) {
        add("out", std::to_string(added.output));
    }
    if (!added.name.empty()) {
        add("name", valueText(added.name, isQuoted));
    }
    const std::string line = yamlKey("reserve", isQuoted) + "{" + members + "}";
    return {"{" + line + "}", {line}};
}

bool isReserve(const Entry& entry, std::uint32_t input, std::uint32_t output)
{
    return entry.reserve && numberOf(entry.reserve->size.input) == input &&
           numberOf(entry.reserve->size.output) == output;
}

} // namespace mxstation
