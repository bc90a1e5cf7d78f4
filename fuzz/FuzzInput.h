#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace fuzz {

/// The words of a fuzz input: bytes that steer a target, taken one after the other. Behind the last
/// one there are zeros.
class Words
{
public:
    explicit Words(std::vector<std::uint8_t> bytes) : content(std::move(bytes)) {}

    bool empty() const { return next >= content.size(); }
    std::uint8_t takeByte();
    std::uint16_t takeU16();
    std::uint32_t takeU32();
    /// Takes `count` bytes, fewer at the end.
    std::vector<std::uint8_t> takeBytes(std::size_t count);
    /// Takes the bytes up to the next line feed, which is dropped.
    std::string takeLine();
    /// Takes the rest.
    std::vector<std::uint8_t> takeRest() { return takeBytes(content.size()); }

private:
    std::vector<std::uint8_t> content;
    std::size_t next = 0;
};

/// An input of the targets that read mx files: the file and, behind the first `separator`, words.
/// Every mx file is such an input, without words.
struct FuzzInput
{
    static constexpr const char* separator = "<words>";

    FuzzInput(const std::uint8_t* data, std::size_t size);

    std::vector<char> file; ///< Nothing behind it: one byte too far is seen by AddressSanitizer.
    Words words;
};

/// Keeps the library's log lines and complaints from the terminal: they are formatted, for nobody.
void silence();

} // namespace fuzz
