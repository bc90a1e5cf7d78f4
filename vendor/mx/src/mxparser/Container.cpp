#include "devices/parser/mx/ByteReaders.h"
#include "devices/parser/mx/HexText.h"
#include "devices/parser/mx/Parser.h"

#include <mxformat/Groups.h>

#include <stdexcept>

namespace devices::parser::mx {

namespace {

using mxformat::groupHeaderSize;
using mxformat::groupOverhead;
using mxformat::smallestGroup;

[[noreturn]] void failAtGroup(std::uint16_t id, std::uint32_t start, const char* reason)
{
    throw std::runtime_error("Parser::parse(): Error in group " + std::to_string(id) + " (@ " +
                             std::to_string(start) + "): " + reason);
}

constexpr const char* outOfBounds = "Index position out of bounds";
constexpr const char* invalidLength = "Invalid group length";

// Whether `count` bytes from `pos` lie before `end`; `end` may have shrunk to before `pos`.
bool fits(std::uint32_t pos, std::uint32_t count, std::uint32_t end)
{
    return pos <= end && count <= end - pos;
}

void checkGroup(std::uint16_t id, std::uint32_t pos, std::uint32_t length, std::uint32_t end)
{
    if (!fits(pos, length, end)) {
        failAtGroup(id, pos, outOfBounds);
    }
    if (length < smallestGroup(id)) {
        failAtGroup(id, pos, invalidLength);
    }
}

// Checks a header group and returns the end that its content length states. The bytes of the
// content length may be after an end that an earlier header group has stated, but not after the
// buffer.
std::uint32_t checkHeaderGroup(const std::uint8_t* data, std::uint32_t bufferSize,
                               std::uint32_t pos, std::uint32_t length, std::uint32_t end)
{
    if (length < smallestGroup(mxformat::group::header)) {
        failAtGroup(mxformat::group::header, pos, invalidLength);
    }
    if (!fits(pos, mxformat::contentLengthEnd, bufferSize)) {
        failAtGroup(mxformat::group::header, pos, outOfBounds);
    }
    const std::uint32_t declared = readU16BE(data + pos + groupHeaderSize);
    if (declared > end) {
        throw std::runtime_error("Parser::parse(): Truncated mx buffer");
    }
    if (!fits(pos, length, declared)) {
        failAtGroup(mxformat::group::header, pos, outOfBounds);
    }
    return declared;
}

} // namespace

Parser::~Parser() = default;

void Parser::parse(const std::uint8_t* data, std::uint32_t length)
{
    buffer = data;
    bufferEnd = data + length;
    groupIndex.clear();
    groupOrder.clear();
    ++indexingCount;

    std::uint32_t end = length;
    std::uint32_t pos = 0;
    while (pos < end && end - pos > groupHeaderSize) {
        const std::uint16_t id = readU16BE(data + pos);
        const std::uint32_t groupLength = readU16BE(data + pos + 2);
        if (id == mxformat::group::header) {
            end = checkHeaderGroup(data, length, pos, groupLength, end);
        } else {
            checkGroup(id, pos, groupLength, end);
        }
        // Of a repeated identifier the first occurrence stays.
        groupIndex.try_emplace(id, pos + groupHeaderSize, groupLength - groupOverhead);
        groupOrder.push_back(id);
        pos += groupLength;
    }
}

// The groups lie one after the other, so their order and lengths give every place.
std::vector<GroupPlace> Parser::groups() const
{
    std::vector<GroupPlace> places;
    places.reserve(groupOrder.size());
    std::uint32_t start = 0;
    for (const std::uint16_t id : groupOrder) {
        const std::uint32_t length = readU16BE(buffer + start + 2);
        places.push_back({id, start + groupHeaderSize, length - groupOverhead});
        start += length;
    }
    return places;
}

void Parser::parse(const char* data, std::uint32_t length)
{
    parse(reinterpret_cast<const std::uint8_t*>(data), length);
}

std::uint16_t Parser::calculateCrc(const std::uint8_t* /*data*/, std::uint32_t /*length*/)
{
    return 0;
}

std::size_t Parser::bytesFrom(const std::uint8_t* payload, std::uint32_t offset) const
{
    const auto available = static_cast<std::size_t>(bufferEnd - payload);
    return offset < available ? available - offset : 0;
}

const std::uint8_t* Parser::bytesAt(const std::uint8_t* payload, std::uint32_t offset,
                                    std::uint32_t count, std::uint16_t group) const
{
    if (count > bytesFrom(payload, offset)) {
        throw std::runtime_error("Unexpected end of mx buffer (group " + u16AsHex(group) + ")");
    }
    return payload + offset;
}

} // namespace devices::parser::mx
