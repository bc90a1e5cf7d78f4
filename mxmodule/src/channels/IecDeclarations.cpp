#include "channels/ChannelMapOutput.h"

#include <mxmodule/IecVariable.h>
#include <text/Counted.h>
#include <text/IecNames.h>

#include <fmt/format.h>

namespace mxmodule {

namespace {

std::string commentOf(const MappedChannel& channel, const IecVariable& variable,
                      const std::string& identifier)
{
    if (!variable.suffix.empty()) {
        return fmt::format(" (* {}, bit {} of {} *)", text::iecCommentText(channel.name),
                           variable.bit, variable.bits);
    }
    const std::string name = channel.name == identifier ? "" : text::iecCommentText(channel.name);
    return name.empty() ? "" : " (* " + name + " *)";
}

std::string declaration(const MappedChannel& channel, const IecVariable& variable,
                        text::IecNames& names)
{
    const std::string identifier = names.unique(iecIdentifier(channel) + variable.suffix);
    return fmt::format("    {} AT {} : {};{}\n", identifier, iecByteAddress(variable),
                       iecTypeText(variable), commentOf(channel, variable, identifier));
}

std::string undeclared(const MappedChannel& channel)
{
    return fmt::format("    (* {}: {} from {} on, not declared *)\n",
                       text::iecCommentText(channel.name), text::counted(channel.bits, "bit"),
                       iecBitAddress(channel.isInput, channel.firstBit));
}

} // namespace

std::string iecDeclarations(const ChannelTable& map)
{
    const std::string head =
        fmt::format("(* {} ({}). Addresses count bytes. *)\n", text::iecCommentText(map.label),
                    text::iecCommentText(map.deviceTypeId));
    std::string body;
    text::IecNames names;
    bool declares = false;
    for (const MappedChannel& channel : map.channels) {
        const std::vector<IecVariable> variables = iecVariables(channel);
        for (const IecVariable& variable : variables) {
            body += declaration(channel, variable, names);
        }
        body += variables.empty() ? undeclared(channel) : "";
        declares = declares || !variables.empty();
    }
    // Compilers reject an empty list.
    return head + (declares ? "VAR_GLOBAL\n" + body + "END_VAR\n" : body);
}

} // namespace mxmodule
