#include "export/DeclaredVariables.h"

#include "export/ChannelIdentifiers.h"
#include "export/ChannelWarning.h"

#include <fmt/format.h>
#include <text/Counted.h>
#include <text/TextWidth.h>
#include <text/Utf8.h>

#include <algorithm>

namespace mxstation {

namespace {

using mxmodule::IecVariable;

std::vector<std::string> suffixesOf(const Channel& channel)
{
    std::vector<std::string> suffixes;
    for (const IecVariable& variable : mxmodule::iecVariables(channel)) {
        suffixes.push_back(variable.suffix);
    }
    return suffixes.empty() ? std::vector<std::string>{""} : suffixes;
}

// The comment that the station gives the channel, otherwise module and channel.
std::string commentOf(const Channel& channel, const IecVariable& variable,
                      const std::string& identifier)
{
    const std::string what = channel.comment.empty() ? text::labelOf(channel.moduleName) + ", " +
                                                           text::labelOf(channel.name)
                                                     : text::toUtf8(channel.comment);
    const bool isOther = !channel.alias.empty() && channel.alias + variable.suffix != identifier;
    const std::string alias = isOther ? text::labelOf(channel.alias) + ": " : "";
    const std::string bit =
        variable.suffix.empty() ? "" : fmt::format(", bit {} of {}", variable.bit, variable.bits);
    return alias + what + bit;
}

IecVariable placeOnly(const Channel& channel)
{
    IecVariable place;
    place.isInput = channel.isInput;
    place.size = channel.kind;
    place.firstBit = channel.firstBit;
    place.bits = channel.bits;
    return place;
}

class Declaring
{
public:
    Declaring(const Plan& declared, AddressStyle style) : plan(declared), addresses(declared, style)
    {
        made.addresses = addresses.meaning();
    }

    DeclaredVariables make()
    {
        text::IecNames names;
        const auto identifiers = channelIdentifiers(plan, suffixesOf, names);
        for (std::size_t i = 0; i < plan.channels.size(); ++i) {
            add(plan.channels[i], identifiers[i]);
        }
        const std::string station = text::iecIdentifier(plan.station);
        made.program = names.unique(station.empty() ? "Station" : station);
        return std::move(made);
    }

private:
    void add(const Channel& channel, const std::vector<std::string>& identifiers)
    {
        const std::vector<IecVariable> variables = mxmodule::iecVariables(channel);
        for (std::size_t i = 0; i < variables.size(); ++i) {
            const auto address = addresses.of(variables[i]);
            made.all.push_back({identifiers[i], address.value_or(""), "", variables[i],
                                commentOf(channel, variables[i], identifiers[i])});
            if (!address) {
                setReason(channel, IecAddresses::reason(variables[i]),
                          "addresses that count bytes, or each size from 0, can say it");
            }
        }
        if (variables.empty()) {
            const IecVariable place = placeOnly(channel);
            made.all.push_back({identifiers.front(), "", "", place,
                                commentOf(channel, place, identifiers.front())});
            setReason(channel,
                      fmt::format("no type of IEC 61131-3 holds {} from {} on",
                                  text::counted(channel.bits, "bit"),
                                  mxmodule::iecBitAddress(channel.isInput, channel.firstBit)),
                      "");
        }
    }

    void setReason(const Channel& channel, const std::string& reason, const std::string& hint)
    {
        made.all.back().reason = fmt::format("{}, {}", channel.symbol, reason);
        made.findings.push_back(channelWarning(
            plan, channel, fmt::format("({}) is not declared: {}", channel.symbol, reason), hint));
    }

    const Plan& plan;
    IecAddresses addresses;
    DeclaredVariables made;
};

} // namespace

bool DeclaredVariables::declares() const
{
    return std::any_of(all.begin(), all.end(),
                       [](const DeclaredVariable& declared) { return !declared.address.empty(); });
}

DeclaredVariables declaredVariables(const Plan& plan, AddressStyle style)
{
    return Declaring(plan, style).make();
}

} // namespace mxstation
