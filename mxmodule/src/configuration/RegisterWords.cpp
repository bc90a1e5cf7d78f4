#include "configuration/RegisterWords.h"

#include "HexBytes.h"
#include "InvalidInput.h"

#include <Poco/StringTokenizer.h>

#include <fmt/format.h>
#include <text/Hexadecimal.h>

#include <charconv>

namespace mxmodule {

namespace {

using Bytes = std::vector<char>;

bool begins(const std::string& word, const char* prefix)
{
    return word.rfind(prefix, 0) == 0;
}

std::optional<std::uint16_t> numberOf(const std::string& digits, int base)
{
    constexpr long least = -32768;
    constexpr long most = 65535;
    long number = 0;
    const char* const end = digits.data() + digits.size();
    const auto [rest, error] = std::from_chars(digits.data(), end, number, base);
    const bool isSigned = base == 16 && begins(digits, "-");
    if (digits.empty() || error != std::errc() || rest != end || isSigned || number < least ||
        number > most) {
        return std::nullopt;
    }
    return static_cast<std::uint16_t>(number);
}

bool hasLeadingZero(const std::string& word)
{
    const std::size_t digits = begins(word, "-") ? 1 : 0;
    return word.size() > digits + 1 && word[digits] == '0';
}

// The bytes of `text` read as registers; nothing if one of its words is not a register.
std::optional<Bytes> asRegisters(const std::string& text)
{
    Bytes bytes;
    const Poco::StringTokenizer words(text, " \t\r\n,;", Poco::StringTokenizer::TOK_IGNORE_EMPTY);
    for (const std::string& word : words) {
        const auto number = registerOfWord(word);
        if (!number) {
            return std::nullopt;
        }
        bytes.push_back(static_cast<char>(*number >> 8U));
        bytes.push_back(static_cast<char>(*number & 0xFFU));
    }
    return bytes;
}

std::optional<Bytes> asHexadecimal(const std::string& text)
{
    try {
        return bytesOfHex(text);
    } catch (const InvalidInput&) {
        return std::nullopt;
    }
}

[[noreturn]] void rejectReadings(const Bytes& hexadecimal, const Bytes& registers)
{
    constexpr std::size_t most = 8;
    throw InvalidInput(
        fmt::format("It can be read in 2 ways: as hexadecimal bytes {}{}, or as decimal "
                    "registers with the bytes {}{}",
                    text::hexOfBytes(hexadecimal, 0, most), hexadecimal.size() > most ? " ..." : "",
                    text::hexOfBytes(registers, 0, most), registers.size() > most ? " ..." : ""),
        "write 16#1194 or 0x1194 for a register in hexadecimal, 10#4500 for one in "
        "decimal");
}

} // namespace

std::optional<std::uint16_t> registerOfWord(const std::string& word)
{
    for (const char* prefix : {"0x", "0X", "16#"}) {
        if (begins(word, prefix)) {
            return numberOf(word.substr(std::string(prefix).size()), 16);
        }
    }
    if (begins(word, "10#")) {
        return numberOf(word.substr(3), 10);
    }
    return hasLeadingZero(word) ? std::nullopt : numberOf(word, 10);
}

std::vector<char> bytesOfRegisters(const std::string& text, std::size_t size)
{
    const auto hexadecimal = asHexadecimal(text);
    const auto registers = asRegisters(text);
    const bool fitsHexadecimal = hexadecimal && hexadecimal->size() == size;
    if (fitsHexadecimal && registers && registers->size() == size && registers != hexadecimal) {
        rejectReadings(*hexadecimal, *registers);
    }
    if (registers && !fitsHexadecimal && (registers->size() == size || !hexadecimal)) {
        return *registers;
    }
    return bytesOfHex(text);
}

} // namespace mxmodule
