#pragma once

#include "GroupWords.h"
#include "Section.h"
#include "mxauthor/MxFile.h"
#include "mxauthor/NamedFile.h"

#include <mxformat/PhysicalScale.h>

#include <filesystem>

namespace mxauthor {

/// Gives identifiers to texts in the order in which they are used; a text keeps the one that it was
/// given first.
class TextIds
{
public:
    /// Identifiers are given from `first` on, each `step` above the one before.
    void start(std::uint16_t first, std::uint16_t step);

    /// Appends a text with an identifier of its own.
    void fix(std::uint16_t id, const std::string& text);

    /// Returns the identifier of `text`; empty when there is none left.
    [[nodiscard]] std::optional<std::uint16_t> idOf(const std::string& text);

    /// Returns all texts: the fixed ones, then the others in order of use.
    const std::vector<TextRecord>& records() const { return texts; }

private:
    std::vector<TextRecord> texts;
    std::map<std::string, std::uint16_t> idOfText;
    std::set<std::uint16_t> used;
    std::uint32_t next = 1;
    std::uint16_t stride = 1;
};

/// A parameter of the text form while its record and its bytes of the block are built.
struct BuiltParameter
{
    ParameterRecord record;
    std::string name;                  ///< For messages, in UTF-8.
    YAML::Node node;                   ///< The parameter's line.
    std::optional<YAML::Node> initial; ///< Its default as stated.
    std::uint64_t value = 0;           ///< Its default as a number, if it fits.
    bool mayOverlap = false;
    bool placeIsCertain = true; ///< False: unknown because of an error already reported.
    bool isCertain = true;      ///< The same for the meaning of its values.
};

/// An option list or conversion of the text form, which parameters refer to by its name.
struct NamedEntry
{
    std::string name;
    std::uint8_t id = 0;
    std::map<std::string, std::uint64_t> options; ///< Values by their texts, the first of each.
    mxformat::PhysicalScale scale;                ///< Of a conversion.
    std::string unit;                             ///< Of a conversion, in UTF-8; empty: none.
    bool isCertain = true;                        ///< False: it has errors, already reported.
};

/// What a parameter refers to.
struct EntryReference
{
    std::uint8_t id = 0;
    bool isCertain = true; ///< False: unknown because of an error already reported.
};

/// What the sections of one text form share while its file is built. Sections are built in one
/// fixed order, whatever their order in the text: it is the order in which texts get identifiers.
struct BuildContext
{
    SourceErrors& errors;
    std::filesystem::path directory;
    const FileReader& read; ///< Reads the files that the text names.
    TextIds texts{};
    std::vector<NamedEntry> optionLists{};
    std::vector<NamedEntry> conversions{};
    std::vector<BuiltParameter> parameters{};
    bool listsAreKnown = true;                      ///< False: their key is misspelt.
    bool conversionsAreKnown = true;                ///< The same.
    std::vector<ChannelName> channelNames{};        ///< As the channels state them.
    std::map<std::uint16_t, GroupContent> groups{}; ///< Groups with a form of their own.
    std::map<std::uint16_t, YAML::Mark> marks{};    ///< The place in the text of each of `groups`.
    std::vector<Group> rawGroups{};
    std::vector<YAML::Mark> rawMarks{}; ///< The place in the text of each of `rawGroups`.
    std::map<std::uint16_t, std::vector<RecordOrigin>> records{}; ///< Those of `groups`.
    std::vector<std::filesystem::path> filesRead{};

    /// Sets the content of a group that the text states at `mark`.
    void setGroup(std::uint16_t id, GroupContent content, const YAML::Mark& mark)
    {
        groups[id] = std::move(content);
        marks[id] = mark;
    }

    /// The same for a group that `node` states, or that is computed.
    void setGroup(std::uint16_t id, GroupContent content, const std::optional<YAML::Node>& node)
    {
        setGroup(id, std::move(content), node ? node->Mark() : YAML::Mark::null_mark());
    }
};

/// Records `node` as the place of the texts since the last call.
void noteTextOrigin(const YAML::Node& node, BuildContext& context);

/// Returns the identifier of the text that `node` gives: the text itself, or {id: NUMBER}.
std::uint16_t readTextId(const YAML::Node& node, BuildContext& context);

/// The same for the value of a key; 0, which means no text, when it is not stated.
std::uint16_t readTextId(const Section& section, const std::string& key, BuildContext& context);

/// Returns the entry that `node` names, or whose identifier it gives as a number. `what` is the
/// word for such an entry in messages.
EntryReference readEntryReference(const YAML::Node& node, const std::vector<NamedEntry>& entries,
                                  const std::string& what, SourceErrors& errors);

/// Returns a new entry of the name `key`, with the identifier that the section states, or one more
/// than the largest so far.
NamedEntry namedEntry(const YAML::Node& key, const Section& section,
                      const std::vector<NamedEntry>& before);

/// Returns whether the value of a section is the word "none".
bool isNone(const std::optional<YAML::Node>& node);

} // namespace mxauthor
