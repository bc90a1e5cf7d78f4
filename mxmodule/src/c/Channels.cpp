#include "c/Handles.h"

#include <mxmodule/c/CallFromC.h>

namespace {

using mxmodule::ChannelMap;

// Returns what `resultOf` returns for the channels of `module`.
template <typename ResultOf>
mxmodule_bytes* ofChannels(const mxmodule_module* module, mxmodule_error** error,
                           const ResultOf& resultOf)
{
    return mxmodule::bytesOfHandle(module, "a module", error, [&](const mxmodule_module& one) {
        return resultOf(one.module.channelMap());
    });
}

} // namespace

mxmodule_bytes* mxmodule_channels_json(const mxmodule_module* module, mxmodule_error** error)
{
    return ofChannels(module, error, [](const ChannelMap& map) { return map.json(); });
}

mxmodule_bytes* mxmodule_channels_text(const mxmodule_module* module, mxmodule_error** error)
{
    return ofChannels(module, error, [](const ChannelMap& map) { return map.text(); });
}

mxmodule_bytes* mxmodule_channels_csv(const mxmodule_module* module, char separator,
                                      int byteOrderMark, mxmodule_error** error)
{
    return ofChannels(module, error, [&](const ChannelMap& map) {
        return map.csv(mxmodule::csvStyleOf(separator, byteOrderMark));
    });
}

mxmodule_bytes* mxmodule_channels_declarations(const mxmodule_module* module,
                                               mxmodule_error** error)
{
    return ofChannels(module, error, [](const ChannelMap& map) { return map.declarations(); });
}

mxmodule_bytes* mxmodule_channels_svg(const mxmodule_module* module, mxmodule_error** error)
{
    return ofChannels(module, error, [](const ChannelMap& map) { return map.svg(); });
}

mxmodule_bytes* mxmodule_channels_drawing(const mxmodule_module* module, int coloured,
                                          mxmodule_error** error)
{
    return ofChannels(module, error,
                      [&](const ChannelMap& map) { return map.drawing(coloured != 0); });
}
