#include "GroupCodecs.h"

namespace mxauthor {

namespace {

constexpr std::uint8_t fixedHeaderSize = 2; // version and descriptor

} // namespace

std::uint8_t parameterBlockHeaderSize(std::uint8_t descriptor)
{
    return static_cast<std::uint8_t>(descriptor + 4 * (descriptor & 0x3F) + fixedHeaderSize);
}

void read(PayloadReader& in, ParameterBlock& group)
{
    in.field(group.version);
    in.field(group.descriptor);
    const std::uint8_t headerSize = parameterBlockHeaderSize(group.descriptor.value);
    if (headerSize < fixedHeaderSize) {
        throw UnexpectedShape(); // the block starts within its own header
    }
    in.bytes(group.skipped, headerSize - fixedHeaderSize);
    in.rest(group.block);
}

void write(PayloadWriter& out, const ParameterBlock& group)
{
    out.field(group.version);
    out.field(group.descriptor);
    out.rest(group.skipped);
    out.rest(group.block);
}

} // namespace mxauthor
