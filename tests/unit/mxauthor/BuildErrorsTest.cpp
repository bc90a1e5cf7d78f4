// Every error in a text is reported at its place.

#include <mxauthor/TextForm.h>

#include <gmock/gmock.h>

namespace {

using mxauthor::SourceError;
using testing::AllOf;
using testing::ElementsAre;
using testing::Field;
using testing::HasSubstr;
using testing::IsEmpty;

std::vector<SourceError> errorsOf(const std::string& source)
{
    return mxauthor::buildFromText(source, "").errors;
}

auto errorAt(std::size_t line, std::size_t column, const std::string& text)
{
    return AllOf(Field(&SourceError::line, line), Field(&SourceError::column, column),
                 Field(&SourceError::text, HasSubstr(text)));
}

TEST(WrongTexts, endsAtTheHundredthError)
{
    std::string source = "module: {id: 1, type: 1}\n";
    for (int i = 0; i < 200; ++i) {
        source += "unknown" + std::to_string(i) + ": 1\n";
    }
    const auto errors = errorsOf(source);
    ASSERT_EQ(errors.size(), 101U);
    EXPECT_THAT(errors.front(), errorAt(1, 1, "after 100 errors"));
}

struct Wrong
{
    std::string source;
    std::size_t line;
    std::size_t column;
    std::string text;
};

class WrongText : public testing::TestWithParam<Wrong>
{};

TEST_P(WrongText, isTheOneErrorAtItsPlace)
{
    const Wrong& wrong = GetParam();
    EXPECT_THAT(errorsOf(wrong.source), ElementsAre(errorAt(wrong.line, wrong.column, wrong.text)))
        << wrong.source;
}

INSTANTIATE_TEST_SUITE_P(
    Keys, WrongText,
    testing::Values(
        Wrong{"chanels: []\n", 1, 1,
              "unknown key \"chanels\", did you mean \"channels\"? (accepted: module, catalogue, "},
        Wrong{"module: {type: 1, id: 2, moduleId: 3}\n", 1, 26,
              "unknown key \"moduleId\" (accepted: type, id, datasets)"},
        Wrong{"channels:\n  - {in: Bit, bits: 1, bits: 2}\n", 2, 24, "\"bits\" is stated twice"},
        Wrong{"module: {type: 1}\n", 1, 9, "\"id\" is missing"},
        Wrong{"conversions: {V: {unit: V}}\n", 1, 18, "\"factor\" is missing"},
        Wrong{"unread: {texts: '00'}\n", 1, 10,
              "unknown group \"texts\" (accepted: channels, channelNames, parameters, optionLists, "
              "conversions)"},
        Wrong{"unread: {channels: '00'}\n", 1, 10, "there are no channels in this text"},
        Wrong{"checksums: {image: 1}\n", 1, 13, "there is no group \"image\" in this text"},
        Wrong{"order: [header]\n", 1, 8,
              "the order must name all groups, \"dataSizes\" is missing"},
        Wrong{"order: [header, dataSizes, header]\n", 1, 28,
              "there is no (other) group \"header\""}));

INSTANTIATE_TEST_SUITE_P(
    Values, WrongText,
    testing::Values(
        Wrong{"module: {type: 256, id: 2}\n", 1, 16, "256 is out of range, 0 to 255 is accepted"},
        Wrong{"module: {type: x, id: 2}\n", 1, 16, "\"x\" is not a whole number"},
        Wrong{"module: {type: , id: 2}\n", 1, 10, "\"type\" has no value"},
        Wrong{"catalogue:\n  A: #1\n  B: 2\n", 2, 3,
              "\"A\" has no value; the empty text is \"\", and # begins a comment"},
        Wrong{"module: {type: [], id: 2}\n", 1, 16, "one value expected here"},
        Wrong{"channels: 5\n", 1, 11, "a list expected here"},
        Wrong{"catalogue: 5\n", 1, 12, "keys with values expected here"},
        Wrong{"channels:\n  - {in: uint8}\n", 2, 10,
              "unknown type \"uint8\", did you mean \"UInt8\"? (accepted: UInt8, UInt16, SInt8, "
              "SInt16, Byte, UInt32, SInt32, UInt64, SInt64, Bit)"},
        Wrong{"channels:\n  - {in: 32}\n", 2, 10, "32 is out of range, 0 to 31 is accepted"},
        Wrong{"channels:\n  - {in: Bit, out: Bit}\n", 2, 5, "either in or out expected"},
        Wrong{"channels:\n  - {in: Bit, flags: 1}\n", 2, 22, "only the bits 0x60 are flags"},
        Wrong{"channels:\n  - {in: Bit, again: ja}\n", 2, 22, "\"ja\" is neither true nor false"},
        Wrong{"tail: 'abc'\n", 1, 7, "hexadecimal text of whole bytes expected"},
        Wrong{"image: {base64: 'a'}\n", 1, 17, "Base64 text with its padding expected"},
        Wrong{"image: {hex: '00', base64: 'AAAA'}\n", 1, 8, "the bytes are stated once"},
        Wrong{"image: no/such.svg\n", 1, 8, "there is no file no/such.svg"},
        Wrong{"image: /dev/zero\n", 1, 8, "there is no file /dev/zero"},
        Wrong{"conversions: {V: {factor: 1e99}}\n", 1, 27, "\"1e99\" is not a 32-bit number"},
        Wrong{"conversions: {'5': {factor: 1}}\n", 1, 15, "a name expected, not a number"},
        Wrong{"dataSizes: {InData: WX}\n", 1, 21, "\"WX\" are not datatype codes"},
        Wrong{"extension: {calibrationDate: 2024-05-31 12}\n", 1, 30, "10 characters at most"},
        Wrong{"texts: {step: 0}\n", 1, 15, "identifiers differ by 1 at least"}));

INSTANTIATE_TEST_SUITE_P(
    Texts, WrongText,
    testing::Values(
        Wrong{"component: {A: \xE6\xBC\xA2}\n", 1, 16,
              "character \"\xE6\xBC\xA2\" is not in Windows-1252"},
        Wrong{"component: {A: \"a\\nb\"}\n", 1, 16, "cannot hold a line end or NUL"},
        Wrong{"component: {A: \"a\\0b\"}\n", 1, 16, "cannot hold a line end or NUL"},
        Wrong{"component: {\"A,B\": b}\n", 1, 13, "a key cannot hold a comma"},
        // A column counts characters, not bytes.
        Wrong{"component: {A: \xC2\xB0\xC2\xB0, B: []}\n", 1, 23, "one value expected here"},
        Wrong{"texts: {first: 65535}\nchannels: [{name: A, in: Bit}, {name: B, in: Bit}]\n", 2, 39,
              "no text identifier is left"}));

INSTANTIATE_TEST_SUITE_P(
    Parameters, WrongText,
    testing::Values(
        Wrong{"parameters:\n  - {name: A, type: UInt8, default: 256}\n", 2, 37,
              "default 256 does not fit into 8 bits, 0 to 255 is accepted"},
        Wrong{"parameters:\n  - {name: A, type: SInt16, default: -32769}\n", 2, 38,
              "default -32769 does not fit into 16 bits, -32768 to 32767 is accepted"},
        Wrong{"parameters:\n  - {name: A, type: Byte, bits: 3, default: 8}\n", 2, 45,
              "default 8 does not fit into 3 bits, 0 to 7 is accepted"},
        Wrong{"parameters:\n  - {name: A, type: UInt8, default: on}\n", 2, 37,
              "\"on\" is not a whole number"},
        Wrong{"optionLists: {L: {options: {0: slow, 300: fast}}}\nparameters:\n"
              "  - {name: A, type: UInt8, options: L, default: fats}\n",
              3, 49, "neither an option nor a whole number, did you mean \"fast\"? (accepted: "},
        Wrong{"optionLists: {L: {options: {0: slow, 300: fast}}}\nparameters:\n"
              "  - {name: A, type: UInt8, options: L, default: fast}\n",
              3, 49, "default fast does not fit into 8 bits"},
        Wrong{"parameters:\n  - {name: A, type: UInt8, options: L}\n", 2, 37,
              "unknown option list \"L\", there is none"},
        Wrong{"parameters:\n  - {name: A, type: UInt8, conversion: V}\n", 2, 40,
              "unknown conversion \"V\", there is none"},
        Wrong{"parameters:\n  - {name: A, type: UInt16}\n  - {name: B, at: 1, type: UInt8}\n", 3, 5,
              "\"B\" shares bits of byte 1 with \"A\" in line 2"},
        Wrong{"parameters:\n  - {name: A, type: Byte, bits: 2}\n"
              "  - {name: B, at: 0, type: Byte, bits: 1, bit: 1}\n",
              3, 5, "\"B\" shares bits of byte 0 with \"A\" in line 2"},
        Wrong{"parameters:\n  - {name: A, type: UInt8, range: [1]}\n", 2, 35,
              "least and greatest value expected"},
        Wrong{"parameters:\n  - {name: A, at: 255, type: UInt32}\n", 2, 5,
              "the parameter block would have 259 bytes, 255 at most"},
        Wrong{"parameters:\n  - {name: A, type: UInt16, default: 1}\n"
              "parameterBlock: {bytes: '00'}\n",
              2, 38, "the parameter block has 1 byte, no place for a default at byte 0"},
        Wrong{"parameterBlock: {descriptor: 1, skipped: '00'}\n", 1, 42,
              "1 byte, descriptor 1 requires 5"},
        Wrong{"parameterBlock: {descriptor: 0xff, skipped: '00'}\n", 1, 45,
              "1 byte, descriptor 255 requires 251"}));

INSTANTIATE_TEST_SUITE_P(
    Channels, WrongText,
    testing::Values(Wrong{"channels:\n  - {in: Bit}\n  - {in: Bit, number: 0}\n", 3, 23,
                          "channel 0 is in line 2 already"},
                    Wrong{"channels: [{name: A, in: Bit}]\nchannelNames: []\n", 2, 15,
                          "the channels state their names already"}));

// `count` values in a list.
std::string listOf(std::size_t count)
{
    std::string text = "raw: [";
    for (std::size_t i = 0; i < count; ++i) {
        text += "1,";
    }
    return text + "]\n";
}

// With the map, its key and the list there are three more.
TEST(WrongTexts, haveAtMost250000Values)
{
    const auto tooMany =
        errorAt(1, 500001, "more than 250000 values and keys, a text describes one module");
    EXPECT_THAT(errorsOf(listOf(249998)), ElementsAre(tooMany));
    EXPECT_THAT(errorsOf(listOf(249997)), testing::Not(testing::Contains(tooMany)));
}

TEST(WrongTexts, haveAtMostFourMebibytes)
{
    const auto tooLong =
        errorAt(2, 4194303, "more than 4194304 bytes, a text describes one module");
    const std::string most(4194304 - 2, 'x');
    EXPECT_THAT(errorsOf("#\n" + most + "\n"), ElementsAre(tooLong));
    EXPECT_THAT(errorsOf("#\n" + most), testing::Not(testing::Contains(tooLong)));
}

INSTANTIATE_TEST_SUITE_P(
    Documents, WrongText,
    testing::Values(Wrong{"", 1, 1, "no module found"}, Wrong{"5\n", 1, 1, "no module found"},
                    Wrong{"module: []\n---\nmodule: []\n", 3, 1, "a second document"},
                    Wrong{",module: []\n", 1, 1, "a second document"},
                    Wrong{"module: []\n--- 1\n--- [", 2, 5, "a second document"},
                    Wrong{std::string("module: []\nx\0b: 1\n", 18), 2, 2, "byte 00"},
                    Wrong{"raw: " + std::string(1000, '[') + "\n", 2, 1,
                          "500 nested lists and maps, which is too many"},
                    Wrong{"module: [1, 2\nb: c\n", 1, 9,
                          "this \"[\" is not closed, \"]\" is missing"}));

INSTANTIATE_TEST_SUITE_P(
    Yaml, WrongText,
    testing::Values(
        Wrong{"catalogue:\n  A: 1\n\tB: 2\n", 3, 1,
              "a tab in the indentation, blanks are expected"},
        Wrong{"channels:\n\t- {in: Bit}\n", 2, 1, "a tab in the indentation"},
        Wrong{"catalogue:\n  A: \"1\n  B: \"2\"\n", 2, 6,
              "this quotation mark (\") is not closed on its line"},
        Wrong{"channels:\n  - {name: 'A, in: Bit}\n  - {name: B, in: Bit}\n", 2, 12,
              "this quotation mark (') is not closed on its line"},
        Wrong{"channels:\n  - {in: Bit\n  - {in: Bit}\n", 2, 5, "this \"{\" is not closed"},
        Wrong{"parameters:\n  - {range: [0, 1, type: Byte}\n", 2, 13,
              "this \"[\" is not closed, \"]\" is missing"},
        Wrong{"catalogue:\n  A:1\n  B: 2\n", 2, 4, "a blank is missing after this colon"},
        Wrong{"catalogue:\n  A = 1\n  B: 2\n", 2, 3, "\"KEY: VALUE\" expected, there is no colon"},
        Wrong{"module: {type: 1}\ncatalogue\n  A: 1\n", 2, 1,
              "\"KEY:\" expected, there is no colon, and the next line is indented as its value"},
        Wrong{"catalogue:\n  A: B: 1\n", 2, 7, "a second colon in one value"},
        Wrong{"catalogue:\n  A: 1\n   B: 2\n", 3, 4,
              "indented by 3, the line above by 2: it continues the value of that line"},
        Wrong{"catalogue:\n  A: \"1\"\n   B: 2\n", 3, 4, "this line is indented by 3"},
        Wrong{"channels:\n  - {in: Bit}\n  {in: Bit}\n", 3, 3,
              "the lines of this list begin with \"- \""},
        Wrong{"channels:\n  - {name: A in: Bit}\n", 2, 16, "separated by commas"},
        Wrong{"// a module\ncatalogue: {A: B}\n", 1, 1, "a comment begins with #"},
        Wrong{"catalogue: {A: %}\n", 1, 16, "a text that begins with \"%\" needs quotation marks"},
        Wrong{"catalogue:\n  A: *b\n", 2, 6, "a text that begins with \"*\" needs quotation marks"},
        Wrong{"catalogue:\n  A: !b\n", 2, 6, "a text that begins with \"!\" needs quotation marks"},
        Wrong{"channels:\n\xC2\xA0 - {name: A, in: Bit}\n  - {name: B, in: Bit}\n", 2, 1,
              "U+00A0 (no-break space) in the indentation"}));

INSTANTIATE_TEST_SUITE_P(
    Slips, WrongText,
    testing::Values(
        Wrong{"channels: [{in: INT}]\n", 1, 17, "unknown type \"INT\", did you mean \"SInt16\"?"},
        Wrong{"channels: [{in: uint16_t}]\n", 1, 17, "did you mean \"UInt16\"?"},
        Wrong{"channels: [{in: BOOL}]\n", 1, 17, "did you mean \"Bit\"?"},
        Wrong{"parameters: [{name: A, type: BOOL}]\n", 1, 30,
              "unknown type \"BOOL\", a parameter of one bit has {type: Byte, bits: 1}"},
        Wrong{"parameters: [{name: A, type: REAL}]\n", 1, 30, "values are whole numbers"},
        Wrong{"channels: [{in:Bit, out: Bit}]\n", 1, 13,
              "unknown key \"in:Bit\", a blank is missing after \"in:\""},
        Wrong{"channels: [{out: Bit, nam\xC2\xA0: 1}]\n", 1, 23,
              "unknown key \"nam<U+00A0>\", did you mean \"name\"?"},
        Wrong{"channels: [{in: Bit, name:: 1}]\n", 1, 22, "one colon is expected after a key"},
        Wrong{"optionLists: {L: {options: {off: 0}}}\n", 1, 29,
              "the value of an option comes first: 0: off"},
        Wrong{"conversions: {V: {factor: 0.1 V}}\n", 1, 27, "such as 0.1 or -2e3, without a unit"},
        Wrong{"conversions: {V: {factor: 0,1}}\n", 1, 29, "numbers have a decimal point"},
        Wrong{"module: {type: 1, id: 5a01}\n", 1, 23, "did you mean 0x5a01?"},
        Wrong{"channels: [AI 1]\n", 1, 12, "such as \"KEY: VALUE\", found \"AI 1\""},
        Wrong{"catalogue: [{key: A, value: {B: 1}}]\n", 1, 29,
              "one value expected here, found keys with values"}));

const std::string volts = "conversions: {c: {factor: 0.001, unit: V}}\n";

INSTANTIATE_TEST_SUITE_P(
    PhysicalValues, WrongText,
    testing::Values(
        Wrong{volts + "parameters: [{name: A, type: SInt16, default: 9.5, conversion: c}]\n", 2, 47,
              "\"9.5\" is not a whole number: state \"9.5 V\", or the raw value 9500"},
        Wrong{volts + "parameters: [{name: A, type: SInt16, default: 9.5 mV, conversion: c}]\n", 2,
              47, "nor a physical value such as \"32.767 V\""},
        Wrong{volts + "parameters: [{name: A, type: SInt16, default: 40 V, conversion: c}]\n", 2,
              47, "\"40 V\" does not fit, -32.768 V to 32.767 V is accepted"},
        Wrong{volts + "parameters: [{name: A, type: SInt16, default: 9.5006 V, conversion: c}]\n",
              2, 47, "\"9.5006 V\" is between two values, the nearest one is 9.501 V, raw 9501"},
        Wrong{volts + "parameters: [{name: A, type: SInt16, range: [0, 9.5], conversion: c}]\n", 2,
              49, "state \"9.5 V\", or the raw value 9500"},
        Wrong{"parameters: [{name: A, type: SInt16, default: 9.5}]\n", 1, 47,
              "\"9.5\" is not a whole number"}));

INSTANTIATE_TEST_SUITE_P(
    PlacesOfParameters, WrongText,
    testing::Values(Wrong{"parameters: [{name: A, type: Byte, bits: 9, default: 1}]\n", 1, 42,
                          "9 bits do not fit into a byte, 1 to 8 is accepted"},
                    Wrong{"parameters: [{name: A, type: Byte, bits: 3, bit: 7, default: 1}]\n", 1,
                          50, "3 bits from bit 7 leave their byte, bit 0 to 5 is accepted"},
                    Wrong{"parameters: [{name: A, type: Byte, bit: 8, default: 1}]\n", 1, 41,
                          "leave their byte, bit 0 to 7 is accepted"},
                    Wrong{"parameters: [{name: A, type: 10, default: 1}]\n", 1, 30,
                          "a parameter of type 10 has no default"},
                    Wrong{"parameters: [{name: A, type: INT, default: 1}]\n", 1, 30,
                          "unknown type \"INT\""},
                    Wrong{"parameters: [{name: A, type: Byte, channel: AI 1}]\n", 1, 45,
                          "\"AI 1\" is not a channel number: the first has 0"},
                    Wrong{"parameters: [{name: A, type: Byte, options: {0: a}}]\n", 1, 45,
                          "the name of an entry expected here"},
                    Wrong{"parameters: [{name: A, type: Byte, channel: <i-1>}]\n", 1, 45,
                          "\"<i-1>\" is not a placeholder: with repeat, <n-1> is the number of "
                          "each channel from 0"},
                    Wrong{"parameters: [{name: A, type: Byte, range: 0-10}]\n", 1, 43,
                          "least and greatest value expected, such as [0, 10]"},
                    Wrong{"optionLists: {L: {options: [off, on]}}\n", 1, 29,
                          "options are stated as VALUE: TEXT"}));

TEST(WrongSizes, areReportedAtTheirGroup)
{
    const std::string digits(2 * 65530, '0');
    EXPECT_THAT(
        errorsOf("header: none\nraw:\n  - {id: 5, hex: '" + digits + "'}\n"),
        ElementsAre(errorAt(3, 5, "group 0005 (raw) would have 65536 bytes, 65535 at most")));
    const std::string half(2 * 40000, '0');
    EXPECT_THAT(
        errorsOf("raw:\n  - {id: 5, hex: '" + half + "'}\n  - {id: 6, hex: '" + half + "'}\n"),
        ElementsAre(errorAt(1, 1, "the content length in its header holds 65535 at most")));
}

TEST(WrongSizes, ofAListAreReportedThere)
{
    std::string options;
    for (int i = 0; i < 256; ++i) {
        options += (i == 0 ? "" : ", ") + std::to_string(i) + ": A";
    }
    EXPECT_THAT(errorsOf("optionLists: {L: {options: {" + options + "}}}\n"),
                ElementsAre(errorAt(1, 28, "256 options, a list has 255 at most")));
}

TEST(WrongTexts, areAllReportedInTheOrderOfTheText)
{
    EXPECT_THAT(errorsOf("raw: 1\nmodule: {type: x, id: y}\nimage: []\nheader: 1\n"),
                ElementsAre(errorAt(1, 6, "a list"), errorAt(2, 16, "\"x\""),
                            errorAt(2, 23, "\"y\""), errorAt(3, 8, "keys with values"),
                            errorAt(3, 8, "stated once"), errorAt(4, 9, "keys with values")));
}

// The unknown keys are not similar to known ones: errors that may follow from them come after them.
TEST(UnknownKeys, areReportedBeforeTheErrorsInTheirMapping)
{
    EXPECT_THAT(errorsOf("module: {type: x, id: 1}\n"
                         "parameters: [{name: A, type: UInt8, default: 3 ms, zzzz: 1, yyyy: 2},"
                         " {name: B, type: UInt8, default: 4 ms}]\n"),
                ElementsAre(errorAt(1, 16, "\"x\""), errorAt(2, 52, "unknown key \"zzzz\""),
                            errorAt(2, 61, "unknown key \"yyyy\""),
                            errorAt(2, 46, "\"3 ms\" is not a whole number"),
                            errorAt(2, 103, "\"4 ms\" is not a whole number")));
    EXPECT_THAT(errorsOf("module: {type: x, id: 1}\nremark: 1\n"),
                ElementsAre(errorAt(2, 1, "unknown key \"remark\""), errorAt(1, 16, "\"x\"")));
}

const std::string statedVolts = "conversions: {volts: {factor: 0.001, unit: V}}\n";
const std::string statedModes = "optionLists: {modes: {options: {0: slow, 1: fast}}}\n";

INSTANTIATE_TEST_SUITE_P(TypographicQuotes, WrongText,
                         testing::Values(Wrong{"module: {type: \u201C1\u201D, id: 1}\n", 1, 16,
                                               "; quotation marks of YAML are \" and '"},
                                         Wrong{"module: {\u201Etype\u201C: 1, type: 1, id: 1}\n", 1,
                                               10, "; quotation marks of YAML are \" and '"}));

INSTANTIATE_TEST_SUITE_P(
    LargeNumbers, WrongText,
    testing::Values(
        Wrong{"parameters: [{name: A, type: UInt16, range: [-10000000000000000000000, 3]}]\n", 1,
              46,
              "-10000000000000000000000 does not fit into the parameter, 0 to 65535 is accepted"},
        Wrong{"parameters: [{name: A, type: SInt8, default: 0x10000000000000000}]\n", 1, 46,
              "0x10000000000000000 does not fit into the parameter, -128 to 127"},
        Wrong{"module: {type: 99999999999999999999, id: 1}\n", 1, 16,
              "99999999999999999999 is out of range, 0 to 255 is accepted"},
        Wrong{"parameters: [{name: A, type: Byte, bits: 1, default: 3}]\n", 1, 54,
              "default 3 does not fit into 1 bit, 0 to 1 is accepted"},
        Wrong{"parameters: [{name: A, at: 0, type: Byte, bits: 1, bit: 8, default: 0}]\n", 1, 57,
              "1 bit from bit 8 leaves its byte, bit 0 to 7 is accepted"}));

// Errors that only follow from a misspelt key or name are not reported.
INSTANTIATE_TEST_SUITE_P(
    Misspelt, WrongText,
    testing::Values(
        Wrong{statedVolts +
                  "parameters: [{name: A, type: SInt16, default: 9.5 V, range: [-10 V, 10 V], "
                  "conversoin: volts}]\n",
              2, 76, "unknown key \"conversoin\", did you mean \"conversion\"?"},
        Wrong{statedModes + "parameters: [{name: A, type: UInt8, default: fast, option: modes}]\n",
              2, 52, "unknown key \"option\", did you mean \"options\"?"},
        Wrong{"parameters: [{name: A, type: UInt8, default: 5 s, range: [1 s, 9 s], units: s}]\n",
              1, 70, "unknown key \"units\", did you mean \"unit\"?"},
        Wrong{"parameters: [{name: A, typ: UInt16, default: 1000}]\n", 1, 24,
              "unknown key \"typ\", did you mean \"type\"?"},
        Wrong{"parameters: [{nam: A, type: UInt16}]\n", 1, 15,
              "unknown key \"nam\", did you mean \"name\"?"},
        Wrong{"parameters: [{name: A, at: 0, type: Byte, bis: 1, bit: 0},"
              " {name: B, at: 0, type: Byte, bits: 1, bit: 1}]\n",
              1, 43, "unknown key \"bis\", did you mean \"bits\""},
        Wrong{"channels: [{name: A, inn: Bit}]\n", 1, 22,
              "unknown key \"inn\", did you mean \"in\"?"},
        Wrong{"channels: [{repaet: 2, name: AI <n>, number: <n>, in: Bit}]\n", 1, 13,
              "unknown key \"repaet\", did you mean \"repeat\"?"},
        Wrong{"parameters: [{repeat: 2, eahc: [{name: AI <n>, type: UInt8}]}]\n", 1, 26,
              "unknown key \"eahc\", did you mean \"each\"?"},
        Wrong{"conversion: {volts: {factor: 0.001, unit: V}}\n"
              "parameters: [{name: A, type: SInt16, default: 9.5 V, conversion: volts}]\n",
              1, 1, "unknown key \"conversion\", did you mean \"conversions\"?"},
        Wrong{"optionList: {modes: {options: {0: slow, 1: fast}}}\n"
              "parameters: [{name: A, type: UInt8, default: fast, options: modes}]\n",
              1, 1, "unknown key \"optionList\", did you mean \"optionLists\"?"},
        Wrong{statedVolts +
                  "parameters: [{name: A, type: SInt16, default: 9.5 V, conversion: vlots}]\n",
              2, 66, "unknown conversion \"vlots\", did you mean \"volts\"?"},
        Wrong{statedModes + "parameters: [{name: A, type: UInt8, default: fast, options: mode}]\n",
              2, 61, "unknown option list \"mode\", did you mean \"modes\"?"},
        Wrong{"conversions: {volts: {factr: 0.001, unit: V}}\n"
              "parameters: [{name: A, type: SInt16, default: 9.5 V, conversion: volts}]\n",
              1, 23, "unknown key \"factr\", did you mean \"factor\"?"},
        Wrong{"conversions: {volts: {factor: \"0,001\", unit: V}}\n"
              "parameters: [{name: A, type: SInt16, default: 9.5 V, conversion: volts}]\n",
              1, 31, "is not a 32-bit number"}));

TEST(StatedOddities, areNoErrors)
{
    EXPECT_THAT(errorsOf("parameters:\n  - {name: A, type: UInt8}\n"
                         "  - {name: B, at: 0, type: UInt8, overlaps: true}\n"),
                IsEmpty());
    EXPECT_THAT(errorsOf("channels: [{in: Bit}, {in: Bit, number: 0, again: true}]\n"), IsEmpty());
}

TEST(Excerpt, showsTheLineAndACaret)
{
    const auto excerpt = mxauthor::sourceExcerpt("a\n\tb\xC2\xB0 c\r\nd", {2, 5, "", 2});
    EXPECT_EQ(excerpt.line, " b\xC2\xB0 c ");
    EXPECT_EQ(excerpt.caret, "    ^");
}

TEST(Excerpt, ofALongLineIsCutAroundTheCaret)
{
    const auto excerpt = mxauthor::sourceExcerpt(std::string(500, 'a') + "X", {1, 501, "", 0});
    EXPECT_EQ(excerpt.line, std::string(70, 'a') + "X");
    EXPECT_EQ(excerpt.caret, std::string(70, ' ') + "^");
}

} // namespace
