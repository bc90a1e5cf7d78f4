// Mutates an mx file group by group: a mutation of plain bytes nearly always breaks the framing, so
// that the code after it is never reached. A quarter of the mutations is plain.
#include "FuzzInput.h"

#include <algorithm>
#include <random>
#include <vector>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

namespace {

using Bytes = std::vector<std::uint8_t>;
using Random = std::minstd_rand;

constexpr std::size_t headerSize = 4;
constexpr std::size_t overhead = 6;
constexpr std::size_t largestGroup = 0xFFFF;

struct Group
{
    std::uint16_t id;
    Bytes payload;
};

// The groups of an input as far as the framing is valid, and the bytes after them.
struct Parts
{
    std::vector<Group> groups;
    Bytes rest;
};

std::uint16_t readU16(const std::uint8_t* bytes)
{
    return static_cast<std::uint16_t>(bytes[0] << 8 | bytes[1]);
}

Parts split(const std::uint8_t* data, std::size_t size)
{
    Parts parts;
    std::size_t pos = 0;
    while (size - pos >= overhead) {
        const std::size_t length = readU16(data + pos + 2);
        if (length < overhead || length > size - pos) {
            break;
        }
        parts.groups.push_back(
            {readU16(data + pos), Bytes(data + pos + headerSize, data + pos + length - 2)});
        pos += length;
    }
    parts.rest.assign(data + pos, data + size);
    return parts;
}

void appendU16(Bytes& bytes, std::size_t value)
{
    bytes.push_back(static_cast<std::uint8_t>(value >> 8));
    bytes.push_back(static_cast<std::uint8_t>(value));
}

// Reassembles the input. The content length of a header covers all groups.
Bytes join(const Parts& parts)
{
    std::size_t total = 0;
    for (const Group& group : parts.groups) {
        total += group.payload.size() + overhead;
    }
    Bytes bytes;
    for (const Group& group : parts.groups) {
        appendU16(bytes, group.id);
        appendU16(bytes, group.payload.size() + overhead);
        const std::size_t start = bytes.size();
        bytes.insert(bytes.end(), group.payload.begin(), group.payload.end());
        if (group.id == 0 && group.payload.size() >= 2 && total <= largestGroup) {
            bytes[start] = static_cast<std::uint8_t>(total >> 8);
            bytes[start + 1] = static_cast<std::uint8_t>(total);
        }
        appendU16(bytes, 0);
    }
    bytes.insert(bytes.end(), parts.rest.begin(), parts.rest.end());
    return bytes;
}

void mutateBytes(Bytes& bytes, std::size_t most)
{
    const std::size_t size = bytes.size();
    bytes.resize(std::max<std::size_t>(std::min(most, size + 64), std::max<std::size_t>(size, 1)));
    bytes.resize(LLVMFuzzerMutate(bytes.data(), size, bytes.size()));
}

void mutateGroups(Parts& parts, Random& random)
{
    const std::size_t chosen = random() % parts.groups.size();
    const auto position = parts.groups.begin() + static_cast<std::ptrdiff_t>(chosen);
    switch (random() % 16) {
    case 0:
        parts.groups.erase(position);
        break;
    case 1:
        parts.groups.push_back(*position);
        break;
    case 2:
        std::swap(*position, parts.groups[random() % parts.groups.size()]);
        break;
    case 3:
        position->id = parts.groups[random() % parts.groups.size()].id;
        break;
    case 4:
    case 5:
        mutateBytes(parts.rest, largestGroup);
        break;
    default:
        mutateBytes(position->payload, largestGroup - overhead);
    }
}

} // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t maxSize, unsigned seed);

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t maxSize, unsigned seed)
{
    Random random(seed);
    Parts parts = split(data, size);
    if (parts.groups.empty() || random() % 4 == 0) {
        return LLVMFuzzerMutate(data, size, maxSize);
    }
    mutateGroups(parts, random);
    const Bytes mutated = join(parts);
    const std::size_t taken = std::min(mutated.size(), maxSize);
    std::copy_n(mutated.begin(), taken, data);
    return taken;
}
