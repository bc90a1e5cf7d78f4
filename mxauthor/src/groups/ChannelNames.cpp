#include "GroupCodecs.h"

namespace mxauthor {

namespace {

constexpr std::size_t channelNameSize = 3;

} // namespace

void read(PayloadReader& in, ChannelNames& group)
{
    while (in.left() >= channelNameSize) {
        ChannelName& entry = group.entries.emplace_back();
        in.field(entry.channel);
        in.field(entry.textId);
    }
    in.rest(group.rest);
}

void write(PayloadWriter& out, const ChannelNames& group)
{
    for (const ChannelName& entry : group.entries) {
        out.field(entry.channel);
        out.field(entry.textId);
    }
    out.rest(group.rest);
}

} // namespace mxauthor
