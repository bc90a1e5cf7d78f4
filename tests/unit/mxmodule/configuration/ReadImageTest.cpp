#include "configuration/ReadImage.h"

#include "../ShownFinding.h"
#include "HexBytes.h"
#include "MxBuffer.h"
#include "configuration/ConfigurationOutput.h"
#include "configuration/ConfiguredImage.h"

#include <gmock/gmock.h>
#include <text/Hexadecimal.h>

namespace {

using mxmodule::Fieldbus;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// A module of two options and three numbers, 12 bytes; 16 of registers.
constexpr const char* serial = EXAMPLE_MODULES "/MX0701.bin";
constexpr const char* image = "05 02 01 00 ee dd ef 0b 82 16 7e eb";
constexpr const char* registers = "02 00 02 00 00 00 01 00 ee dd ef 0b 82 16 7e eb";

class ReadImage : public testing::Test
{
protected:
    std::string imageOf(const std::string& words, Fieldbus fieldbus = Fieldbus::Raw)
    {
        return noted(imageOfWords(words, fieldbus, module, "--decode"));
    }

    std::string imageOfFile(const std::string& name, const std::string& content,
                            Fieldbus fieldbus = Fieldbus::Raw)
    {
        return noted(
            mxmodule::imageOfFile({content.begin(), content.end()}, name, fieldbus, module, name));
    }

    std::string noted(const mxmodule::ReadImage& read)
    {
        notes.clear();
        for (const auto& note : read.findings) {
            notes.push_back(std::string(severityName(note.severity)) + ": " + note.text);
        }
        return text::hexOfBytes(read.image, 0, read.image.size());
    }

    std::string failureOf(const std::string& name, const std::string& content,
                          Fieldbus fieldbus = Fieldbus::Raw)
    {
        try {
            imageOfFile(name, content, fieldbus);
        } catch (const mxmodule::Failure& failure) {
            return shown(failure.reason());
        }
        return "accepted";
    }

    mxmodule::ConfiguredImage configuration(Fieldbus fieldbus)
    {
        return configurationOf(module, mxmodule::bytesOfHex(image), fieldbus);
    }

