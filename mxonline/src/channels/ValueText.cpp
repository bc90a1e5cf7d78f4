#include "channels/ValueText.h"

#include "channels/ChannelNames.h"

#include <Poco/String.h>
#include <fmt/format.h>
#include <mxmodule/Finding.h>
#include <text/Beginning.h>
#include <text/Hexadecimal.h>
#include <text/WholeNumber.h>

namespace mxonline {

namespace {

using mxstation::Channel;

constexpr unsigned mostBitsOfNumber = 64;

std::uint64_t maskOf(const Channel& channel)
{
    return ~std::uint64_t{0} >> (mostBitsOfNumber - channel.bits);
}

std::size_t byteCountOf(const Channel& channel)
{
    return (channel.bits + 7) / 8;
}

std::uint64_t numberOf(const ValueBits& bits)
{
    std::uint64_t number = 0;
    for (std::size_t i = bits.size(); i > 0; --i) {
        number = number << 8 | bits[i - 1];
    }
    return number;
}

ValueBits bitsOfNumber(std::uint64_t number, std::size_t bytes)
{
    ValueBits bits(bytes);
    for (std::uint8_t& byte : bits) {
        byte = static_cast<std::uint8_t>(number);
        number >>= 8;
    }
    return bits;
}

std::optional<std::uint64_t> bitOf(const std::string& text)
{
    const std::string word = Poco::toLower(text);
    if (word == "1" || word == "true" || word == "on") {
        return 1;
    }
    return word == "0" || word == "false" || word == "off" ? std::optional(std::uint64_t{0})
                                                           : std::nullopt;
}

std::optional<std::uint64_t> signedNumber(const Channel& channel, const std::string& text)
{
    const auto number = text::wholeNumber<std::int64_t>(text);
    const auto most = static_cast<std::int64_t>(maskOf(channel) >> 1);
    if (!number || *number > most || *number < -most - 1) {
        return std::nullopt;
    }
    return static_cast<std::uint64_t>(*number) & maskOf(channel);
}

// The bits of the value, nothing if `text` is none.
std::optional<std::uint64_t> numberIn(const Channel& channel, const std::string& text)
{
    if (channel.bits == 1) {
        return bitOf(text);
    }
    const bool isHex = text.compare(0, 2, "0x") == 0 || text.compare(0, 2, "0X") == 0;
    if (channel.isSigned && !isHex) {
        return signedNumber(channel, text);
    }
    const auto number = isHex ? text::wholeNumber<std::uint64_t>(text.substr(2), 16)
                              : text::wholeNumber<std::uint64_t>(text);
    return number && *number <= maskOf(channel) ? number : std::nullopt;
}

std::optional<ValueBits> longBits(const Channel& channel, const std::string& text)
{
    const auto bytes = text::fromHex(text);
    if (!bytes || bytes->size() != byteCountOf(channel)) {
        return std::nullopt;
    }
    const unsigned used = (channel.bits - 1) % 8 + 1; // of the last byte
    return bytes->back() >> used == 0 ? bytes : std::nullopt;
}

std::string hexText(std::uint64_t bits, const Channel& channel)
{
    return "0x" + text::hexOf(bits, static_cast<int>((channel.bits + 3) / 4));
}

} // namespace

ChannelValue valueOf(const Channel& channel, const ValueBits& bits)
{
    ChannelValue value;
    if (channel.bits > mostBitsOfNumber) {
        value.text = text::hexOfBytes(bits.data(), bits.size(), " ");
        return value;
    }
    const std::uint64_t number = numberOf(bits);
    const bool isNegative = channel.isSigned && number > maskOf(channel) >> 1;
    value.number = isNegative ? number | ~maskOf(channel) : number;
    value.text = isNegative ? std::to_string(static_cast<std::int64_t>(value.number))
                            : std::to_string(number);
    value.hex = channel.bits == 1 ? "" : hexText(number, channel);
    return value;
}

bool isNumber(const ChannelValue& value)
{
    return value.text.find(' ') == std::string::npos;
}

ValueBits bitsOf(const Channel& channel, const std::string& text)
{
    std::optional<ValueBits> bits;
    if (channel.bits > mostBitsOfNumber) {
        bits = longBits(channel, text);
    } else if (const auto number = numberIn(channel, text)) {
        bits = bitsOfNumber(*number, byteCountOf(channel));
    }
    if (!bits) {
        const std::string accepted = acceptedValues(channel);
        mxmodule::Finding finding;
        finding.origin = mxmodule::Origin::Request;
        finding.text = fmt::format("{}: found the value \"{}\", expected {}", channelText(channel),
                                   text::abbreviated(text), accepted);
        finding.accepted = {accepted};
        throw mxmodule::Failure(finding);
    }
    return *bits;
}

std::string acceptedValues(const Channel& channel)
{
    if (channel.bits == 1) {
        return "0 or 1";
    }
    if (channel.bits > mostBitsOfNumber) {
        const std::string bytes =
            fmt::format("{} bytes as hexadecimal digits", byteCountOf(channel));
        const unsigned used = channel.bits % 8;
        return used == 0 ? bytes
                         : bytes + fmt::format(", the last at most {:02x}", 0xFFU >> (8 - used));
    }
    const std::uint64_t mask = maskOf(channel);
    const std::string range = channel.isSigned
                                  ? fmt::format("-{} to {}", (mask >> 1) + 1, mask >> 1)
                                  : fmt::format("0 to {}", mask);
    return fmt::format("{} ({} to {})", range, hexText(0, channel), hexText(mask, channel));
}

} // namespace mxonline
