#include "devices/parser/mx/ByteReaders.h"
#include "devices/parser/mx/HexText.h"
#include "devices/parser/mx/Parser.h"

#include "OneThreadAtATime.h"

#include <mxformat/Groups.h>
#include <mxformat/ModuleIdentity.h>

#include <algorithm>
#include <cassert>
#include <cstring>
#include <iostream>
#include <stdexcept>

namespace devices::parser::mx {

namespace {

constexpr std::uint32_t datasetOverhead =
    mxformat::datasetHeaderSize + mxformat::datasetTrailerSize;

// "," one byte "=" and at least two bytes more: an entry that ends closer to the payload's end than
// this is not examined.
constexpr std::size_t entryOverhead = 5;

[[noreturn]] void failNoSuchGroup(const char* operation, std::uint16_t id)
{
    throw std::runtime_error(std::string("Parser::") + operation +
                             "(): No such group: " + u16AsHex(id));
}

bool isEntry(const std::uint8_t* line, const std::string& key)
{
    return std::memcmp(line, key.data(), key.size()) == 0 && line[key.size()] == ',' &&
           line[key.size() + 2] == '=';
}

// Returns the line of the entry `key`, or null. Lines begin at the payload's start and after each
// line feed.
const std::uint8_t* findEntry(const std::uint8_t* payload, const std::uint8_t* end,
                              const std::string& key)
{
    const auto reach = key.size() + entryOverhead;
    const std::uint8_t* line = payload;
    while (static_cast<std::size_t>(end - line) > reach) {
        if (isEntry(line, key)) {
            return line;
        }
        const void* const lineFeed = std::memchr(line, '\n', static_cast<std::size_t>(end - line));
        if (lineFeed == nullptr) {
            return nullptr;
        }
        line = static_cast<const std::uint8_t*>(lineFeed) + 1;
    }
    return nullptr;
}

} // namespace

const std::uint8_t* Parser::getGroup(std::uint16_t id, std::uint32_t* size)
{
    const auto found = groupIndex.find(id);
    if (found == groupIndex.end()) {
        return nullptr;
    }
    const auto [payloadOffset, payloadSize] = found->second;
    if (size != nullptr) {
        *size = payloadSize;
    }
    return buffer + payloadOffset;
}

const std::string& Parser::getGroupEntry(std::uint16_t id, const std::string& key)
{
    const OneThreadAtATime::Use use(parsers, "Parser::getGroupEntry");
    static std::string value;
    value.clear();

    std::uint32_t size = 0;
    const std::uint8_t* payload = getGroup(id, &size);
    if (payload == nullptr) {
        failNoSuchGroup("getGroupEntry", id);
    }
    const std::uint8_t* end = payload + size;
    const std::uint8_t* line = findEntry(payload, end, key);
    if (line == nullptr) {
        throw std::runtime_error("Parser::getGroupEntry(): Key '" + key + "' not found in group " +
                                 u16AsHex(id));
    }
    const std::uint8_t* text = line + key.size() + 3;
    value.assign(text, std::find(text, end, '\r'));
    return value;
}

const std::uint8_t* Parser::getTavoDatasetFromGroup(std::uint16_t id, std::uint8_t datasetId,
                                                    std::uint32_t* len)
{
    assert(len);
    std::uint32_t size = 0;
    const std::uint8_t* payload = getGroup(id, &size);
    if (payload == nullptr) {
        failNoSuchGroup("getTavoDatasetFromGroup", id);
    }
    for (std::uint32_t pos = 0; pos + datasetOverhead < size;) {
        const std::uint8_t dataLength = readU8(payload + pos + 1);
        // The length is checked first: one that ends the list hides its own record.
        if (dataLength >= mxformat::datasetLengthLimit) {
            return nullptr;
        }
        if (readU8(payload + pos) == datasetId) {
            *len = dataLength;
            return payload + pos + mxformat::datasetHeaderSize;
        }
        pos += dataLength + datasetOverhead;
    }
    return nullptr;
}

void Parser::getModuleIdAndType(std::uint32_t* moduleId, std::uint8_t* moduleType)
{
    assert(moduleId);
    assert(moduleType);
    std::uint32_t size = 0;
    const std::uint8_t* identity =
        getTavoDatasetFromGroup(mxformat::group::identity, mxformat::identityDataset, &size);
    if (identity == nullptr) {
        throw std::runtime_error("Parser::getModuleIdAndType(): Tavo dataset not found");
    }
    if (size != mxformat::identitySize) {
        throw std::runtime_error("Parser::getModuleIdAndType(): Unexpected tavo dataset size");
    }
    *moduleType = readU8(identity);
    *moduleId = readU32BE(identity + mxformat::moduleIdOffset);
}

void Parser::parseContent()
{
    for (const std::uint16_t id : groupOrder) {
        const auto [payloadOffset, payloadSize] = groupIndex.at(id);
        // Texts, not numbers: a host's global locale must not group the digits.
        std::cout << "Group " + u16AsHex(id) + " @ " + std::to_string(payloadOffset) +
                         ", size = " + std::to_string(payloadSize)
                  << std::endl;
    }
}

} // namespace devices::parser::mx
