#pragma once

#include "text/EditedText.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace mxstation {

/// What a member of an entry is to state.
struct StatedMember
{
    std::string key;
    std::optional<std::string> value; ///< Empty: it is not stated.
    bool isNumber = false;            ///< A text otherwise.
};

/// Keys from a member of an entry to one within its value.
using MemberPath = std::vector<std::string>;

/// Changes an entry of a station's text. What is not possible is a `mxmodule::Failure`.
class EntryEditor
{
public:
    /// `edited` outlives the object and has the entry `index`.
    EntryEditor(EditedText& edited, std::size_t index) : text(edited), entry(index) {}

    /// States `members` of the map at `path`, that of the entry itself if it is empty. Other
    /// members stay, the map is added or removed as needed.
    void state(const MemberPath& path, const std::vector<StatedMember>& members);

    /// Removes the member at `path`, and maps that would become empty.
    void remove(const MemberPath& path);

private:
    using Maps = std::vector<const YamlNode*>;

    Maps mapsAlong(const MemberPath& path) const;
    void stateOne(const MemberPath& path, const StatedMember& member);
    void add(const MemberPath& path, const Maps& maps, const std::vector<StatedMember>& members);
    void replace(const YamlNode& map, const YamlNode& value, const StatedMember& member);
    const YamlNode* valueBefore(const YamlNode& map, const std::string& key) const;
    bool isQuoted() const;
    void take(const YamlEdit& edit, bool isPossible);

    EditedText& text;
    std::size_t entry;
};

} // namespace mxstation
