#pragma once

#include <devices/parser/mx/Parser_kv38.h>
#include <mxformat/BlockField.h>
#include <mxformat/ConversionTable.h>

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace mxmodule {

/// A built device as the verbs show it. Texts are the bytes of the mx file.
struct DeviceReport
{
    struct Property
    {
        std::string id;
        std::string name;
        std::string value;
    };

    struct Channel
    {
        std::string id;
        std::uint8_t number;
        std::string name;
        std::string direction;
        std::string symbol;     ///< Empty: the channel has no address.
        std::string sizeLetter; ///< Empty: the channel has no process data.
        std::uint32_t byteAddress;
        std::uint8_t bitOffset;
        std::uint8_t bitLength;
    };

    struct Option
    {
        std::string text;
        std::string value;
        std::uint8_t raw;
        bool current; ///< The parameter has this value.
    };

    struct Parameter
    {
        std::string id;
        std::uint8_t channelNumber;            ///< `moduleLevel`: of the module itself.
        std::vector<std::string> channelNames; ///< Of the channels with that number.
        std::string name;
        std::string value;
        std::string unit;
        std::string min;
        std::string max;
        bool hasOptionList;
        std::vector<Option> options;
        bool flagBit0;
        bool flagBit1;
        bool converted; ///< Shown and set in physical units.
        mxformat::ParameterRecord record;
        mxformat::BlockField field{record}; ///< Where the value lies in the parameter image.
        std::optional<mxformat::WholeNumber> raw{}; ///< Empty: outside the image.
        mxformat::WholeNumber rawMin{};
        mxformat::WholeNumber rawMax{};
        mxformat::PhysicalScale scale{}; ///< Factor 1, offset 0 unless `converted`.

        bool ofModule() const { return channelNumber == mxformat::moduleLevel; }

        /// The bits of a bit field as outputs show them: as in the record, except that a bit length
        /// of 0 with a bit offset above 0 is shown as the length in full. Both are 0 for whole
        /// bytes.
        unsigned bitOffset() const;
        unsigned bitLength() const;

        /// Returns the option that the value selects, or null.
        const Option* currentOption() const;
    };

    struct Set
    {
        std::string id;
        std::string name;
        bool isRole;
        std::vector<std::string> members; ///< Ids.
    };

    struct Binary
    {
        std::string id;
        std::string name;
        std::string mimeType;
        std::string encoding;
        std::string data;
    };

    std::string label;
    std::string deviceTypeId;
    std::vector<Property> properties;
    std::vector<Channel> channels;
    std::vector<Parameter> parameters;
    std::vector<Set> sets;
    std::vector<Binary> binaries;
    std::vector<char> parameterBlock;

    /// Returns the value of the static property `name`, empty when there is none.
    std::string property(const std::string& name) const;
};

/// Reads `channel` as a report has it.
DeviceReport::Channel reportOf(const devices::parser::mx::Parser_kv38::ChannelP& channel);

/// Reads `device` into a report, everything in the order of the device's list. The mx file of the
/// device must still be in memory, `conversions` are those of the file.
DeviceReport makeReport(const devices::parser::mx::Parser_kv38::DeviceP& device,
                        const mxformat::ConversionTable& conversions);

/// Returns the number of `parameter` in `image`; nothing if it lies outside.
std::optional<mxformat::WholeNumber> rawIn(const std::vector<char>& image,
                                           const DeviceReport::Parameter& parameter);

/// Returns the conversions of `mxData`, whose framing must be valid.
mxformat::ConversionTable conversionsOf(const std::vector<char>& mxData);

} // namespace mxmodule