    const std::string bare = "note: The bytes carry no identity: they are read as those of a "
                             "kv38.5a070701";
    mxmodule::TranslatedModule module{mxmodule::ModuleFile::read(serial), {}, {}, "", nullptr};
    std::vector<std::string> notes;
};

TEST_F(ReadImage, ofBytesCarriesNoIdentity)
{
    EXPECT_EQ(imageOf(image), image);
    EXPECT_THAT(notes, ElementsAre(bare));
    const auto bytes = mxmodule::bytesOfHex(image);
    EXPECT_EQ(imageOfFile("image", {bytes.begin(), bytes.end()}), image);
    EXPECT_THAT(notes, ElementsAre(bare));
}

TEST_F(ReadImage, ofRegistersMayBeWords)
{
    EXPECT_EQ(imageOf(registers, Fieldbus::Modbus), image);
    EXPECT_EQ(imageOf("512 512 0 256 61149 61195 33302 32491", Fieldbus::Modbus), image);
    EXPECT_EQ(imageOfFile("r.txt", "0x200\n0x200\n0\n256\n-4387\n-4341\n-32234\n32491\n",
                          Fieldbus::Modbus),
              image);
    EXPECT_EQ(imageOfFile("r.csv", "512;512;0;256;61149;61195;33302;32491\r\n", Fieldbus::Modbus),
              image);
    EXPECT_THAT(notes, ElementsAre(bare));
}

TEST_F(ReadImage, ofJsonKnowsItsModule)
{
    const std::string json = configurationJson(configuration(Fieldbus::Modbus));
    EXPECT_EQ(imageOfFile("v.json", json), image);
    EXPECT_THAT(notes, IsEmpty());
    EXPECT_EQ(imageOfFile("without_a_name", json, Fieldbus::Modbus), image);
    std::string other = json;
    other.replace(other.find("5a070701"), 8, "5a070702");
    const std::string refused = failureOf("v.json", other);
    EXPECT_EQ(refused, "v.json: error: The values are those of a kv38.5a070702, expected a "
                       "kv38.5a070701 as " +
                           std::string(serial) + " is\n");
    EXPECT_THAT(failureOf("v.json", "{\"Parity\": \"odd\"}"),
                HasSubstr("Found values without an image"));
}

TEST_F(ReadImage, ofCsvKnowsItsModule)
{
    for (const Fieldbus fieldbus : {Fieldbus::Raw, Fieldbus::Modbus}) {
        const std::string csv = configurationCsv(configuration(fieldbus), {';', true});
        EXPECT_EQ(imageOfFile("v.csv", csv), image);
        EXPECT_THAT(notes, IsEmpty());
        EXPECT_EQ(imageOfFile("without_a_name", csv), image);
        std::string other = csv;
        other.replace(other.find("5a070701"), 8, "5a070702");
        EXPECT_THAT(failureOf("v.csv", other),
                    HasSubstr(":2: error: The values are those of a kv38.5a070702"));
    }
}

TEST_F(ReadImage, ofATableThatLeavesOutParametersSaysSo)
{
    const auto changed =
        configurationCsv(configuration(Fieldbus::Raw), {}, mxmodule::Listing::Changed);
    EXPECT_EQ(imageOfFile("v.csv", changed), image);
    EXPECT_THAT(notes, ElementsAre(HasSubstr("does not hold every parameter")));
}

TEST_F(ReadImage, ofATableWithAnotherLayoutIsRefused)
{
    EXPECT_THAT(failureOf("v.csv", "id,byte,size,hex\n1,0,3,01 02 03\n"),
                HasSubstr("v.csv:2: error: Found 3 bytes from byte 0, where the module has no "
                          "parameter of that size: the table is of another version of the module"));
}

TEST_F(ReadImage, ofATableMustNotContradictItself)
{
    EXPECT_THAT(failureOf("v.csv", "id,byte,hex\n1,1,01\n2,1,02\n"),
                HasSubstr("v.csv:3: error: Found 02 for byte 1, expected 01 as in a row before"));
    EXPECT_THAT(
        failureOf("v.csv", "id,byte,hex\n1,11,01 02\n"),
        HasSubstr("v.csv:2: error: Found 2 bytes from byte 11, expected a place within the 12 "
                  "bytes"));
    EXPECT_THAT(failureOf("v.csv", "id,byte,hex\n1,18446744073709551615,01 02\n"),
                HasSubstr("expected a place within the 12 bytes"));
    EXPECT_THAT(failureOf("v.csv", "id,byte,hex\n1,x,01\n"),
                HasSubstr("v.csv:2: error: Found \"x\", expected a whole number"));
    EXPECT_THAT(failureOf("v.csv", "id,name\n1,x\n"),
                HasSubstr("v.csv:1: error: Found the columns \"id\", \"name\", expected one called "
                          "\"byte\""));
}

TEST_F(ReadImage, ofATableOfRegistersGoesByTheirAddresses)
{
    const std::string rows = "40008;0x7eeb\n40001;512\n40002;512\n40003;0\n40004;256\n"
                             "40005;61149\n40006;61195\n";
    EXPECT_EQ(imageOfFile("r.csv", "Address;Value\n" + rows + "40007;33302\n", Fieldbus::Modbus),
              image);
    EXPECT_THAT(notes, ElementsAre(bare));
    EXPECT_THAT(failureOf("r.csv", "Address;Value\n" + rows, Fieldbus::Modbus),
                HasSubstr("r.csv:2: error: Found register 40008, expected 40007: there is a gap"));
    EXPECT_THAT(failureOf("r.csv", "Address;Value\n" + rows + "40001;1\n", Fieldbus::Modbus),
                HasSubstr("r.csv:9: error: Register 40001 occurs twice"));
    EXPECT_THAT(failureOf("r.csv", "register;value\n1;70000\n", Fieldbus::Modbus),
                HasSubstr("r.csv:2: error: Found \"70000\", expected a register in decimal"));
    EXPECT_THAT(failureOf("r.csv", "register;value\n1;7\n"),
                HasSubstr("hint: they may be the module's Modbus registers"));
}

TEST_F(ReadImage, ofTheOtherKindIsToldByItsSize)
{
    try {
        imageOf(registers);
        ADD_FAILURE() << "accepted";
    } catch (const mxmodule::Failure& failure) {
        EXPECT_STREQ(failure.what(),
                     "Found 16 bytes, expected the 12 bytes of the module's parameter image");
        EXPECT_EQ(failure.reason().advice, mxmodule::Advice::ReadAsModbus);
        EXPECT_EQ(failure.reason().hint, "they may be the module's Modbus registers");
    }
    try {
        imageOf(image, Fieldbus::Modbus);
        ADD_FAILURE() << "accepted";
    } catch (const mxmodule::Failure& failure) {
        EXPECT_EQ(failure.reason().advice, mxmodule::Advice::ReadAsRaw);
        EXPECT_EQ(failure.reason().hint, "they may be the raw parameter image");
    }
}

} // namespace
