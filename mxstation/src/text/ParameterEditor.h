#pragma once

#include "text/ChangedValues.h"
#include "text/YamlEdit.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace mxstation {

/// The error of an entry whose values cannot be changed.
constexpr const char* cannotBeStated = "the values cannot be stated in this entry as it is written";

/// Returns the positions of the parameters of a module by a name, as
/// `mxmodule::Module::parametersCalled`.
using ParametersCalled = std::function<std::vector<std::size_t>(const std::string& name)>;

/// Returns the keys under which the parameter `position` is stated in `parameters`, a map; empty:
/// it is not stated.
std::vector<std::string> statedPath(const YamlNode& parameters, const ParametersCalled& called,
                                    std::size_t position);

/// Writes values of parameters into the entries of a station's text.
class ParameterEditor
{
public:
    /// The text, and the tree that was read from it, outlive the object.
    ParameterEditor(const std::string& text, const YamlNode& tree);

    /// Writes `values` of the module with the parameters `called` into `entry`, an item of `list`.
    /// Returns why that is not possible; nothing if they are written.
    [[nodiscard]] std::vector<YamlError> set(const YamlNode& entry, const YamlNode& list,
                                             const ParametersCalled& called,
                                             const std::vector<ChangedValue>& values);

    /// Returns the text with what was written into the first `entries` of them.
    std::string text(std::size_t entries) const { return edit.text(entries); }

private:
    // Where a value is stated.
    struct Stated
    {
        const YamlNode* map;
        const YamlNode* key;
        const YamlNode* value;
    };

    using StatedValues = std::map<std::size_t, Stated>; // by the position of the parameter

    StatedValues statedIn(const YamlNode& parameters, const ParametersCalled& called) const;
    void setIn(const YamlNode& parameters, const ParametersCalled& called,
               const std::vector<ChangedValue>& values);
    void replace(const Stated& stated, const ChangedValue& value);
    bool addToGroup(const YamlNode& parameters, const ParametersCalled& called,
                    const ChangedValue& value);
    void addMembers(const YamlNode& map, const YamlNode* after,
                    const std::vector<YamlMember>& members, const YamlNode& place);
    void addParameters(const YamlNode& entry, const YamlNode& list,
                       const std::vector<ChangedValue>& values);
    bool isOwn(const YamlNode& node);

    const std::string& source;
    const YamlNode& root;
    YamlEdit edit;
    std::vector<YamlError> errors; // of the present entry
};

} // namespace mxstation
