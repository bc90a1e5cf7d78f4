#include "channels/ChannelMapOutput.h"

#include <text/Counted.h>
#include <text/IecNames.h>

#include <fmt/format.h>

#include <algorithm>

namespace mxmodule {

namespace {

using TableChannel = ChannelTable::Channel;

constexpr unsigned mostBits = 32;

const char* typeOf(const TableChannel& channel)
{
    switch (channel.sizeLetter) {
    case 'X':
        return "BOOL";
    case 'B':
        return channel.isSigned ? "SINT" : "BYTE";
    case 'W':
        return channel.isSigned ? "INT" : "WORD";
    case 'D':
        return channel.isSigned ? "DINT" : "DWORD";
    default:
        return channel.isSigned ? "LINT" : "LWORD";
    }
}

std::string bitAddress(const TableChannel& channel, std::uint64_t bit)
{
    return fmt::format("%{}X{}.{}", channel.area, bit / 8, bit % 8);
}

std::string declaration(const std::string& name, const std::string& address,
                        const std::string& type, const std::string& comment)
{
    const std::string suffix = comment.empty() ? "" : " (* " + comment + " *)";
    return fmt::format("    {} AT {} : {};{}\n", name, address, type, suffix);
}

// The name of the channel, if it differs from the identifier.
std::string nameComment(const TableChannel& channel, const std::string& identifier)
{
    return channel.name == identifier ? "" : text::iecCommentText(channel.name);
}

bool fillsBytes(const TableChannel& channel)
{
    return channel.firstBit() % 8 == 0 && channel.bits() % 8 == 0;
}

// No type is wide enough for a long field that shares its bytes.
bool isDeclared(const TableChannel& channel)
{
    return !channel.isBitField() || channel.sizeLetter == 'X' ||
           (channel.bits() != 0 && (channel.bits() <= mostBits || fillsBytes(channel)));
}

// A bit field that fills whole bytes.
std::string bytesDeclaration(const TableChannel& channel, text::IecNames& names,
                             const std::string& identifier)
{
    const unsigned bytes = channel.bits() / 8;
    return declaration(names.unique(identifier),
                       fmt::format("%{}B{}", channel.area, channel.byteAddress),
                       bytes == 1 ? "BYTE" : fmt::format("ARRAY [0..{}] OF BYTE", bytes - 1),
                       nameComment(channel, identifier));
}

std::string bitDeclarations(const TableChannel& channel, text::IecNames& names,
                            const std::string& identifier)
{
    std::string all;
    for (unsigned bit = 0; bit < channel.bits(); ++bit) {
        all += declaration(names.unique(fmt::format("{}_Bit{}", identifier, bit)),
                           bitAddress(channel, channel.firstBit() + bit), "BOOL",
                           fmt::format("{}, bit {} of {}", text::iecCommentText(channel.name), bit,
                                       channel.bits()));
    }
    return all;
}

std::string fieldDeclarations(const TableChannel& channel, text::IecNames& names,
                              const std::string& identifier)
{
    if (!isDeclared(channel)) {
        return fmt::format("    (* {}: {} from {} on, not declared *)\n",
                           text::iecCommentText(channel.name), text::counted(channel.bits(), "bit"),
                           bitAddress(channel, channel.firstBit()));
    }
    return fillsBytes(channel) ? bytesDeclaration(channel, names, identifier)
                               : bitDeclarations(channel, names, identifier);
}

std::string channelDeclarations(const TableChannel& channel, text::IecNames& names)
{
    std::string identifier = text::iecIdentifier(channel.name);
    if (identifier.empty()) {
        identifier = fmt::format("Channel_{}", channel.number);
    }
    if (channel.isBitField() && channel.sizeLetter != 'X') {
        return fieldDeclarations(channel, names, identifier);
    }
    const std::string address =
        channel.sizeLetter == 'X'
            ? bitAddress(channel, channel.firstBit())
            : fmt::format("%{}{}{}", channel.area, channel.sizeLetter, channel.byteAddress);
    const std::string name = names.unique(identifier);
    return declaration(name, address, typeOf(channel), nameComment(channel, name));
}

} // namespace

std::string iecDeclarations(const ChannelTable& map)
{
    const std::string head =
        fmt::format("(* {} ({}). Addresses count bytes. *)\n", text::iecCommentText(map.label),
                    text::iecCommentText(map.deviceTypeId));
    std::string body;
    text::IecNames names;
    for (const TableChannel& channel : map.channels) {
        body += channelDeclarations(channel, names);
    }
    // Compilers reject an empty list.
    const bool declares = std::any_of(map.channels.begin(), map.channels.end(), isDeclared);
    return head + (declares ? "VAR_GLOBAL\n" + body + "END_VAR\n" : body);
}

} // namespace mxmodule
