#include "groups/GroupCodecs.h"

#include <map>

namespace mxauthor {

namespace {

template <typename Content>
GroupContent emptyContent()
{
    return Content{};
}

// What a group of this identifier holds when its payload has the shape.
GroupContent contentFor(std::uint16_t id)
{
    using Make = GroupContent (*)();
    static const std::map<std::uint16_t, Make> types = {
        {0x0000, emptyContent<Header>},         {0x0001, emptyContent<Identity>},
        {0x0010, emptyContent<ParameterBlock>}, {0x0011, emptyContent<DataSizes>},
        {0x0020, emptyContent<Entries>},        {0x0040, emptyContent<Entries>},
        {0x20C0, emptyContent<Parameters>},     {0x20C1, emptyContent<OptionLists>},
        {0x20C2, emptyContent<Conversions>},    {0x20D0, emptyContent<Channels>},
        {0x20D3, emptyContent<TextTable>},      {0x20D7, emptyContent<ChannelNames>},
        {0x20F0, emptyContent<Extension>},      {0x20F1, emptyContent<ProductImage>},
    };
    const auto found = types.find(id);
    return found == types.end() ? GroupContent(RawGroup{}) : found->second();
}

void readInto(GroupContent& content, std::uint16_t id, const Bytes& bytes, std::uint32_t offset)
{
    PayloadReader in(id, bytes, offset);
    std::visit([&in](auto& group) { read(in, group); }, content);
}

} // namespace

GroupContent readPayload(std::uint16_t id, const Bytes& bytes, std::uint32_t offset)
{
    try {
        GroupContent content = contentFor(id);
        readInto(content, id, bytes, offset);
        return content;
    } catch (const UnexpectedShape&) {
        GroupContent raw = RawGroup{};
        readInto(raw, id, bytes, offset);
        return raw;
    }
}

Bytes writePayload(const GroupContent& content)
{
    PayloadWriter out;
    std::visit([&out](const auto& group) { write(out, group); }, content);
    return std::move(out.payload);
}

} // namespace mxauthor
