#include "MxBuffer.h"

#include <stdexcept>

namespace testkit {

namespace {

void append(Bytes& target, const Bytes& source)
{
    target.insert(target.end(), source.begin(), source.end());
}

Bytes u64(std::uint64_t value)
{
    return join(
        {u32(static_cast<std::uint32_t>(value >> 32)), u32(static_cast<std::uint32_t>(value))});
}

} // namespace

Bytes hexBytes(const std::string& hex)
{
    std::string digits;
    for (const char c : hex) {
        if (c != ' ' && c != '\n') {
            digits += c;
        }
    }
    if (digits.size() % 2 != 0) {
        throw std::invalid_argument("odd number of hexadecimal digits: " + hex);
    }
    Bytes bytes;
    for (std::size_t i = 0; i < digits.size(); i += 2) {
        bytes.push_back(static_cast<std::uint8_t>(std::stoul(digits.substr(i, 2), nullptr, 16)));
    }
    return bytes;
}

Bytes textBytes(const std::string& text)
{
    return {text.begin(), text.end()};
}

Bytes u16(unsigned value)
{
    return {static_cast<std::uint8_t>(value >> 8), static_cast<std::uint8_t>(value)};
}

Bytes u32(std::uint32_t value)
{
    return join({u16(value >> 16), u16(value & 0xFFFFU)});
}

Bytes join(const std::vector<Bytes>& parts)
{
    Bytes all;
    for (const Bytes& part : parts) {
        append(all, part);
    }
    return all;
}

MxBuffer& MxBuffer::group(std::uint16_t id, const Bytes& payload)
{
    append(content,
           join({u16(id), u16(static_cast<unsigned>(payload.size() + 6)), payload, u16(0)}));
    return *this;
}

MxBuffer& MxBuffer::raw(const Bytes& bytes)
{
    append(content, bytes);
    return *this;
}

std::vector<char> MxBuffer::chars() const
{
    return {content.begin(), content.end()};
}

Bytes identityPayload(std::uint8_t moduleType, std::uint32_t moduleId)
{
    return join({{0xFB, 5, 0, moduleType}, u32(moduleId), {0, 0}});
}

Bytes entriesPayload(const std::vector<std::pair<std::string, std::string>>& entries)
{
    std::string lines;
    for (const auto& [key, value] : entries) {
        lines += key + ",s=" + value + "\r\n";
    }
    return textBytes(lines);
}

Bytes textTablePayload(const std::vector<std::pair<unsigned, std::string>>& texts)
{
    Bytes payload{0, 2};
    for (const auto& [id, text] : texts) {
        append(payload, join({u16(id), textBytes(text), {0x0D, 0x0A}}));
    }
    return payload;
}

Bytes linesPayload(const std::vector<std::string>& lines)
{
    std::string all;
    for (const std::string& line : lines) {
        all += line + "\r\n";
    }
    return textBytes(all);
}

Bytes ParameterRecord::bytes() const
{
    return join({{number},
                 u16(nameId),
                 {position, datatype, showMe, conversionId, mapId},
                 u64(minimum),
                 u64(maximum),
                 u16(unitId),
                 {bitLength, bitOffset, channelNumber}});
}

Bytes ChannelRecord::bytes() const
{
    return join({{number, kind, 0, bitLength, bitOffset, 0, words}, Bytes(2U * words, 0)});
}

Bytes optionList(std::uint8_t id, const std::vector<std::pair<std::uint64_t, unsigned>>& options)
{
    Bytes list{id, static_cast<std::uint8_t>(options.size())};
    for (const auto& [value, textId] : options) {
        append(list, join({u64(value), u16(textId)}));
    }
    return list;
}

MxBuffer minimalModule(const std::vector<std::string>& dataSizes, std::uint32_t moduleId)
{
    MxBuffer buffer;
    buffer.group(0x0001, identityPayload(3, moduleId));
    buffer.group(0x0020, entriesPayload({{"BrandId", "41"},
                                         {"BrandLabelName", "Test module"},
                                         {"BrandVersion", "2.1"},
                                         {"BrandSerialNumber", "0"},
                                         {"ProductVersion", "01.02.03"},
                                         {"BrandOrderCode", "K38-T"},
                                         {"BrandHwRevision", "05"}}));
    buffer.group(0x0040, entriesPayload({{"Component", "kv38-test"}, {"Creator", "testkit"}}));
    buffer.group(0x0011, linesPayload(dataSizes));
    return buffer;
}

} // namespace testkit
