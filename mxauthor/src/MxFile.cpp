#include "mxauthor/MxFile.h"

#include <devices/parser/mx/ByteReaders.h>
#include <devices/parser/mx/HexText.h>
#include <devices/parser/mx/Parser.h>

#include <limits>
#include <stdexcept>

namespace mxauthor {

namespace {

namespace mx = devices::parser::mx;

constexpr std::uint32_t groupHeaderSize = 4;
constexpr std::uint32_t groupOverhead = 6;
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

} // namespace

MxFile readWholeGroups(const std::vector<char>& bytes, std::string& failure)
{
    if (bytes.size() > std::numeric_limits<std::uint32_t>::max()) {
        throw std::runtime_error("More than 4 GiB, an mx file has 65535 bytes at most");
    }
    failure.clear();
    Container container;
    try {
        container.parse(bytes.data(), static_cast<std::uint32_t>(bytes.size()));
    } catch (const std::runtime_error& found) {
        failure = found.what();
    }
    const auto* const data = reinterpret_cast<const std::uint8_t*>(bytes.data());

    // Groups stand back to back, so the order and the lengths give every place.
    MxFile file;
    std::uint32_t pos = 0;
    for (const std::uint16_t id : container.order()) {
        file.groups.push_back(readGroup(id, data, pos));
        pos += file.groups.back().place.length;
    }
    file.tail.value.assign(bytes.begin() + pos, bytes.end());
    file.tail.place = {0, pos, static_cast<std::uint32_t>(file.tail.value.size())};
    return file;
}

MxFile readMxFile(const std::vector<char>& bytes)
{
    std::string failure;
    MxFile file = readWholeGroups(bytes, failure);
    if (!failure.empty()) {
        throw std::runtime_error(failure);
    }
    return file;
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
