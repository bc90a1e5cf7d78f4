#include "CompanionTest.h"

#include <GuardedBuffer.h>

// How the exceptions of `setParameter` name the parameter and its options.

namespace {

using testkit::Bytes;
using testkit::optionList;
using testkit::ParameterRecord;

class ParameterWordsTest : public CompanionTest
{
protected:
    ParameterWordsTest()
    {
        record.number = 3;
        record.nameId = 100;
    }

    static void giveNames(const std::vector<std::pair<unsigned, std::string>>& texts)
    {
        giveTexts(testkit::textTablePayload(texts));
    }

    static void giveOptions(const Bytes& payload) { give(0, 0x20C1, payload); }

    // The message before the value.
    std::string nameInFailure() const
    {
        const std::string text = failureToSet(record, {0xA5}, "x");
        return text.substr(0, text.find(": cannot set value \"x\": expected"));
    }

    // The message after the numbers that the parameter, a UInt8, can hold.
    std::string optionsInFailure() const
    {
        const std::string text = failureToSet(record, {0xA5}, "300");
        const std::string limits = ": cannot set value \"300\": expected 0 to 255";
        const std::size_t at = text.find(limits);
        return at == std::string::npos ? text : text.substr(at + limits.size());
    }

    ParameterRecord record;
};

TEST_F(ParameterWordsTest, nameFollowsTheNumber)
{
    giveNames({{99, "Other"}, {100, "Filter"}});
    EXPECT_EQ(failureToSet(record, {0xA5}, "fast"),
              "Parameter 3 \"Filter\": cannot set value \"fast\": expected a decimal integer, 0 to "
              "255");
    record.datatype = 12;
    EXPECT_EQ(
        failureToSet(record, {0xA5}, "1"),
        "Parameter 3 \"Filter\": cannot set value \"1\": its datatype is 12, expected 1 to 9");
    record.datatype = 2;
    EXPECT_EQ(failureToSet(record, {0xA5}, "1"),
              "Parameter 3 \"Filter\": cannot set value \"1\": its place, 2 byte(s) at byte offset "
              "0, lies outside the raw image of 1 byte(s)");
}

TEST_F(ParameterWordsTest, parameterWithoutNameHasItsNumberAlone)
{
    EXPECT_EQ(nameInFailure(), "Parameter 3");
    giveNames({{100, ""}, {101, "Other"}});
    EXPECT_EQ(nameInFailure(), "Parameter 3");
    record.nameId = 102;
    EXPECT_EQ(nameInFailure(), "Parameter 3");
}

TEST_F(ParameterWordsTest, nameIsThatOfTheModule)
{
    give(0, 0x20D3, testkit::textTablePayload({{100, "Here"}}));
    give(1, 0x20D3, testkit::textTablePayload({{100, "There"}}));
    Bytes image{0};
    EXPECT_EQ(
        testkit::failureOf([&] { set(record, image, "x", 1); }),
        "Parameter 3 \"There\": cannot set value \"x\": expected a decimal integer, 0 to 255");
    mxfileext::clearParsedData(0);
    tellSize(1);
    EXPECT_EQ(nameInFailure(), "Parameter 3");
}

TEST_F(ParameterWordsTest, controlBytesAreSpelledOut)
{
    giveNames({{100, "\x1B[2J\x01\t\x1F \x7F\xB0"}});
    EXPECT_EQ(nameInFailure(), "Parameter 3 \"\\x1b[2J\\x01\\x09\\x1f \\x7f\xB0\"");
    EXPECT_EQ(failureToSet(record, {0xA5}, "1\n"),
              "Parameter 3 \"\\x1b[2J\\x01\\x09\\x1f \\x7f\xB0\": cannot set value \"1\\x0a\": "
              "expected a decimal integer, 0 to 255");
}

TEST_F(ParameterWordsTest, longNamesAreShortened)
{
    const auto shown = [this](const std::string& name) {
        forgetAll();
        giveNames({{100, name}});
        return nameInFailure();
    };
    const std::string most(60, 'n');
    const std::string fewer(59, 'n');
    EXPECT_EQ(shown(most), "Parameter 3 \"" + most + "\"");
    EXPECT_EQ(shown(most + "n"), "Parameter 3 \"" + most + "...\"");
    EXPECT_EQ(shown(std::string(60000, 'n')), "Parameter 3 \"" + most + "...\"");
    // Not within a character of UTF-8; other bytes may well look like parts of one.
    EXPECT_EQ(shown(fewer + "\xC3\xA4"), "Parameter 3 \"" + fewer + "...\"");
    EXPECT_EQ(shown(std::string(100, '\x80')),
              "Parameter 3 \"" + std::string(56, '\x80') + "...\"");
}

TEST_F(ParameterWordsTest, optionsAreNamedWhereTheValueIsRefused)
{
    giveOptions(
        testkit::join({optionList(1, {{9, 52}}), optionList(2, {{0, 50}, {5, 51}, {7, 7}})}));
    giveNames({{50, "off"}, {51, "sl\tow"}, {52, "other"}});
    record.mapId = 2;
    EXPECT_EQ(failureToSet(record, {0xA5}, "fast"),
              "Parameter 3: cannot set value \"fast\": expected a decimal integer, 0 to 255; its "
              "options: 0 \"off\", 5 \"sl\\x09ow\", 7");
    EXPECT_EQ(optionsInFailure(), "; its options: 0 \"off\", 5 \"sl\\x09ow\", 7");
}

TEST_F(ParameterWordsTest, optionsAreNotNamedWhereTheyAreNoHelp)
{
    giveOptions(testkit::join({optionList(0, {{1, 50}}), optionList(2, {{0, 50}})}));
    EXPECT_EQ(optionsInFailure(), ""); // names no list
    record.mapId = 3;
    EXPECT_EQ(optionsInFailure(), ""); // no such list
    record.mapId = 2;
    EXPECT_EQ(optionsInFailure(), "; its options: 0");
    record.showMe = 4;
    EXPECT_EQ(optionsInFailure(), ""); // a physical value has none
    record.showMe = 0;
    record.datatype = 10;
    EXPECT_EQ(failureToSet(record, {0xA5}, "0"),
              "Parameter 3: cannot set value \"0\": its datatype is 10, expected 1 to 9");
}

TEST_F(ParameterWordsTest, optionsOfEveryListWithTheIdentifierCount)
{
    giveOptions(testkit::join({optionList(2, {{1, 50}, {2, 50}}), optionList(4, {{3, 50}}),
                               optionList(2, {}), optionList(2, {{4, 50}})}));
    giveNames({{50, "o"}});
    record.mapId = 2;
    EXPECT_EQ(optionsInFailure(), "; its options: 1 \"o\", 2 \"o\", 4 \"o\"");
}

TEST_F(ParameterWordsTest, twentyOptionsAreNamedAtMost)
{
    const auto shown = [this](unsigned count) {
        forgetAll();
        std::vector<std::pair<std::uint64_t, unsigned>> options;
        for (unsigned value = 0; value < count; ++value) {
            options.emplace_back(value, 50);
        }
        giveOptions(optionList(2, options));
        return optionsInFailure();
    };
    record.mapId = 2;
    const std::string twenty = "; its options: 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, "
                               "15, 16, 17, 18, 19";
    EXPECT_EQ(shown(20), twenty);
    EXPECT_EQ(shown(21), twenty + " and 1 more");
    EXPECT_EQ(shown(255), twenty + " and 235 more");
}

// Each option names the only text, which is as long as a group can be.
TEST_F(ParameterWordsTest, textsOfOptionsAreShortened)
{
    giveNames({{50, std::string(65000, 't')}});
    giveOptions(optionList(2, {{1, 50}, {2, 50}}));
    record.mapId = 2;
    const std::string text = " \"" + std::string(60, 't') + "...\"";
    EXPECT_EQ(optionsInFailure(), "; its options: 1" + text + ", 2" + text);
}

TEST_F(ParameterWordsTest, optionsHaveTheNumbersThatSetThem)
{
    // A slot's last bytes are the value: of one byte 0xFF, whatever is before it.
    giveOptions(optionList(2, {{0xFF, 50}, {~std::uint64_t{0}, 50}, {0x0180, 50}, {127, 50}}));
    record.mapId = 2;
    record.datatype = 3;
    EXPECT_EQ(failureToSet(record, {0xA5}, "200"),
              "Parameter 3: cannot set value \"200\": expected -128 to 127; its options: -1, -1, "
              "-128, 127");
    record.datatype = 4;
    EXPECT_EQ(
        failureToSet(record, {0xA5, 0}, "40000"),
        "Parameter 3: cannot set value \"40000\": expected -32768 to 32767; its options: 255, "
        "-1, 384, 127");
    EXPECT_EQ(imageAfter(record, {0xA5, 0}, "384"), (Bytes{0x01, 0x80}));
}

TEST_F(ParameterWordsTest, optionsThatABitFieldCannotHoldAreLeftOut)
{
    std::vector<std::pair<std::uint64_t, unsigned>> options(30, {9, 50});
    options.insert(options.end(), {{7, 50}, {8, 50}, {0, 50}});
    giveOptions(optionList(2, options));
    record.mapId = 2;
    record.datatype = 5;
    record.bitLength = 3;
    EXPECT_EQ(failureToSet(record, {0xA5}, "9"),
              "Parameter 3: cannot set value \"9\": expected 0 to 7; its options: 7, 0");
}

TEST_F(ParameterWordsTest, firstOptionGroupHolds)
{
    giveOptions(optionList(2, {{1, 50}}));
    giveOptions(optionList(2, {{4, 50}}));
    record.mapId = 2;
    EXPECT_EQ(optionsInFailure(), "; its options: 1");
    mxfileext::clearParsedData(0);
    EXPECT_EQ(optionsInFailure(), "");
    giveOptions({});
    giveOptions(optionList(2, {{4, 50}}));
    EXPECT_EQ(optionsInFailure(), "");
}

// A group at the end of accessible memory, cut after each of its bytes: complete lists count,
// nothing after a cut one.
TEST_F(ParameterWordsTest, optionGroupOfEveryLengthGivesTheListsThatAreWhole)
{
    const Bytes whole =
        testkit::join({optionList(2, {{1, 50}, {4, 50}}), optionList(2, {{6, 50}})});
    record.mapId = 2;
    for (std::size_t size = 0; size <= whole.size(); ++size) {
        forgetAll();
        testkit::MxBuffer buffer;
        const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
        const testkit::GuardedBuffer group(buffer.group(0x20C1, cut).bytes());
        mxfileext::parseGroup(0, 0x20C1, group.data(), static_cast<unsigned short>(group.size()));
        EXPECT_EQ(optionsInFailure(), size < 22   ? ""
                                      : size < 34 ? "; its options: 1, 4"
                                                  : "; its options: 1, 4, 6")
            << size;
    }
}

TEST_F(ParameterWordsTest, statedCountIsNotTrusted)
{
    record.mapId = 2;
    for (const Bytes& group : {Bytes{2}, Bytes{2, 255}, Bytes{7, 255, 2, 0}, Bytes(65529, 2)}) {
        forgetAll();
        giveOptions(group);
        EXPECT_LT(optionsInFailure().size(), 200U);
    }
}

} // namespace
