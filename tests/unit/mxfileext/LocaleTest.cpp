#include "CompanionTest.h"

#include <clocale>
#include <locale>

namespace {

using testkit::Bytes;
using testkit::hexBytes;
using testkit::ParameterRecord;

class GroupedDigits : public std::numpunct<char>
{
protected:
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

// A host with a decimal comma and digit grouping, in C++ and, where such a locale is installed, in
// C as well.
class LocaleTest : public CompanionTest
{
protected:
    LocaleTest()
        : previous(std::locale::global(std::locale(std::locale::classic(), new GroupedDigits)))
    {
        for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "de_DE", "fr_FR.UTF-8"}) {
            if (std::setlocale(LC_ALL, name) != nullptr) {
                break;
            }
        }
    }

    ~LocaleTest() override
    {
        std::locale::global(previous);
        std::setlocale(LC_ALL, "C");
    }

private:
    std::locale previous;
};

ParameterRecord recordShownAs(std::uint8_t datatype, std::uint8_t showMe)
{
    ParameterRecord record;
    record.datatype = datatype;
    record.showMe = showMe;
    record.conversionId = 1;
    return record;
}

TEST_F(LocaleTest, textsArePlain)
{
    EXPECT_EQ(read(recordShownAs(7, 0), hexBytes("fff0bdc0")),
              (Texts{"-1000000", "-2147483648", "2147483647"}));
}

TEST_F(LocaleTest, numbersAreReadWithPoint)
{
    giveConversions({{1, plusHalf}});
    EXPECT_EQ(imageAfter(recordShownAs(6, 4), Bytes(4, 0), "1234.5"), hexBytes("000009a5"));
    EXPECT_EQ(imageAfter(recordShownAs(6, 0), Bytes(4, 0), "1000000"), hexBytes("000f4240"));
}

TEST_F(LocaleTest, shownTextIsRecognised)
{
    giveConversions({{1, plusOne}});
    const Bytes odd = hexBytes("01000001");
    EXPECT_EQ(imageAfter(recordShownAs(6, 4), odd, "16777216.000000"), odd);
}

TEST_F(LocaleTest, failuresAreTheSame)
{
    giveConversions({{1, plusHalf}});
    EXPECT_EQ(
        failureToSet(recordShownAs(6, 4), Bytes(4, 0), "1,5"),
        "Parameter 1: cannot set value \"1,5\": expected a decimal number, 0 to 2147483647.5");
    EXPECT_EQ(failureToSet(recordShownAs(6, 0), Bytes(4, 0), "1.000"),
              "Parameter 1: cannot set value \"1.000\": expected a decimal integer, 0 to "
              "4294967295");
    ParameterRecord record = recordShownAs(6, 0);
    record.position = 3;
    EXPECT_EQ(failureToSet(record, Bytes(4, 0), "1"),
              "Parameter 1: cannot set value \"1\": its place, 4 byte(s) at byte offset 255, lies "
              "outside the raw image of 4 byte(s)");
}

TEST_F(LocaleTest, sizesInFailuresAreNotGrouped)
{
    Bytes longImage(4096, 0);
    ParameterRecord record = recordShownAs(12, 0);
    EXPECT_EQ(failureToSet(record, longImage, "1"),
              "Parameter 1: cannot set value \"1\": its datatype is 12, expected 1 to 9");
    const std::vector<char> raw(1000, 0);
    unsigned char out[8];
    EXPECT_EQ(
        testkit::failureOf([&] { mxfileext::getLeftAlignedRawParameter(raw, out, 0, 100, 0, 0); }),
        "Parameter value of 100 bytes is too long: 8 bytes at most are accepted");
}

} // namespace
