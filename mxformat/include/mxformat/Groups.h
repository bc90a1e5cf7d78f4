#pragma once

#include <array>
#include <cstdint>

namespace mxformat {

/// Bytes of a group before its payload: identifier and length.
constexpr std::uint32_t groupHeaderSize = 4;

/// Bytes of a group after its payload: the checksum, which nothing compares.
constexpr std::uint32_t groupChecksumSize = 2;

/// Bytes of a group beside its payload.
constexpr std::uint32_t groupOverhead = groupHeaderSize + groupChecksumSize;

/// Bytes of the content length, with which the payload of the group `header` begins.
constexpr std::uint32_t contentLengthSize = 2;

/// Bytes from the start of a header group to the end of its content length.
constexpr std::uint32_t contentLengthEnd = groupHeaderSize + contentLengthSize;

/// Identifiers of the groups whose payload has a known shape.
namespace group {

constexpr std::uint16_t header = 0x0000;
constexpr std::uint16_t identity = 0x0001;
constexpr std::uint16_t parameterBlock = 0x0010;
constexpr std::uint16_t dataSizes = 0x0011;
constexpr std::uint16_t catalogue = 0x0020;
constexpr std::uint16_t component = 0x0040;
constexpr std::uint16_t parameters = 0x20C0;
constexpr std::uint16_t optionLists = 0x20C1;
constexpr std::uint16_t conversions = 0x20C2;
constexpr std::uint16_t channels = 0x20D0;
constexpr std::uint16_t texts = 0x20D3;
constexpr std::uint16_t channelNames = 0x20D7;
constexpr std::uint16_t extension = 0x20F0;
constexpr std::uint16_t productImage = 0x20F1;

} // namespace group

/// Returns the fewest bytes of a whole group `id`.
constexpr std::uint32_t smallestGroup(std::uint16_t id)
{
    return id == group::header ? groupOverhead + contentLengthSize : groupOverhead;
}

/// A group of known shape, as people name it.
struct GroupName
{
    std::uint16_t id;
    const char* name;
};

/// All of them, in the order in which files usually have them.
inline constexpr std::array<GroupName, 14> groupNames = {{
    {group::header, "header"},
    {group::identity, "module identity"},
    {group::catalogue, "catalogue"},
    {group::component, "component"},
    {group::extension, "extension"},
    {group::parameterBlock, "parameter block"},
    {group::dataSizes, "data sizes"},
    {group::channelNames, "channel names"},
    {group::conversions, "conversions"},
    {group::optionLists, "option lists"},
    {group::parameters, "parameters"},
    {group::channels, "channels"},
    {group::texts, "texts"},
    {group::productImage, "product image"},
}};

/// Returns the name of the group `id`, empty when its shape is not known.
constexpr const char* groupName(std::uint16_t id)
{
    for (const GroupName& known : groupNames) {
        if (known.id == id) {
            return known.name;
        }
    }
    return "";
}

} // namespace mxformat
