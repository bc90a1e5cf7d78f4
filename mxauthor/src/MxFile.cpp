#include "mxauthor/MxFile.h"

#include "groups/Payload.h"

#include <devices/parser/mx/ByteReaders.h>
#include <devices/parser/mx/HexText.h>
#include <devices/parser/mx/Parser.h>
#include <mxformat/Groups.h>

#include <algorithm>
#include <limits>
#include <stdexcept>

namespace mxauthor {

namespace {

namespace mx = devices::parser::mx;

using mxformat::contentLengthEnd;
using mxformat::groupChecksumSize;
using mxformat::groupHeaderSize;
constexpr std::size_t groupSizeLimit = 0xFFFF;

Group readGroup(const mx::GroupPlace& place, const std::uint8_t* data)
{
    const std::uint8_t* const payload = data + place.payloadOffset;
    const Bytes bytes(payload, payload + place.payloadSize);
    Group group;
    group.id = place.id;
    group.place = {place.id, place.payloadOffset - groupHeaderSize,
                   place.payloadSize + mxformat::groupOverhead};
    group.content = readPayload(place.id, bytes, place.payloadOffset);
    group.checksum.value = mx::readU16BE(payload + place.payloadSize);
    group.checksum.place = {place.id, place.payloadOffset + place.payloadSize, groupChecksumSize};
    return group;
}

void write(PayloadWriter& out, const Group& group)
{
    const Bytes payload = writePayload(group.content);
    const std::size_t length = payload.size() + mxformat::groupOverhead;
    if (length > groupSizeLimit) {
        throw std::length_error("Group " + mx::u16AsHex(group.id) + " would have " +
                                std::to_string(length) + " bytes, 65535 at most");
    }
    out.field(Field(group.id));
    out.field(Field(static_cast<std::uint16_t>(length)));
    out.append(payload);
    out.field(group.checksum);
}

std::uint32_t sizeOf(const std::vector<char>& bytes)
{
    if (bytes.size() > std::numeric_limits<std::uint32_t>::max()) {
        throw std::runtime_error("More than 4 GiB, an mx file has 65535 bytes at most");
    }
    return static_cast<std::uint32_t>(bytes.size());
}

MxFile contentOf(const std::vector<char>& bytes, const std::vector<mx::GroupPlace>& places)
{
    const auto* const data = reinterpret_cast<const std::uint8_t*>(bytes.data());
    MxFile file;
    file.groups.reserve(places.size());
    for (const mx::GroupPlace& place : places) {
        file.groups.push_back(readGroup(place, data));
    }
    const std::uint32_t pos = file.groups.empty() ? 0 : file.groups.back().place.end();
    file.tail.value.assign(bytes.begin() + pos, bytes.end());
    file.tail.place = {0, pos, static_cast<std::uint32_t>(file.tail.value.size())};
    return file;
}

// The groups that the container reader finds up to a failure.
struct FramedGroups
{
    std::vector<mx::GroupPlace> places;
    std::optional<std::string> failure;
};

FramedGroups framedGroups(const std::vector<char>& bytes)
{
    FramedGroups framed;
    mx::Parser container;
    try {
        container.parse(bytes.data(), sizeOf(bytes));
    } catch (const std::runtime_error& found) {
        framed.failure = found.what();
    }
    framed.places = container.groups();
    return framed;
}

// The file with a header that asks for no more bytes than there are.
std::vector<char> withReachableEnd(std::vector<char> bytes)
{
    if (bytes.size() >= contentLengthEnd && bytes[0] == 0 && bytes[1] == 0) {
        const std::size_t length = std::min(bytes.size(), groupSizeLimit);
        bytes[contentLengthEnd - 2] = static_cast<char>(length >> 8);
        bytes[contentLengthEnd - 1] = static_cast<char>(length & 0xFF);
    }
    return bytes;
}

} // namespace

MxFile readMxFile(const std::vector<char>& bytes)
{
    ReadGroups read = readWholeGroups(bytes);
    if (read.failure) {
        throw std::runtime_error(*read.failure);
    }
    return std::move(read.file);
}

ReadGroups readWholeGroups(const std::vector<char>& bytes)
{
    const FramedGroups framed = framedGroups(bytes);
    return {contentOf(bytes, framed.places), framed.failure};
}

ReadGroups readDamagedMxFile(const std::vector<char>& bytes)
{
    const FramedGroups framed = framedGroups(bytes);
    // A header that asks for more bytes than there are hides the groups after it.
    return {contentOf(bytes, framed.failure ? framedGroups(withReachableEnd(bytes)).places
                                            : framed.places),
            framed.failure};
}

Bytes writeMxFile(const MxFile& file)
{
    PayloadWriter out;
    for (const Group& group : file.groups) {
        write(out, group);
    }
    out.rest(file.tail);
    return std::move(out.payload);
}

} // namespace mxauthor
