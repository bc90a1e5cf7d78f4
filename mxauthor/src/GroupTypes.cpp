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
        {mxformat::group::header, emptyContent<Header>},
        {mxformat::group::identity, emptyContent<Identity>},
        {mxformat::group::parameterBlock, emptyContent<ParameterBlock>},
        {mxformat::group::dataSizes, emptyContent<DataSizes>},
        {mxformat::group::catalogue, emptyContent<Entries>},
        {mxformat::group::component, emptyContent<Entries>},
        {mxformat::group::parameters, emptyContent<Parameters>},
        {mxformat::group::optionLists, emptyContent<OptionLists>},
        {mxformat::group::conversions, emptyContent<Conversions>},
        {mxformat::group::channels, emptyContent<Channels>},
        {mxformat::group::texts, emptyContent<TextTable>},
        {mxformat::group::channelNames, emptyContent<ChannelNames>},
        {mxformat::group::extension, emptyContent<Extension>},
        {mxformat::group::productImage, emptyContent<ProductImage>},
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
