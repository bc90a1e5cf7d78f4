// Values that the compiler computes for the text form: identifiers, places, sizes, lengths.

#include "MxBuffer.h"

#include <mxauthor/TextForm.h>

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

namespace {

using mxauthor::Bytes;
using mxauthor::MxFile;
using testkit::hexBytes;
using testkit::textBytes;

MxFile built(const std::string& source, const std::filesystem::path& directory = {})
{
    const mxauthor::BuildResult result = mxauthor::buildFromText(source, directory);
    for (const mxauthor::SourceError& error : result.errors) {
        ADD_FAILURE() << error.line << ":" << error.column << ": " << error.text;
    }
    return result.file;
}

// The payload of the group, empty when there is none.
Bytes payload(const MxFile& file, std::uint16_t id)
{
    for (const mxauthor::Group& group : file.groups) {
        if (group.id == id) {
            return mxauthor::writePayload(group.content);
        }
    }
    return {};
}

std::string sizes(const std::string& source)
{
    const Bytes bytes = payload(built(source), 0x0011);
    return {bytes.begin(), bytes.end()};
}

TEST(Build, makesTheWholeFile)
{
    const MxFile file = built("module: {type: 3, id: 0x5a030304}\n");
    EXPECT_EQ(
        mxauthor::writeMxFile(file),
        testkit::join({hexBytes("0000 000a 0053 0003 0000"),               // 0x53 bytes in all
                       hexBytes("0001 0010 fb0500 03 5a030304 0000 0000"), // module identity
                       hexBytes("0011 0039"),
                       textBytes("InData,s=\r\nOutData,s=\r\nParameter,s=\r\nDiagnosis,s=\r\n"),
                       hexBytes("0000")}));
}

TEST(Build, givesTextsIdentifiersInOrderOfUse)
{
    const MxFile file = built("channels: [{name: C, in: Bit}, {name: A, in: Bit}]\n"
                              "parameters: [{name: P, type: UInt8, unit: V}]\n"
                              "optionLists: {list: {options: {0: A, 1: B}}}\n"
                              "extension: {gtin: G}\n"
                              "texts: {first: 100, step: 7, fixed: {114: V}}\n");
    // The fixed one first; 114 is not assigned again; a text that is used twice is stored once.
    EXPECT_EQ(payload(file, 0x20D3),
              testkit::textTablePayload(
                  {{114, "V"}, {100, "A"}, {107, "B"}, {121, "P"}, {128, "C"}, {135, "G"}}));
    EXPECT_EQ(payload(file, 0x20D7), hexBytes("00 0080 01 0064"));
}

TEST(Build, numbersChannelsAndPacksBits)
{
    const MxFile file = built("channels:\n"
                              "  - {in: Bit}\n"
                              "  - {in: Byte, bits: 3}\n"
                              "  - {out: UInt16, number: 7, words: [0x8000]}\n"
                              "  - {in: Byte, bits: 2, flags: 0x40}\n");
    EXPECT_EQ(payload(file, 0x20D0), hexBytes("00 85 00 01 00 00 00"
                                              "01 85 00 03 01 00 00"
                                              "07 02 00 10 00 00 01 8000"
                                              "08 c5 00 02 04 00 00"));
}

TEST(Build, computesDataSizesByTheRulesOfAlignment)
{
    // A bit, then a word at 2: the byte of the bit and an unused one; a double word after a bit at
    // byte 4 is at 6, since 5 + (5 & 3) is 6.
    EXPECT_EQ(sizes("channels: [{in: Bit}, {in: UInt16}, {in: Bit}, {in: SInt32}, {out: UInt64}]\n"
                    "parameters: [{name: A, type: UInt32}]\n"),
              "InData,s=BBWBBD\r\nOutData,s=DD\r\nParameter,s=BBBB\r\nDiagnosis,s=\r\n");
    EXPECT_EQ(sizes("channels: [{in: Bit}]\ndataSizes: {InData: W, Diagnosis: B}\n"),
              "InData,s=W\r\nOutData,s=\r\nParameter,s=\r\nDiagnosis,s=B\r\n");
    EXPECT_EQ(sizes("dataSizes: [\"InDataX\", Comment]\n"), "InDataX\r\nComment\r\n");
}

TEST(Build, putsParametersAfterOneAnother)
{
    const MxFile file = built("parameters:\n"
                              "  - {name: a, type: UInt16, default: 0x0102}\n"
                              "  - {name: b, type: Byte, bits: 3, default: 5}\n"
                              "  - {name: c, type: Byte, bits: 5, default: 2}\n"
                              "  - {name: d, type: Byte, bits: 1, default: 1}\n"
                              "  - {name: e, type: SInt8, default: -1}\n");
    // Bits 0 to 2 are 5, bits 3 to 7 are 2: 0b00010'101.
    EXPECT_EQ(payload(file, 0x0010), hexBytes("00 00 0102 15 01 ff"));
    const Bytes records = payload(file, 0x20C0);
    ASSERT_EQ(records.size(), 5U * 29U);
    EXPECT_EQ(records[2 * 29], 3);      // number
    EXPECT_EQ(records[2 * 29 + 3], 6);  // byte 2 of the block, plus 4
    EXPECT_EQ(records[2 * 29 + 26], 5); // bit length
    EXPECT_EQ(records[2 * 29 + 27], 3); // bit offset
    EXPECT_EQ(records[2 * 29 + 5], 3);  // flags
}

TEST(Build, takesOptionsAndConversionsByName)
{
    const MxFile file = built("optionLists:\n"
                              "  speed: {options: {0: slow, -1: fast}}\n"
                              "conversions:\n"
                              "  half: {id: 9, factor: 0.5}\n"
                              "parameters:\n"
                              "  - {name: a, type: SInt16, default: fast, options: speed}\n"
                              "  - {name: b, type: UInt8, default: 4, conversion: half}\n");
    EXPECT_EQ(payload(file, 0x0010), hexBytes("00 00 ffff 04"));
    EXPECT_EQ(payload(file, 0x20C2), hexBytes("09 3f000000 00000000 0000"));
    const Bytes records = payload(file, 0x20C0);
    ASSERT_EQ(records.size(), 58U);
    EXPECT_EQ(records[7], 1);      // option list
    EXPECT_EQ(records[29 + 6], 9); // conversion
    EXPECT_EQ(records[29 + 5], 7); // shown in physical units
}

TEST(Build, writesDefaultsIntoTheStatedBlock)
{
    const MxFile file = built("parameters: [{name: a, at: 1, type: UInt8, default: 7}]\n"
                              "parameterBlock: {descriptor: 1, bytes: aabbcc}\n");
    EXPECT_EQ(payload(file, 0x0010), hexBytes("00 01 0000000000 aa07cc"));
}

TEST(Build, keepsEveryByteOfATextByAnEscape)
{
    const MxFile file = built("catalogue: {Name: \"\xE2\x82\xAC \\x81 \xC2\xB0\"}\n");
    EXPECT_EQ(payload(file, 0x0020), textBytes("Name,s=\x80 \x81 \xB0\r\n"));
}

TEST(Build, putsGroupsInTheStatedOrder)
{
    const MxFile file =
        built("header: none\ndataSizes: none\n"
              "raw: [{id: 0x7abc, hex: '01 02', checksum: 5}, {id: 1, base64: AwQ=}]\n"
              "component: {A: b}\n"
              "order: [raw, component, raw]\n"
              "checksums: {component: 0x1234}\n"
              "tail: 'ff'\n");
    EXPECT_EQ(mxauthor::writeMxFile(file),
              testkit::join({hexBytes("7abc 0008 0102 0005 0040 000d"), textBytes("A,s=b\r\n"),
                             hexBytes("1234 0001 0008 0304 0000 ff")}));
}

TEST(Build, readsFilesBesideTheText)
{
    const std::filesystem::path directory = testing::TempDir();
    std::ofstream(directory / "image.svg") << "<svg/>";
    std::ofstream(directory / "extra.hex") << "01 02\n03\n";
    const MxFile file =
        built("image: image.svg\nraw: [{id: 0x7abc, file: extra.hex}]\n", directory);
    EXPECT_EQ(payload(file, 0x7ABC), hexBytes("010203"));
    EXPECT_EQ(payload(file, 0x20F1), payload(built("image: {svg: <svg/>}\n"), 0x20F1));
    EXPECT_GT(payload(file, 0x20F1).size(), 18U);
}

TEST(Build, givesTheSameBytesEveryTime)
{
    const std::string source = "channels: [{name: C, in: Bit}]\nimage: {svg: <svg/>}\n";
    EXPECT_EQ(mxauthor::writeMxFile(built(source)), mxauthor::writeMxFile(built(source)));
}

// One parameter: its record's bytes 8 to 23, minimum and maximum, then its default block.
Bytes rangeAndDefault(const std::string& parameter, const std::string& conversion)
{
    const MxFile file = built("parameters: [{name: A, " + parameter + "}]\n" + conversion);
    const Bytes record = payload(file, 0x20C0);
    Bytes bytes(record.begin() + 8, record.begin() + 24);
    const Bytes block = payload(file, 0x0010);
    bytes.insert(bytes.end(), block.begin() + 2, block.end());
    return bytes;
}

TEST(PhysicalValues, areTurnedIntoRawOnes)
{
    // 9.5 / 0.001 = 9500 = 0x251c; -10 / 0.001 = -10000 = 0x...d8f0
    EXPECT_EQ(rangeAndDefault("type: SInt16, default: 9.5 V, range: [-10 V, 10V], conversion: c",
                              "conversions: {c: {factor: 0.001, unit: V}}\n"),
              hexBytes("ffff ffff ffff d8f0 0000 0000 0000 2710 251c"));
}

TEST(PhysicalValues, ofAFallingConversionSwapTheRange)
{
    // raw * -0.5 + 10: 0 % is 20, 10 % is 0, 4 % is 12
    EXPECT_EQ(rangeAndDefault("type: UInt8, default: 4 %, range: [0 %, 10 %], conversion: c",
                              "conversions: {c: {factor: -0.5, offset: 10, unit: \"%\"}}\n"),
              hexBytes("0000 0000 0000 0000 0000 0000 0000 0014 0c"));
}

TEST(PhysicalValues, areExactForAllBits)
{
    // 1234567890123456789 = 0x112210f47de98115, which neither a float nor a double holds
    EXPECT_EQ(rangeAndDefault("type: UInt64, default: 1234567890123456789 V, conversion: c",
                              "conversions: {c: {factor: 1, unit: V}}\n"),
              hexBytes("0000 0000 0000 0000 0000 0000 0000 0000 1122 10f4 7de9 8115"));
}

TEST(PhysicalValues, haveTheUnitOfAParameterWithoutConversion)
{
    EXPECT_EQ(rangeAndDefault("type: UInt8, default: 50 ms, range: [1 ms, 100], unit: ms", ""),
              hexBytes("0000 0000 0000 0001 0000 0000 0000 0064 32"));
}

TEST(PhysicalValues, haveTheUnitOfTheParameterBeforeThatOfItsConversion)
{
    EXPECT_EQ(rangeAndDefault("type: UInt8, default: 5 bar, unit: bar, conversion: c",
                              "conversions: {c: {factor: 0.5, unit: V}}\n"),
              hexBytes("0000 0000 0000 0000 0000 0000 0000 0000 0a"));
}

TEST(PhysicalValues, areNoNumbersWithAUnitThatIsADigit)
{
    // The unit is "1": 51 is the raw value, "5 1" the physical one.
    EXPECT_EQ(rangeAndDefault("type: UInt8, default: 51, range: [5 1, 60], unit: \"1\"", ""),
              hexBytes("0000 0000 0000 0005 0000 0000 0000 003c 33"));
}

} // namespace
