#include "mxauthor/MxFile.h"

#include <devices/parser/mx/ByteReaders.h>
#include <devices/parser/mx/HexText.h>
#include <devices/parser/mx/Parser.h>

#include <algorithm>
#include <limits>
#include <stdexcept>

namespace mxauthor {

namespace {

namespace mx = devices::parser::mx;

constexpr std::uint32_t groupHeaderSize = 4;
constexpr std::size_t headerSize = 6; // identifier, length, content length
constexpr std::uint32_t checksumSize = 2;
constexpr std::size_t groupSizeLimit = 0xFFFF;

// Opens the container reader's list of groups.
class Container : public mx::Parser
{
public:
    const std::vector<std::uint16_t>& order() const { return groupOrder; }
};

Group readGroup(std::uint16_t id, const std::uint8_t* data, std::uint32_t start)
{
    const std::uint32_t length = mx::readU16BE(data + start + 2);
    const std::uint8_t* const payload = data + start + groupHeaderSize;
    const Bytes bytes(payload, payload + (length - groupOverhead));
    Group group;
    group.id = id;
    group.place = {id, start, length};
    group.content = readPayload(id, bytes, start + groupHeaderSize);
    const std::uint32_t checksumStart = start + length - checksumSize;
    group.checksum.value = mx::readU16BE(data + checksumStart);
    group.checksum.place = {id, checksumStart, checksumSize};
    return group;
}

void append(Bytes& target, const Bytes& source)
{
    target.insert(target.end(), source.begin(), source.end());
}

void appendU16(Bytes& target, std::size_t value)
{
    target.push_back(static_cast<std::uint8_t>(value >> 8));
    target.push_back(static_cast<std::uint8_t>(value));
}

void appendGroup(Bytes& target, const Group& group)
{
    const Bytes payload = writePayload(group.content);
    const std::size_t length = payload.size() + groupOverhead;
    if (length > groupSizeLimit) {
        throw std::length_error("Group " + mx::u16AsHex(group.id) + " would have " +
                                std::to_string(length) + " bytes, 65535 at most");
    }
    appendU16(target, group.id);
    appendU16(target, length);
    append(target, payload);
    appendU16(target, group.checksum.value);
}

std::uint32_t sizeOf(const std::vector<char>& bytes)
{
    if (bytes.size() > std::numeric_limits<std::uint32_t>::max()) {
        throw std::runtime_error("More than 4 GiB, an mx file has 65535 bytes at most");
    }
    return static_cast<std::uint32_t>(bytes.size());
}

// The groups stand back to back, so the order and the lengths give every place.
MxFile contentOf(const std::vector<char>& bytes, const std::vector<std::uint16_t>& order)
{
    const auto* const data = reinterpret_cast<const std::uint8_t*>(bytes.data());
    MxFile file;
    std::uint32_t pos = 0;
    for (const std::uint16_t id : order) {
        file.groups.push_back(readGroup(id, data, pos));
        pos += file.groups.back().place.length;
    }
    file.tail.value.assign(bytes.begin() + pos, bytes.end());
    file.tail.place = {0, pos, static_cast<std::uint32_t>(file.tail.value.size())};
    return file;
}

// The groups that the container reader finds in front of a failure, which goes to `*failure`.
std::vector<std::uint16_t> wholeGroups(const std::vector<char>& bytes, std::string* failure)
{
    failure->clear();
    Container container;
    try {
        container.parse(bytes.data(), sizeOf(bytes));
    } catch (const std::runtime_error& found) {
        *failure = found.what();
    }
    return container.order();
}

// The file with a header that asks for no more bytes than there are.
std::vector<char> withReachableEnd(std::vector<char> bytes)
{
    if (bytes.size() >= headerSize && bytes[0] == 0 && bytes[1] == 0) {
        const std::size_t length = std::min(bytes.size(), groupSizeLimit);
        bytes[headerSize - 2] = static_cast<char>(length >> 8);
        bytes[headerSize - 1] = static_cast<char>(length & 0xFF);
    }
    return bytes;
}

} // namespace

MxFile readMxFile(const std::vector<char>& bytes)
{
    std::string failure;
    MxFile file = readWholeGroups(bytes, &failure);
    if (!failure.empty()) {
        throw std::runtime_error(failure);
    }
    return file;
}

MxFile readWholeGroups(const std::vector<char>& bytes, std::string* failure)
{
    return contentOf(bytes, wholeGroups(bytes, failure));
}

MxFile readDamagedMxFile(const std::vector<char>& bytes, std::string* failure)
{
    const std::vector<std::uint16_t> order = wholeGroups(bytes, failure);
    if (failure->empty()) {
        return contentOf(bytes, order);
    }
    // A header that asks for more bytes than there are hides the groups behind it.
    std::string ignored;
    return contentOf(bytes, wholeGroups(withReachableEnd(bytes), &ignored));
}

Bytes writeMxFile(const MxFile& file)
{
    Bytes bytes;
    for (const Group& group : file.groups) {
        appendGroup(bytes, group);
    }
    append(bytes, file.tail.value);
    return bytes;
}

} // namespace mxauthor
