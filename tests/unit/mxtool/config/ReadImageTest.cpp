#include "config/ReadImage.h"

#include "HexBytes.h"
#include "TestModule.h"
#include "config/Configuration.h"
#include "config/ConfigurationOutput.h"

#include <gmock/gmock.h>

namespace {

using devices::parser::FieldbusType;
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
    ReadImage() : module(options(), "none") {}

    static mxtool::ModuleOptions options()
    {
        mxtool::ModuleOptions module;
        module.file = serial;
        return module;
    }

    std::string imageOf(const std::string& words, FieldbusType fieldbus = FieldbusType::Raw)
    {
        notes.clear();
        const auto read = readImage(words, "--decode", fieldbus, module);
        for (const auto& note : read.notes) {
            notes.push_back(note.severity + ": " + note.text);
        }
        return mxtool::hexOfBytes(read.image, 0, read.image.size());
    }

    std::string imageOfFile(const std::string& name, const std::string& content,
                            FieldbusType fieldbus = FieldbusType::Raw)
    {
        file = directory.write(name, {content.begin(), content.end()});
        return imageOf(file, fieldbus);
    }

    std::string failureOf(const std::string& name, const std::string& content,
                          FieldbusType fieldbus = FieldbusType::Raw)
    {
        try {
            imageOfFile(name, content, fieldbus);
        } catch (const mxtool::Failure& failure) {
            return toText(failure.diagnostic, false);
        }
        return "accepted";
    }

    mxtool::Configuration configuration(FieldbusType fieldbus)
    {
        return configurationOf(module, mxtool::bytesOfHex(image), fieldbus);
    }

    const std::string bare = "note: The bytes carry no identity: they are read as those of a "
                             "kv38.5a070701";
    mxtool::TranslatedModule module;
    testkit::TemporaryDirectory directory;
    std::string file;
    std::vector<std::string> notes;
};

TEST_F(ReadImage, ofBytesCarriesNoIdentity)
{
    EXPECT_EQ(imageOf(image), image);
    EXPECT_THAT(notes, ElementsAre(bare));
    const auto bytes = mxtool::bytesOfHex(image);
    EXPECT_EQ(imageOfFile("image", {bytes.begin(), bytes.end()}), image);
    EXPECT_THAT(notes, ElementsAre(bare));
}

TEST_F(ReadImage, ofRegistersMayBeWords)
{
    EXPECT_EQ(imageOf(registers, FieldbusType::Modbus), image);
    EXPECT_EQ(imageOf("512 512 0 256 61149 61195 33302 32491", FieldbusType::Modbus), image);
    EXPECT_EQ(imageOfFile("r.txt", "0x200\n0x200\n0\n256\n-4387\n-4341\n-32234\n32491\n",
                          FieldbusType::Modbus),
              image);
    EXPECT_EQ(
        imageOfFile("r.csv", "512;512;0;256;61149;61195;33302;32491\r\n", FieldbusType::Modbus),
        image);
    EXPECT_THAT(notes, ElementsAre(bare));
}

TEST_F(ReadImage, ofJsonKnowsItsModule)
{
    const std::string json = configurationJson(configuration(FieldbusType::Modbus), "x");
    EXPECT_EQ(imageOfFile("v.json", json), image);
    EXPECT_THAT(notes, IsEmpty());
    EXPECT_EQ(imageOfFile("without_a_name", json, FieldbusType::Modbus), image);
    std::string other = json;
    other.replace(other.find("5a070701"), 8, "5a070702");
    const std::string refused = failureOf("v.json", other);
    EXPECT_EQ(refused, file +
                           ": error: The values are those of a kv38.5a070702, expected a "
                           "kv38.5a070701 as " +
                           serial + " is\n");
    EXPECT_THAT(failureOf("v.json", "{\"Parity\": \"odd\"}"),
                HasSubstr("Found values without an image"));
}

TEST_F(ReadImage, ofCsvKnowsItsModule)
{
    for (const FieldbusType fieldbus : {FieldbusType::Raw, FieldbusType::Modbus}) {
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
    mxtool::Configuration changed = configuration(FieldbusType::Raw);
    changed.changedOnly = true;
    EXPECT_EQ(imageOfFile("v.csv", configurationCsv(changed)), image);
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
    EXPECT_EQ(
        imageOfFile("r.csv", "Address;Value\n" + rows + "40007;33302\n", FieldbusType::Modbus),
        image);
    EXPECT_THAT(notes, ElementsAre(bare));
    EXPECT_THAT(failureOf("r.csv", "Address;Value\n" + rows, FieldbusType::Modbus),
                HasSubstr("r.csv:2: error: Found register 40008, expected 40007: there is a gap"));
    EXPECT_THAT(failureOf("r.csv", "Address;Value\n" + rows + "40001;1\n", FieldbusType::Modbus),
                HasSubstr("r.csv:9: error: Register 40001 occurs twice"));
    EXPECT_THAT(failureOf("r.csv", "register;value\n1;70000\n", FieldbusType::Modbus),
                HasSubstr("r.csv:2: error: Found \"70000\", expected a register in decimal"));
    EXPECT_THAT(failureOf("r.csv", "register;value\n1;7\n"), HasSubstr("--fieldbus modbus"));
}

TEST_F(ReadImage, ofTheOtherKindIsToldByItsSize)
{
    try {
        imageOf(registers);
        ADD_FAILURE() << "accepted";
    } catch (const mxtool::Failure& failure) {
        EXPECT_STREQ(failure.what(),
                     "Found 16 bytes, expected the 12 bytes of the module's parameter image");
        EXPECT_THAT(failure.diagnostic.hint, HasSubstr("add --fieldbus modbus"));
    }
    try {
        imageOf(image, FieldbusType::Modbus);
        ADD_FAILURE() << "accepted";
    } catch (const mxtool::Failure& failure) {
        EXPECT_THAT(failure.diagnostic.hint, HasSubstr("leave out --fieldbus modbus"));
    }
}

} // namespace
