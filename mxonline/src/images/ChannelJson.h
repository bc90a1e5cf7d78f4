#pragma once

#include <mxonline/NamedChannel.h>
#include <text/JsonText.h>

namespace mxonline {

/// Returns `channel` as the lists of channels in JSON have it.
text::Json channelJson(const NamedChannel& channel);

} // namespace mxonline
