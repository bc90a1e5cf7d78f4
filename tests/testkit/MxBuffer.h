#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace testkit {

using Bytes = std::vector<std::uint8_t>;

/// Returns the bytes spelled in `hex`: two digits each, blanks ignored.
Bytes hexBytes(const std::string& hex);

/// Returns `text` as bytes.
Bytes textBytes(const std::string& text);

/// Returns `value` as 2 or 4 bytes, most significant first.
Bytes u16(unsigned value);
Bytes u32(std::uint32_t value);

/// Returns `parts` concatenated.
Bytes join(const std::vector<Bytes>& parts);

/// Builds an mx buffer group by group.
class MxBuffer
{
public:
    /// Appends a group with its length and checksum 0.
    MxBuffer& group(std::uint16_t id, const Bytes& payload);

    /// Appends bytes as they are.
    MxBuffer& raw(const Bytes& bytes);

    /// Returns the buffer.
    std::vector<char> chars() const;
    const Bytes& bytes() const { return content; }

private:
    Bytes content;
};

/// Payload of group 0x0001 with the module identity dataset.
Bytes identityPayload(std::uint8_t moduleType, std::uint32_t moduleId);

/// Payload of a text group: one line "key,s=value" with its line end per entry.
Bytes entriesPayload(const std::vector<std::pair<std::string, std::string>>& entries);

/// Payload of group 0x20d3: the two leading bytes, then a record per text.
Bytes textTablePayload(const std::vector<std::pair<unsigned, std::string>>& texts);

/// Payload of group 0x0011: each line with its line end.
Bytes linesPayload(const std::vector<std::string>& lines);

/// The 29 bytes of a parameter record of group 0x20c0.
struct ParameterRecord
{
    std::uint8_t number = 1;
    std::uint16_t nameId = 100;
    std::uint8_t position = 4; ///< Byte offset in the block plus 4.
    std::uint8_t datatype = 1;
    std::uint8_t showMe = 3;
    std::uint8_t conversionId = 0;
    std::uint8_t mapId = 0;
    std::uint64_t minimum = 0;
    std::uint64_t maximum = 0;
    std::uint16_t unitId = 0;
    std::uint8_t bitLength = 0;
    std::uint8_t bitOffset = 0;
    std::uint8_t channelNumber = 255;

    Bytes bytes() const;
};

/// A channel record of group 0x20d0 with `words` trailing 16-bit words of zero.
struct ChannelRecord
{
    std::uint8_t number = 0;
    std::uint8_t kind = 0x85; ///< Bit 7: input; bits 0-4: kind.
    std::uint8_t bitLength = 1;
    std::uint8_t bitOffset = 0;
    std::uint8_t words = 0;

    Bytes bytes() const;
};

/// An option list of group 0x20c1: its identifier and (value, text identifier) per option.
Bytes optionList(std::uint8_t id, const std::vector<std::pair<std::uint64_t, unsigned>>& options);

/// The groups that every module must have: identity, catalogue entries, component, data sizes.
/// Module type 3, identifier 0x01020304; `dataSizes` are the lines of group 0x0011.
MxBuffer minimalModule(const std::vector<std::string>& dataSizes = {},
                       std::uint32_t moduleId = 0x01020304);

} // namespace testkit
