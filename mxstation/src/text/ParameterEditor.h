#pragma once

#include "text/ChangedValues.h"
#include "text/YamlEdit.h"

#include <map>
#include <string>
#include <vector>

namespace mxstation {

/// The error of an entry whose values cannot be changed.
constexpr const char* cannotBeStated = "the values cannot be stated in this entry as it is written";

/// Writes values of parameters into the entries of a station's text.
class ParameterEditor
{
public:
    /// The text, and the tree that was read from it, outlive the object.
    ParameterEditor(const std::string& text, const YamlNode& tree);

    /// Writes `values` of `module` into `entry`, an item of `list`. Returns why that is not
    /// possible; nothing if they are written.
    [[nodiscard]] std::vector<YamlError> set(const YamlNode& entry, const YamlNode& list,
                                             const mxmodule::Module& module,
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

    StatedValues statedIn(const YamlNode& parameters, const mxmodule::Module& module) const;
    void setIn(const YamlNode& parameters, const mxmodule::Module& module,
               const std::vector<ChangedValue>& values);
    void replace(const Stated& stated, const ChangedValue& value);
    bool addToGroup(const YamlNode& parameters, const mxmodule::Module& module,
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
