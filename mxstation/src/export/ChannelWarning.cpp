#include "export/ChannelWarning.h"

#include "text/StationErrors.h"

#include <fmt/format.h>
#include <text/TextWidth.h>

namespace mxstation {

std::string channelText(const Channel& channel)
{
    return fmt::format("channel \"{}\" of module {} \"{}\"", text::labelOf(channel.name),
                       channel.module, text::labelOf(channel.moduleName));
}

mxmodule::Finding channelWarning(const Plan& plan, const Channel& channel, const std::string& text,
                                 const std::string& hint)
{
    const bool isKnown = channel.module > 0 && channel.module <= plan.modules.size();
    const SourcePlace place = isKnown ? plan.modules[channel.module - 1].place : SourcePlace();
    return findingAt(plan.file, plan.source, place, mxmodule::Severity::Warning,
                     channelText(channel) + " " + text, hint);
}

} // namespace mxstation
