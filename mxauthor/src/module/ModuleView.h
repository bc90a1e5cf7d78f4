#pragma once

#include "module/ParameterValues.h"
#include "mxauthor/MxFile.h"

#include <mxformat/ConversionTable.h>

#include <map>
#include <optional>

namespace mxauthor {

/// Where a channel lies in the process image of a module that starts at byte 0.
struct ChannelPlace
{
    std::string symbol; ///< IEC symbol; empty: the channel has no place.
    bool input = false;
    std::uint32_t byteAddress = 0;
    std::uint64_t firstBit = 0; ///< Counted from byte 0.
    unsigned bits = 0;
    std::uint32_t naturalSize = 1; ///< Bytes by which such values are best aligned.
};

/// Returns the places of `records`.
std::vector<ChannelPlace> channelPlaces(const std::vector<ChannelRecord>& records);

/// An mx file as readers use it: the first group of each identifier, references resolved.
///
/// Points into the file, which outlives it.
class ModuleView
{
public:
    explicit ModuleView(const MxFile& file);

    struct Channel
    {
        const ChannelRecord* record;
        std::string name; ///< Empty: none is stated.
        ChannelPlace place;
    };

    struct Parameter
    {
        const ParameterRecord* record;
        std::string name; ///< Empty: none is stated.
        ParameterValue value;

        /// Whether it has options instead of a range; options of a converted parameter are not
        /// read.
        bool usesOptions() const
        {
            return record->optionList.value != 0 && !mxformat::isConverted(record->flags.value);
        }
    };

    const MxFile& file() const { return source; }

    /// Returns the first group `id`, null when there is none.
    const Group* group(std::uint16_t id) const;

    /// Returns the content of the first group `id`; null when there is none or it is raw.
    template <typename Content>
    const Content* content(std::uint16_t id) const
    {
        const Group* const found = group(id);
        return found == nullptr ? nullptr : std::get_if<Content>(&found->content);
    }

    /// The same; an empty content when there is none.
    template <typename Content>
    const Content& contentOrNone(std::uint16_t id) const
    {
        static const Content none;
        const auto* const found = content<Content>(id);
        return found == nullptr ? none : *found;
    }

    /// Returns the first text of each identifier.
    const std::map<std::uint16_t, const TextRecord*>& texts() const { return allTexts; }

    /// Returns the first text `id`, null when there is none.
    const TextRecord* text(std::uint16_t id) const;

    /// Returns the bytes of the text `id`, empty when there is none.
    std::string textOf(std::uint16_t id) const;

    /// Returns the first name for the channel `number`, null when there is none.
    const ChannelName* channelName(std::uint8_t number) const;

    const std::vector<Channel>& channels() const { return allChannels; }
    const std::vector<Parameter>& parameters() const { return allParameters; }

    /// Returns the options of every list `id`, in file order.
    std::vector<const Option*> options(std::uint8_t id) const;

    /// Returns the conversions, as readers use them.
    const mxformat::ConversionTable& conversions() const { return allConversions; }

    /// Returns the default parameter block, empty when there is none.
    const Bytes& block() const;

    /// Returns the number of bytes stated for one of `mxformat::dataSizeKeys`.
    std::uint32_t dataSize(const std::string& key) const;

    /// Returns the module identifier; nothing when the file has none.
    [[nodiscard]] std::optional<std::uint32_t> moduleId() const;

private:
    void addChannels();
    void addParameters();

    const MxFile& source;
    std::map<std::uint16_t, const Group*> groups;
    std::map<std::uint16_t, const TextRecord*> allTexts;
    std::map<std::uint8_t, const ChannelName*> channelNames;
    mxformat::ConversionTable allConversions;
    std::vector<Channel> allChannels;
    std::vector<Parameter> allParameters;
};

/// Returns the calibration date up to the first 0x00 or CR.
std::string dateText(const Extension& extension);

/// Returns `text` in quotation marks, shortened.
std::string quoted(const std::string& text);

/// Returns how messages name a channel or parameter: `parameter 3 "Filter"`; the name shortened.
std::string named(const char* what, unsigned number, const std::string& name);

/// The same for `parameter` and `channel`.
std::string named(const ModuleView::Parameter& parameter);
std::string named(const ModuleView::Channel& channel);

} // namespace mxauthor
