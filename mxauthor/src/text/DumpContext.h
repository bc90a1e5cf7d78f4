#pragma once

#include "GroupWords.h"
#include "YamlText.h"
#include "mxauthor/MxFile.h"

#include <map>
#include <optional>
#include <set>

namespace mxauthor {

/// Data shared by the sections of one file while its text form is written.
class DumpContext
{
public:
    /// A text that is longer, in bytes, is written once, in the table, where that is fixed.
    static constexpr std::size_t longestInlineText = 250;

    /// The groups with these indices are written as raw bytes. With `fixedTexts` the whole text
    /// table is written with its identifiers. `file` outlives the object.
    DumpContext(const MxFile& file, const std::set<std::size_t>& raw, bool fixedTexts);

    /// Returns the group `id` where it is written in a form of its own, null otherwise.
    template <typename Content>
    const Content* group(std::uint16_t id) const
    {
        const auto found = typed.find(id);
        return found == typed.end() ? nullptr : std::get_if<Content>(&found->second->content);
    }

    /// The same; an empty group where there is none.
    template <typename Content>
    const Content& groupOrNone(std::uint16_t id) const
    {
        static const Content none;
        const auto* const found = group<Content>(id);
        return found == nullptr ? none : *found;
    }

    bool isTyped(std::size_t index) const;

    /// Returns the text `id` as it is written where it is used, {id: NUMBER} where there is none.
    std::string text(std::uint16_t id) const;

    /// Returns the text `id`, empty where there is none.
    std::string bytesOfText(std::uint16_t id) const;

    const MxFile& file() const { return mxFile; }

    /// Returns whether the whole text table is written with its identifiers.
    bool textsAreFixed() const { return fixed; }

    /// Returns whether `text(id)` is the text itself.
    bool isWrittenAsText(std::uint16_t id) const;

    /// Returns the size of all groups in bytes: the content length that a header usually states.
    std::size_t contentLength() const { return size; }

    /// The names given to option lists and conversions, in file order.
    const std::vector<std::string>& optionListNames() const { return listNames; }
    const std::vector<std::string>& conversionNames() const { return conversionWords; }

    /// Returns the name of the first option list or conversion of this identifier, else its number.
    std::string optionListWord(std::uint8_t id) const;
    std::string conversionWord(std::uint8_t id) const;

private:
    void nameOptionLists();
    void nameConversions();

    const MxFile& mxFile;
    bool fixed;
    std::size_t size = 0;
    std::map<std::uint16_t, const Group*> typed; // the first of each identifier
    std::map<std::uint16_t, std::string> texts;
    std::map<std::string, std::uint16_t> idOfText;
    std::vector<std::string> listNames;
    std::vector<std::string> conversionWords;
};

/// Returns the text identifiers of the names as they are written at the channels, one per channel
/// or empty; no value when the group of names does not match them.
std::optional<std::vector<std::optional<std::uint16_t>>>
namesAtChannels(const DumpContext& context);

} // namespace mxauthor
