#pragma once

#include "GroupWords.h"
#include "YamlText.h"
#include "mxauthor/MxFile.h"

#include <map>
#include <optional>
#include <set>

namespace mxauthor {

/// What the sections of one file share while its text form is written.
class DumpContext
{
public:
    /// The groups with these indices are written as raw bytes. With `fixedTexts` the text table is
    /// written as it stands. `file` outlives the object.
    DumpContext(const MxFile& file, const std::set<std::size_t>& raw, bool fixedTexts);

    /// Returns the group `id` where it is written in a form of its own, null otherwise.
    template <typename Content>
    const Content* group(std::uint16_t id) const
    {
        const auto found = typed.find(id);
        return found == typed.end() ? nullptr : std::get_if<Content>(&found->second->content);
    }

    bool isTyped(std::size_t index) const;

    /// Returns the text `id` as it is written where it is used, {id: NUMBER} where there is none.
    std::string text(std::uint16_t id) const;

    /// Returns the text `id`, empty where there is none.
    std::string bytesOfText(std::uint16_t id) const;

    const MxFile& file() const { return mxFile; }
    bool textsAreFixed() const { return fixed; }

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
    std::map<std::uint16_t, const Group*> typed; // the first of each identifier
    std::map<std::uint16_t, std::string> texts;
    std::map<std::string, std::uint16_t> idOfText;
    std::vector<std::string> listNames;
    std::vector<std::string> conversionWords;
};

// Each returns the text of its section, empty where there is none. They are called for any content
// of the right type; what they cannot express is found by building the text again.

std::string dumpModule(const DumpContext& context);
std::string dumpCatalogue(const DumpContext& context);
std::string dumpComponent(const DumpContext& context);
std::string dumpExtension(const DumpContext& context);
std::string dumpDataSizes(const DumpContext& context);
std::string dumpParameterBlock(const DumpContext& context);
std::string dumpOptionLists(const DumpContext& context);
std::string dumpConversions(const DumpContext& context);
std::string dumpParameters(const DumpContext& context);
std::string dumpChannels(const DumpContext& context);
std::string dumpChannelNames(const DumpContext& context);
std::string dumpTexts(const DumpContext& context);
std::string dumpImage(const DumpContext& context);
std::string dumpHeader(const DumpContext& context);
std::string dumpRawGroups(const DumpContext& context);

/// Returns the bits of the block that the defaults of the parameters set, and which parameters state
/// one: those that lie in the block and overlap none before them.
struct DefaultsOfBlock
{
    Bytes block; ///< As large as the block would be made for the parameters.
    std::vector<std::optional<std::string>> texts; ///< By parameter.
    std::vector<bool> overlaps;                    ///< By parameter.
};
DefaultsOfBlock defaultsOf(const DumpContext& context);

/// Returns the name entries that follow from the names at the channels, one per channel or empty;
/// no value when the group of names is another.
std::optional<std::vector<std::optional<std::uint16_t>>> namesAtChannels(const DumpContext& context);

} // namespace mxauthor
