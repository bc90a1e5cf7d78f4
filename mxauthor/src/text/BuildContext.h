#pragma once

#include "Section.h"
#include "TextIds.h"

#include <functional>

namespace mxauthor {

/// A parameter of the text form on its way into the records and into the block.
struct BuiltParameter
{
    ParameterRecord record;
    std::string name;                  ///< For messages, in UTF-8.
    YAML::Node node;                   ///< The parameter's line.
    std::optional<YAML::Node> initial; ///< Its default as stated.
    Integer value;                     ///< The same as a number.
    bool mayOverlap = false;
};

/// An option list or conversion of the text form, which parameters refer to by its name.
struct NamedEntry
{
    std::string name;
    std::uint8_t id = 0;
    std::map<std::string, std::uint64_t> options; ///< Values by their texts.
};

/// What the sections of one text form share while its file is built. Sections are built in one fixed
/// order, whatever their order in the text: it is the order in which texts get identifiers.
struct BuildContext
{
    SourceErrors& errors;
    std::filesystem::path directory;
    TextIds texts;
    std::uint16_t textsHead = 0;
    std::vector<NamedEntry> optionLists;
    std::vector<NamedEntry> conversions;
    std::vector<BuiltParameter> parameters;
    std::vector<ChannelName> channelNames;
    std::map<std::uint16_t, GroupContent> groups; ///< Those with a form of their own.
    std::vector<Group> rawGroups;
    std::vector<YAML::Mark> rawMarks;            ///< Where each raw group is stated.
    std::map<std::uint16_t, YAML::Mark> marks;   ///< Where each of `groups` is stated.
};

/// Returns the identifier of the text that `node` gives: the text itself, or {id: NUMBER}.
std::uint16_t readTextId(const YAML::Node& node, BuildContext& context);

/// Returns the identifier of the entry that `node` names, or which it gives as a number. `what` is
/// what such an entry is called.
std::uint8_t readEntryId(const YAML::Node& node, const std::vector<NamedEntry>& entries,
                         const std::string& what, SourceErrors& errors);

/// Returns the bytes that a section gives under "hex", "base64" or "file".
Bytes readPayloadKeys(const Section& section, BuildContext& context);

/// Returns the identifier that an entry of a list gets: the one stated, or one more than the largest
/// before it.
std::uint8_t nextEntryId(const Section& section, const std::vector<NamedEntry>& before);

// Each builds the group of its section; `node` is the section's value.

void buildTextsSection(const YAML::Node& node, BuildContext& context);
void buildOptionLists(const YAML::Node& node, BuildContext& context);
void buildConversions(const YAML::Node& node, BuildContext& context);
void buildParameters(const YAML::Node& node, BuildContext& context);
void buildChannels(const YAML::Node& node, BuildContext& context);
void buildChannelNames(const YAML::Node& node, BuildContext& context);
void buildExtension(const YAML::Node& node, BuildContext& context);
void buildModule(const YAML::Node& node, BuildContext& context);
void buildCatalogue(const YAML::Node& node, BuildContext& context);
void buildComponent(const YAML::Node& node, BuildContext& context);
void buildImage(const YAML::Node& node, BuildContext& context);
void buildRawGroups(const YAML::Node& node, BuildContext& context);

// These are computed, so that their section may be missing.

void buildParameterBlock(const std::optional<YAML::Node>& node, BuildContext& context);
void buildDataSizes(const std::optional<YAML::Node>& node, BuildContext& context);
void buildHeader(const std::optional<YAML::Node>& node, BuildContext& context);
void buildTextTable(bool stated, BuildContext& context);

/// Returns whether the value of a section is the word "none".
bool isNone(const std::optional<YAML::Node>& node);

} // namespace mxauthor
