#include "CompanionTest.h"

namespace {

using testkit::Bytes;
using testkit::failureOf;
using testkit::ParameterRecord;

using SetParameterErrorTest = CompanionTest;

ParameterRecord numberedRecord(std::uint8_t datatype)
{
    ParameterRecord record;
    record.number = 201;
    record.datatype = datatype;
    return record;
}

std::string failureText(const std::string& value, const std::string& reason)
{
    return "Parameter 201: cannot set value \"" + value + "\": " + reason;
}

TEST_F(SetParameterErrorTest, textIsADecimalInteger)
{
    const std::vector<std::string> texts{"",      " ",   "abc", "-",   "+",    "--1", "+-1", "-+1",
                                         "++1",   " 1",  "1 ",  "1.0", "1,0",  "1.",  "1e2", "0x1F",
                                         "1'000", "inf", "nan", "12a", "\xB2", "1-"};
    for (const std::string& text : texts) {
        EXPECT_EQ(failureToSet(numberedRecord(1), {0xA5}, text),
                  failureText(text, "expected a decimal integer, 0 to 255"));
    }
}

TEST_F(SetParameterErrorTest, textIsADecimalNumberWhereConverted)
{
    ParameterRecord record = numberedRecord(1);
    record.showMe = 4;
    const std::vector<std::string> texts{
        "",     " ",   "abc",  "-",        "+",      ".",   "--1", "+-1",  "-+1",
        "++1",  " 1",  "1 ",   "1,5",      "1.5.5",  "1e",  "e1",  "0x1F", "inf",
        "-inf", "nan", "+inf", "infinity", "nan(1)", "NAN", "1.5f"};
    for (const std::string& text : texts) {
        EXPECT_EQ(failureToSet(record, {0xA5}, text),
                  failureText(text, "expected a decimal number, 0 to 255"));
    }
}

// Messages write control bytes as escapes: a NUL in the text would cut them.
TEST_F(SetParameterErrorTest, controlByteIsNoPartOfANumber)
{
    EXPECT_EQ(failureToSet(numberedRecord(1), {0xA5}, "1\n"),
              failureText("1\\x0a", "expected a decimal integer, 0 to 255"));
    EXPECT_EQ(failureToSet(numberedRecord(1), {0xA5}, std::string("1\0", 2)),
              failureText("1\\0", "expected a decimal integer, 0 to 255"));
    ParameterRecord record = numberedRecord(1);
    record.showMe = 4;
    EXPECT_EQ(failureToSet(record, {0xA5},
                           std::string("\0"
                                       "1",
                                       2)),
              failureText("\\01", "expected a decimal number, 0 to 255"));
}

struct Beyond
{
    std::uint8_t datatype;
    std::size_t size;
    const char* below;
    const char* above;
    const char* expected;
};

TEST_F(SetParameterErrorTest, valueFitsItsDatatype)
{
    const std::vector<Beyond> all{
        {1, 1, "-1", "256", "expected 0 to 255"},
        {2, 2, "-1", "65536", "expected 0 to 65535"},
        {3, 1, "-129", "128", "expected -128 to 127"},
        {4, 2, "-32769", "32768", "expected -32768 to 32767"},
        {5, 1, "-1", "256", "expected 0 to 255"},
        {6, 4, "-1", "4294967296", "expected 0 to 4294967295"},
        {7, 4, "-2147483649", "2147483648", "expected -2147483648 to 2147483647"},
        {8, 8, "-1", "18446744073709551616", "expected 0 to 18446744073709551615"},
        {9, 8, "-9223372036854775809", "9223372036854775808",
         "expected -9223372036854775808 to 9223372036854775807"},
    };
    for (const Beyond& beyond : all) {
        const ParameterRecord record = numberedRecord(beyond.datatype);
        const Bytes image(beyond.size, 0xA5);
        const std::string huge = "-" + std::string(400, '9');
        for (const std::string& text :
             {std::string(beyond.below), std::string(beyond.above), std::string(400, '9'), huge}) {
            EXPECT_EQ(failureToSet(record, image, text), failureText(text, beyond.expected));
        }
    }
}

TEST_F(SetParameterErrorTest, placeLiesInTheImage)
{
    ParameterRecord record = numberedRecord(2);
    record.position = 7;
    EXPECT_EQ(failureToSet(record, Bytes(4, 0xA5), "1"),
              failureText("1", "its place, 2 byte(s) at byte offset 3, lies outside the raw image "
                               "of 4 byte(s)"));
    record.position = 2;
    EXPECT_EQ(failureToSet(record, Bytes(254, 0xA5), "1"),
              failureText("1", "its place, 2 byte(s) at byte offset 254, lies outside the raw "
                               "image of 254 byte(s)"));
    EXPECT_EQ(failureToSet(numberedRecord(1), {}, "1"),
              failureText("1", "its place, 1 byte(s) at byte offset 0, lies outside the raw image "
                               "of 0 byte(s)"));
}

TEST_F(SetParameterErrorTest, imageOfEveryLengthHoldsTheValueOrFails)
{
    ParameterRecord record = numberedRecord(8);
    record.position = 6;
    for (std::size_t size = 0; size < 10; ++size) {
        EXPECT_EQ(failureToSet(record, Bytes(size, 0xA5), "1"),
                  failureText("1", "its place, 8 byte(s) at byte offset 2, lies outside the raw "
                                   "image of " +
                                       std::to_string(size) + " byte(s)"));
    }
    EXPECT_EQ(imageAfter(record, Bytes(10, 0xA5), "1"), testkit::hexBytes("a5a50000000000000001"));
}

TEST_F(SetParameterErrorTest, nullImageHoldsNothing)
{
    Bytes record = numberedRecord(1).bytes();
    tellSize(8);
    EXPECT_EQ(failureOf([&] { mxfileext::setParameter(0, nullptr, record.data(), "1"); }),
              failureText("1", "its place, 1 byte(s) at byte offset 0, lies outside the raw image "
                               "of 0 byte(s)"));
}

TEST_F(SetParameterErrorTest, datatypeIsValid)
{
    for (const unsigned datatype : {0U, 10U, 255U}) {
        EXPECT_EQ(
            failureToSet(numberedRecord(static_cast<std::uint8_t>(datatype)), Bytes(16, 0xA5), "1"),
            failureText("1", "its datatype is " + std::to_string(datatype) + ", expected 1 to 9"));
    }
}

} // namespace
