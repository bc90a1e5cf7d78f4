#pragma once

#include "text/EditedText.h"

#include <mxstation/StationEdit.h>

#include <functional>
#include <string>
#include <vector>

namespace mxstation {

/// What is to be changed of an entry.
struct EntryEdit
{
    std::vector<std::string> keys; ///< Of the entry; nothing else changes.
    /// Returns whether the entry became what is wanted: before the change, after it.
    std::function<bool(const Entry&, const Entry&)> isWanted;
};

// Each changes an entry of `text`, that of `station`, which exists. What is not possible is a
// `mxmodule::Failure`.

EntryEdit editEntry(const Station& station, EditedText& text, const NameEntry& edit);
EntryEdit editEntry(const Station& station, EditedText& text, const SetReserve& edit);
EntryEdit editEntry(const Station& station, EditedText& text, const SetValue& edit);
EntryEdit editEntry(const Station& station, EditedText& text, const NoteChannel& edit);
EntryEdit editEntry(const Station& station, EditedText& text, const PinEntry& edit);

} // namespace mxstation
