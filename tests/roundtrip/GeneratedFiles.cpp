#include "GeneratedFiles.h"

#include <devices/parser/mx/Parser.h>

#include <algorithm>
#include <stdexcept>

namespace roundtrip {

using testkit::Bytes;
using testkit::join;
using testkit::textBytes;
using testkit::u16;
using testkit::u32;

namespace {

bool framingHolds(const std::vector<char>& bytes)
{
    devices::parser::mx::Parser container;
    try {
        container.parse(bytes.data(), static_cast<std::uint32_t>(bytes.size()));
        return true;
    } catch (const std::runtime_error&) {
        return false;
    }
}

std::uint8_t byte(unsigned value)
{
    return static_cast<std::uint8_t>(value);
}

} // namespace

unsigned GeneratedFiles::textId()
{
    if (textCount == 0 || (!plain && chance(10))) {
        return below(0x10000);
    }
    return firstText + textStep * below(textCount);
}

Bytes GeneratedFiles::noise(unsigned size)
{
    Bytes bytes(size);
    for (std::uint8_t& each : bytes) {
        each = byte(below(256));
    }
    return bytes;
}

std::string GeneratedFiles::text()
{
    static const std::vector<std::string> words = {"Filter",
                                                   "DI 1",
                                                   "-",
                                                   "V",
                                                   "\xB0"
                                                   "C",
                                                   "10",
                                                   "a: b",
                                                   "#",
                                                   "true",
                                                   "~",
                                                   "\x80\x81\x9F\xFF",
                                                   "'quoted\"",
                                                   " blank ",
                                                   "",
                                                   "[1, 2]",
                                                   "a, b",
                                                   "0x10",
                                                   "\x01",
                                                   "? &*!|>%@`{}",
                                                   "\t",
                                                   "no\\escape"};
    std::string made = words[below(static_cast<unsigned>(words.size()))];
    if (chance(50)) {
        made += " " + std::to_string(below(40));
    }
    return made;
}

Bytes GeneratedFiles::catalogue()
{
    Bytes payload;
    const unsigned count = below(8);
    for (unsigned i = 0; i < count; ++i) {
        const std::string key = chance(3) ? text() : "Key" + std::to_string(i);
        const char* const kind = chance(5) ? ",?=" : ",s=";
        payload = join({payload, textBytes(key + kind + text() + "\r\n")});
    }
    return payload;
}

Bytes GeneratedFiles::parameters()
{
    Bytes payload;
    unsigned position = 0;
    for (unsigned i = 0; i < parameterCount; ++i) {
        testkit::ParameterRecord record;
        record.number = byte(plain ? i + 1 : below(256));
        record.nameId = static_cast<std::uint16_t>(textId());
        record.position = byte((plain || chance(80) ? position : below(256)) + 4);
        record.datatype = byte(chance(2) ? below(256) : 1 + below(9));
        record.showMe = byte(plain || chance(70) ? 3 + 4 * below(2) : below(256));
        record.conversionId = byte(below(4));
        record.mapId = byte(below(4));
        record.minimum = chance(50) ? 0 : std::uint64_t{0} - below(1000);
        record.maximum = chance(50) ? 0 : below(100000);
        record.unitId = static_cast<std::uint16_t>(chance(50) ? 0 : textId());
        record.bitLength = byte(below(plain ? 4 : 20));
        record.bitOffset = byte(below(plain ? 5 : 10));
        record.channelNumber = byte(chance(30) ? 255 : below(channelCount + 1));
        payload = join({payload, record.bytes()});
        position += 1 + below(plain ? 8 : 3);
    }
    return payload;
}

Bytes GeneratedFiles::optionLists()
{
    Bytes payload;
    const unsigned count = below(4);
    for (unsigned i = 0; i < count; ++i) {
        std::vector<std::pair<std::uint64_t, unsigned>> options;
        const unsigned size = below(6);
        for (unsigned value = 0; value < size; ++value) {
            const std::uint64_t slot = chance(10) ? ~std::uint64_t{0} - below(5) : below(6);
            options.emplace_back(slot, textId());
        }
        payload = join({payload, testkit::optionList(byte(plain ? i + 1 : below(4)), options)});
    }
    return payload;
}

Bytes GeneratedFiles::conversions()
{
    Bytes payload;
    const unsigned count = below(4);
    for (unsigned i = 0; i < count; ++i) {
        const Bytes numbers = chance(50) ? Bytes{0x3D, 0xCC, 0xCC, 0xCD, 0, 0, 0, 0} : noise(8);
        payload = join(
            {payload, {byte(plain ? i + 1 : below(4))}, numbers, u16(chance(30) ? 0 : textId())});
    }
    return payload;
}

Bytes GeneratedFiles::channels()
{
    Bytes payload;
    for (unsigned i = 0; i < channelCount; ++i) {
        testkit::ChannelRecord record;
        record.number = byte(plain || chance(90) ? i : below(256));
        record.kind = byte(plain ? 128 * below(2) + 1 + below(9) : below(256));
        record.bitLength = byte(chance(50) ? 1 : below(65));
        record.bitOffset = byte(below(8));
        record.words = byte(below(3));
        Bytes bytes = record.bytes();
        if (!plain && chance(10)) {
            bytes[2] = byte(below(256));
            bytes[5] = byte(below(256));
        }
        payload = join({payload, bytes});
    }
    return payload;
}

Bytes GeneratedFiles::channelNames()
{
    Bytes payload;
    for (unsigned i = 0; i < channelCount; ++i) {
        if (chance(90)) {
            const unsigned channel = plain || chance(90) ? i : below(256);
            payload = join({payload, {byte(channel)}, u16(textId())});
        }
    }
    return payload;
}

Bytes GeneratedFiles::texts()
{
    Bytes payload = u16(chance(90) ? 2 : below(0x10000));
    for (unsigned i = 0; i < textCount; ++i) {
        const unsigned id = plain || chance(90) ? firstText + textStep * i : below(0x10000);
        payload = join({payload, u16(id), textBytes(text() + "\r\n")});
    }
    return payload;
}

Bytes GeneratedFiles::dataSizes()
{
    static const std::vector<std::string> lines = {
        "InData,s=WW",    "OutData,s=",   "OutData,s=D W,B", "Parameter,s=BBBB", "Parameter,s=",
        "Diagnosis,s=BB", "Diagnosis,s=", "Comment D",       "InDataX",          ""};
    std::string all;
    const unsigned count = below(6);
    for (unsigned i = 0; i < count; ++i) {
        all += lines[below(static_cast<unsigned>(lines.size()))] + "\r\n";
    }
    return textBytes(all);
}

std::vector<GeneratedFiles::Group> GeneratedFiles::module()
{
    plain = chance(40);
    textCount = below(20);
    firstText = 1 + below(200);
    textStep = chance(50) ? 1 : 1 + below(10);
    channelCount = below(10);
    parameterCount = below(8);
    const std::uint8_t descriptor = byte(chance(80) ? below(2) : below(256));
    const std::uint8_t type = byte(below(10));
    const Bytes identity = testkit::identityPayload(type, static_cast<std::uint32_t>(random()));
    const Bytes dataset = chance(50) ? Bytes{} : Bytes{0x10, 2, 0, 1, 4, 0, 0};
    const std::vector<Group> all = {
        {0x0000, {0, 0, 0, 3}},
        {0x0001, join({dataset, identity})},
        {0x0020, catalogue()},
        {0x0040, catalogue()},
        {0x20F0, join({{1},
                       u16(chance(50) ? 0 : textId()),
                       chance(70) ? textBytes("2024-05-31") : noise(10),
                       noise(chance(80) ? 0 : below(4))})},
        {0x0010, join({{0, descriptor}, noise(descriptor == 1 ? 5 : 0), noise(below(40))})},
        {0x0011, dataSizes()},
        {0x20D7, channelNames()},
        {0x20C2, conversions()},
        {0x20C1, optionLists()},
        {0x20C0, parameters()},
        {0x20D0, channels()},
        {0x20D3, texts()},
        {0x20F1, noise(below(60))}};
    std::vector<Group> chosen;
    for (const Group& group : all) {
        if (chance(plain ? 95 : 85)) {
            chosen.push_back(group);
        }
    }
    return chosen;
}

void GeneratedFiles::disturbOrder(std::vector<Group>& groups)
{
    if (chance(20)) {
        std::swap(groups[below(static_cast<unsigned>(groups.size()))], groups.front());
    }
    const auto place = [this, &groups] {
        return groups.begin() + below(static_cast<unsigned>(groups.size()) + 1);
    };
    if (chance(20)) {
        const Group repeated = groups[below(static_cast<unsigned>(groups.size()))];
        groups.insert(place(), repeated);
    }
    if (chance(30)) {
        const Group unknown{static_cast<std::uint16_t>(1 + below(0xFFFF)), noise(below(30))};
        groups.insert(chance(50) ? groups.end() : place(), unknown);
    }
    if (chance(20)) {
        groups[below(static_cast<unsigned>(groups.size()))].checksum = below(0x10000);
    }
}

void GeneratedFiles::damage(Bytes& payload)
{
    const auto size = static_cast<unsigned>(payload.size());
    switch (below(5)) {
    case 0:
        payload = noise(below(64));
        break;
    case 1:
        payload.resize(size == 0 ? 0 : below(size));
        break;
    case 2:
        payload = join({payload, noise(1 + below(40))});
        break;
    default:
        for (unsigned i = 0; i < 3 && size > 0; ++i) {
            payload[below(size)] = byte(below(256));
        }
    }
}

// Lays the groups out and sets the content length of the first header group.
Bytes GeneratedFiles::framed(const std::vector<Group>& groups)
{
    Bytes bytes;
    std::size_t header = 0;
    bool headerFound = false;
    for (const Group& group : groups) {
        if (group.id == 0 && !headerFound) {
            header = bytes.size();
            headerFound = true;
        }
        bytes = join({bytes, u16(group.id), u16(static_cast<unsigned>(group.payload.size()) + 6),
                      group.payload, u16(group.checksum)});
    }
    if (headerFound && groups.size() > 1 && bytes.size() >= header + 8) {
        const auto end = static_cast<unsigned>(bytes.size());
        const unsigned length = chance(90) ? end : end - below(5);
        bytes[header + 4] = byte(length >> 8);
        bytes[header + 5] = byte(length);
    }
    return chance(85) ? bytes : join({bytes, noise(1 + below(headerFound ? 40 : 4))});
}

std::vector<char> GeneratedFiles::next()
{
    for (;;) {
        std::vector<Group> groups = module();
        if (groups.empty()) {
            continue;
        }
        if (!plain) {
            disturbOrder(groups);
            for (unsigned i = below(3); i > 0; --i) {
                damage(groups[below(static_cast<unsigned>(groups.size()))].payload);
            }
        }
        const Bytes bytes = framed(groups);
        std::vector<char> chars(bytes.begin(), bytes.end());
        if (framingHolds(chars)) {
            return chars;
        }
    }
}

} // namespace roundtrip
