#include "HostileModule.h"

#include "MxBuffer.h"

#include <algorithm>

namespace tooltest {

namespace {

using testkit::Bytes;
using testkit::ChannelRecord;
using testkit::ParameterRecord;

constexpr unsigned firstText = 100;
constexpr std::uint32_t firstModule = 0x5A000000;

HostileText same(const std::string& text)
{
    return {text, text};
}

std::vector<HostileText> makeTexts()
{
    return {same("\033[2J\033]0;title\a"),
            same("\xC2\x9B"
                 "31m"),               // U+009B introduces a sequence as ESC [ does
            {"\x9D\x9B", "\xC2\x9D›"}, // Windows-1252 leaves 9D unassigned
            same("\b\v\f\x7F\x01"),
            same("=1+1"),
            same("+1+1"),
            same("-1+1"),
            same("@SUM(A1)"),
            same("\t=1+1"),
            same("＝1+1"),
            same("=HYPERLINK(\"x\",\"y\")"),
            same("say \"a\", 'b'; c"),
            same("<script>alert(1)</script>"),
            same("</text></svg><svg onload=\"x\">"),
            same("]]><!-- --&gt; &amp; &#27;"),
            same("%s%n%d%x"),
            same("{} {0} {:s}"),
            same("- item: {a: b}"),
            same("# & * ! | > % ` ? :"),
            same("~"),
            same("null"),
            same("2024-01-01"),
            same("*) x AT %IX0.0 : BOOL; (*"),
            same("$(reboot) `id`"),
            same("\\x1b \\n \\"),
            same("../../../etc/passwd"),
            same("\u202Etxt.exe\u2066"), // reverses the text after it
            same("a\u2028b\u2029c"),
            {"\xFF\xFE", "ÿþ"},
            {"\xE2\x82", "â‚"}, // UTF-8 cut off
            same("'"),
            // A bare line feed ends a text that is skipped, so this one is the last.
            same("first\nsecond")};
}

Bytes parameterRecords(unsigned count)
{
    std::vector<Bytes> records;
    for (unsigned i = 0; i < count; ++i) {
        ParameterRecord record;
        record.number = static_cast<std::uint8_t>(i + 1);
        record.nameId = static_cast<std::uint16_t>(firstText + i);
        record.unitId = record.nameId;
        record.position = static_cast<std::uint8_t>(4 + i);
        record.mapId = i % 2 == 0 ? 1 : 0;
        record.channelNumber = i % 3 == 0 ? 255 : static_cast<std::uint8_t>(i);
        records.push_back(record.bytes());
    }
    return testkit::join(records);
}

Bytes channelRecords(unsigned count)
{
    std::vector<Bytes> records;
    for (unsigned i = 0; i < count; ++i) {
        ChannelRecord record;
        record.number = static_cast<std::uint8_t>(i);
        record.bitOffset = static_cast<std::uint8_t>(i % 8);
        records.push_back(record.bytes());
    }
    return testkit::join(records);
}

Bytes channelNames(unsigned count)
{
    std::vector<Bytes> entries;
    for (unsigned i = 0; i < count; ++i) {
        entries.push_back({static_cast<std::uint8_t>(i)});
        entries.push_back(testkit::u16(firstText + i));
    }
    return testkit::join(entries);
}

} // namespace

const std::vector<HostileText>& hostileTexts()
{
    static const std::vector<HostileText> texts = makeTexts();
    return texts;
}

std::string hostileModuleId(unsigned number)
{
    const char* const digits = "0123456789abcdef";
    return std::string("5a0000") + digits[number >> 4 & 15U] + digits[number & 15U];
}

unsigned hostileTextCount(unsigned number)
{
    const auto all = static_cast<unsigned>(hostileTexts().size());
    return number + 1 == all ? all : all - 1;
}

std::vector<char> hostileModule(unsigned number)
{
    const std::string& chosen = hostileTexts()[number].bytes;
    const unsigned count = hostileTextCount(number);
    std::vector<std::pair<unsigned, std::string>> texts;
    std::vector<std::pair<std::uint64_t, unsigned>> options;
    for (unsigned i = 0; i < count; ++i) {
        texts.emplace_back(firstText + i, hostileTexts()[i].bytes);
        options.emplace_back(i, firstText + i);
    }
    testkit::MxBuffer buffer;
    buffer.group(0x0001, testkit::identityPayload(3, firstModule + number))
        .group(0x0020, testkit::entriesPayload({{"BrandLabelName", chosen},
                                                {"BrandVersion", chosen},
                                                {"BrandId", chosen},
                                                {"BrandSerialNumber", chosen},
                                                {"ProductVersion", chosen},
                                                {"BrandOrderCode", chosen},
                                                {"BrandHwRevision", chosen},
                                                {chosen, chosen}}))
        .group(0x0040, testkit::entriesPayload({{"Component", chosen}, {"Creator", chosen}}))
        .group(0x0010, testkit::join({{0, 0}, Bytes(count, 1)}))
        .group(0x0011,
               testkit::linesPayload({"Parameter " + std::string(count, 'B'), "InData WW", chosen}))
        .group(0x20F0,
               testkit::join({testkit::hexBytes("01 0064"), testkit::textBytes("\033[31m\n\"<"),
                              testkit::hexBytes("0000")}))
        .group(0x20F1, testkit::textBytes("<svg onload=\"x\"/>"))
        .group(0x20D3, testkit::textTablePayload(texts))
        .group(0x20C1, testkit::optionList(1, options))
        .group(0x20C0, parameterRecords(count))
        .group(0x20D7, channelNames(count))
        .group(0x20D0, channelRecords(count));
    return buffer.chars();
}

} // namespace tooltest
