#pragma once

#include "devices/parser/mx/ParserMxApi.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

/// The parser of mx files, and the container that they are.
namespace devices::parser::mx {

/// Where a group lies in an mx buffer.
struct GroupPlace
{
    std::uint16_t id;            ///< Of the group.
    std::uint32_t payloadOffset; ///< From the start of the buffer, in bytes.
    std::uint32_t payloadSize;   ///< In bytes.
};

/// The container reader: indexes the groups of an mx buffer and gives access to them.
///
/// The buffer is neither copied nor owned: it must outlive every access. All results point into it,
/// except the text of a group entry and the places of groups. Failures are `std::runtime_error`.
/// Concurrent readers of one indexed parser are safe, except for `getGroupEntry`.
class PARSER_MX_API Parser
{
public:
    /// Nothing is indexed yet: there are no groups.
    Parser() = default;
    virtual ~Parser();

    Parser(const Parser&) = delete;
    Parser& operator=(const Parser&) = delete;

    /// Prints one line per group to standard output; a derived parser translates the groups
    /// instead.
    virtual void parseContent();

    /// Indexes the `length` bytes at `data`, replacing what was indexed before.
    ///
    /// Throws `std::runtime_error` on malformed framing; the groups before the malformed one
    /// stay indexed.
    void parse(const std::uint8_t* data, std::uint32_t length);

    /// The same for a buffer of `char`.
    void parse(const char* data, std::uint32_t length);

    /// Returns 0: group checksums are never compared. The one place where one would be computed.
    std::uint16_t calculateCrc(const std::uint8_t* data, std::uint32_t length);

    /// Returns the place of every indexed group in file order, repeated ones included.
    std::vector<GroupPlace> groups() const;

    /// Returns the payload of the first group `id`, or null when there is none. Stores its size in
    /// bytes in `*size` (may be null) when found. The payload is part of the indexed buffer. Never
    /// throws.
    const std::uint8_t* getGroup(std::uint16_t id, std::uint32_t* size);

    /// Returns the value of the entry `key` of the text group `id`.
    ///
    /// The result is one string for the whole process: it holds until the next call. Throws when
    /// the group or the key is missing, and `std::logic_error` while another thread is in this
    /// operation or in one of a `Parser_kv38`.
    const std::string& getGroupEntry(std::uint16_t id, const std::string& key);

    /// Returns the data of the first dataset `datasetId` in group `id` and stores its length in
    /// bytes in `*len` (not null); null when the group holds none. Throws when the group is
    /// missing.
    const std::uint8_t* getTavoDatasetFromGroup(std::uint16_t id, std::uint8_t datasetId,
                                                std::uint32_t* len);

    /// Reads the module identity from group 0x0001; neither pointer may be null. Throws when the
    /// group or its dataset is missing or has another length than 5 bytes.
    void getModuleIdAndType(std::uint32_t* moduleId, std::uint8_t* moduleType);

protected:
    /// Returns how many bytes of the mx buffer there are from `offset` bytes after `payload` on, a
    /// pointer into the buffer; 0 when that place is not before the buffer's end.
    std::size_t bytesFrom(const std::uint8_t* payload, std::uint32_t offset) const;

    /// The gate for reads that the format lets run past their group: returns the place `offset`
    /// bytes from `payload`, where `count` bytes can be read. Throws "Unexpected end of mx buffer"
    /// with `group` when they leave the mx buffer.
    const std::uint8_t* bytesAt(const std::uint8_t* payload, std::uint32_t offset,
                                std::uint32_t count, std::uint16_t group) const;

    /// Every group identifier in file order, once per occurrence.
    std::vector<std::uint16_t> groupOrder;
    /// The mx buffer indexed last; not owned.
    const std::uint8_t* buffer = nullptr;
    /// Offset from the start of `buffer` and size of each group's payload, both in bytes; for a
    /// repeated identifier those of its first occurrence.
    std::unordered_map<std::uint16_t, std::pair<std::uint32_t, std::uint32_t>> groupIndex;

    /// Returns how often `parse` was called: what was learnt of a buffer holds as long as this
    /// number does.
    std::uint64_t indexings() const { return indexingCount; }

private:
    const std::uint8_t* bufferEnd = nullptr;
    std::uint64_t indexingCount = 0;
};

} // namespace devices::parser::mx
