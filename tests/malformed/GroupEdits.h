#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace malformed {

using Bytes = std::vector<std::uint8_t>;

/// The groups of an mx file, each of which can be changed before the file is built.
class GroupEdits
{
public:
    /// Replaces the payload of the first group `id`; without one, adds it at the end.
    void setPayload(unsigned id, const Bytes& payload);

    /// Adds a group at the end, even if the file has one of this identifier.
    void addAgain(unsigned id, const Bytes& payload);

    void drop(unsigned id); ///< Removes every group `id`.

    /// Writes over the payload of the first group `id`, from `offset` on.
    void writeOver(unsigned id, std::size_t offset, const Bytes& bytes);

    void setLength(unsigned id, unsigned length); ///< Sets a length other than the actual one.
    void setContentLength(unsigned length) { contentLength = static_cast<int>(length); }
    void setTail(const Bytes& bytes) { tail = bytes; }
    void cut(std::size_t bytes) { cutBytes = bytes; } ///< Removes bytes from the end.
    void setFile(const Bytes& bytes);                 ///< The file has only these bytes.

    /// Returns the bytes of the file. The header's content length is that of the groups unless it
    /// was set.
    std::vector<char> file() const;

    /// Returns the offset of `place` in the file: "20c0+7" (of the first such group's payload),
    /// "20c0" or "20c0/2" (where the first or second such group begins), "tail", or a number.
    std::size_t offsetOf(const std::string& place) const;

private:
    struct Group
    {
        unsigned id;
        Bytes payload;
        int length = -1; // as stated; -1: as it is
    };

    Group& first(unsigned id);
    std::size_t groupsSize() const;
    std::size_t startOf(unsigned id, unsigned occurrence) const;

    std::vector<Group> groups;
    Bytes tail;
    Bytes wholeFile;
    bool isWholeFile = false;
    int contentLength = -1;
    std::size_t cutBytes = 0;
};

} // namespace malformed
