#include "groups/Payload.h"

#include <algorithm>

namespace mxauthor {

PayloadReader::PayloadReader(std::uint16_t groupId, const Bytes& bytesOfGroup,
                             std::uint32_t fileOffset)
    : group(groupId), payload(bytesOfGroup), offset(fileOffset)
{}

// The only bounds check: every byte is read through here.
const std::uint8_t* PayloadReader::take(Place& place, std::size_t count)
{
    if (count > left()) {
        throw UnexpectedShape();
    }
    place = {group, offset + static_cast<std::uint32_t>(pos), static_cast<std::uint32_t>(count)};
    const std::uint8_t* const taken = payload.data() + pos;
    pos += count;
    return taken;
}

void PayloadReader::bytes(Field<Bytes>& field, std::size_t count)
{
    const std::uint8_t* const taken = take(field.place, count);
    field.value.assign(taken, taken + count);
}

void PayloadReader::textUpTo(Field<std::string>& field, char stop)
{
    const auto from = payload.begin() + static_cast<std::ptrdiff_t>(pos);
    const auto found = std::find(from, payload.end(), static_cast<std::uint8_t>(stop));
    const auto count = static_cast<std::size_t>(found - from);
    const std::uint8_t* const taken = take(field.place, count);
    field.value.assign(taken, taken + count);
}

void PayloadReader::literal(char expected)
{
    Place ignored;
    if (*take(ignored, 1) != static_cast<std::uint8_t>(expected)) {
        throw UnexpectedShape();
    }
}

const std::uint8_t* PayloadReader::peek(std::size_t count) const
{
    return count > left() ? nullptr : payload.data() + pos;
}

void PayloadWriter::number(std::uint64_t value, unsigned size)
{
    for (unsigned shift = 8 * size; shift > 0; shift -= 8) {
        payload.push_back(static_cast<std::uint8_t>(value >> (shift - 8)));
    }
}

std::uint8_t byteCount(std::size_t parts)
{
    if (parts > 0xFF) {
        throw std::length_error(std::to_string(parts) + " parts, 255 at most");
    }
    return static_cast<std::uint8_t>(parts);
}

} // namespace mxauthor
