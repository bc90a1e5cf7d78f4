#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace fuzz {

/// The words of a fuzz input: bytes that control a target, read one after the other. After the last
/// one all are zero.
class Words
{
public:
    explicit Words(std::vector<std::uint8_t> bytes) : content(std::move(bytes)) {}

    bool empty() const { return next >= content.size(); }
    std::uint8_t takeByte();
    std::uint16_t takeU16();
    std::uint32_t takeU32();
    /// Reads `count` bytes, fewer at the end.
    std::vector<std::uint8_t> takeBytes(std::size_t count);
    /// Reads the bytes up to the next line feed and drops that.
    std::string takeLine();
    /// Reads the rest.
    std::vector<std::uint8_t> takeRest() { return takeBytes(content.size()); }

private:
    std::vector<std::uint8_t> content;
    std::size_t next = 0;
};

/// An input of the targets that read mx files: the file and, after the first `separator`, words.
/// Every mx file is also such an input, without words.
struct FuzzInput
{
    static constexpr const char* separator = "<words>";

    FuzzInput(const std::uint8_t* data, std::size_t size);

    std::vector<char> file; ///< Exactly sized: AddressSanitizer detects a read after the end.
    Words words;
};

/// Formats and discards the library's log lines and error output.
void silence();

} // namespace fuzz
