#include <datamodel/Utf8Text.h>

#include <gtest/gtest.h>

namespace {

using datamodel::isUtf8;
using datamodel::toUtf8;

TEST(Utf8Text, validUtf8StaysAsItIs)
{
    for (const char* text : {"", "plain",
                             "\xC2\xB1"
                             "10 V",
                             "\xE2\x80\xA6", "\xF0\x9F\x98\x80"}) {
        EXPECT_EQ(toUtf8(text), text);
    }
    const std::string withNul("a\0\xC2\xB1", 4);
    EXPECT_EQ(toUtf8(withNul), withNul);
}

TEST(Utf8Text, otherBytesAreReadAsWindows1252)
{
    EXPECT_EQ(toUtf8("\xB1"
                     "10 V"),
              "\xC2\xB1"
              "10 V");
    EXPECT_EQ(toUtf8("\x80"), "\xE2\x82\xAC"); // euro sign, U+20AC
    EXPECT_EQ(toUtf8("\x85"), "\xE2\x80\xA6"); // ellipsis, U+2026
    EXPECT_EQ(toUtf8("\x9F"), "\xC5\xB8");     // Y with diaeresis, U+0178
    EXPECT_EQ(toUtf8("\xFF"), "\xC3\xBF");     // y with diaeresis, U+00FF
    EXPECT_EQ(toUtf8("\x81"), "\xC2\x81");     // unassigned: the control character of that number
    EXPECT_EQ(toUtf8(std::string("\xB0\0\xB0", 3)), std::string("\xC2\xB0\0\xC2\xB0", 5));
}

TEST(Utf8Text, oneByteThatIsNoUtf8DecidesForTheWholeText)
{
    EXPECT_EQ(toUtf8("\xC2\xB0 \xB0"), "\xC3\x82\xC2\xB0 \xC2\xB0");
}

TEST(Utf8Text, malformedUtf8IsNotTakenForUtf8)
{
    // A lone lead byte, an overlong slash, a surrogate, a number beyond U+10FFFF, a cut sequence.
    for (const char* text : {"\xC2", "\xC0\xAF", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xE2\x82"}) {
        EXPECT_FALSE(isUtf8(text));
    }
    EXPECT_EQ(toUtf8("\xC0\xAF"), "\xC3\x80\xC2\xAF");
}

TEST(Utf8Text, everySingleByteGivesValidUtf8)
{
    for (int byte = 0; byte < 256; ++byte) {
        EXPECT_TRUE(isUtf8(toUtf8(std::string(1, static_cast<char>(byte))))) << byte;
    }
}

// The bytes `lead` and `second`, followed by `count - 2` continuation bytes.
bool isCharacter(int lead, int second, std::size_t count)
{
    std::string bytes(count, '\x80');
    bytes[0] = static_cast<char>(lead);
    bytes[1] = static_cast<char>(second);
    return datamodel::utf8CharacterLength(bytes, 0) == count;
}

// U+0080 to U+07FF are 1,920 characters of two bytes; U+0800 to U+FFFF without the 2,048 surrogates
// 61,440 of three, 960 with the last byte 0x80; U+10000 to U+10FFFF 1,048,576 of four, 256 with the
// last two bytes 0x80.
TEST(Utf8Text, hasAsManyCharactersOfEachLengthAsUnicode)
{
    int characters[5] = {};
    for (int lead = 0; lead < 256; ++lead) {
        for (int second = 0; second < 256; ++second) {
            for (std::size_t count = 2; count <= 4; ++count) {
                characters[count] += isCharacter(lead, second, count);
            }
        }
    }
    EXPECT_EQ(characters[2], 1920);
    EXPECT_EQ(characters[3], 960);
    EXPECT_EQ(characters[4], 256);
}

TEST(Utf8Text, everyByteOfACharacterButTheFirstContinuesIt)
{
    for (const std::string text : {"\xC3\xA4", "\xE2\x82\xAC", "\xF0\x9F\x98\x80"}) {
        for (std::size_t place = 1; place < text.size(); ++place) {
            for (const char other : {'\x7F', '\xC0'}) {
                std::string broken = text;
                broken[place] = other;
                EXPECT_FALSE(isUtf8(broken));
            }
            EXPECT_FALSE(isUtf8(text.substr(0, place)));
        }
    }
}

TEST(Utf8Text, appendsCharactersOfEveryLength)
{
    std::string text;
    for (const char32_t character :
         {U'\x7F', U'\u0080', U'\u07FF', U'\u0800', U'\uFFFF', U'\U00010000', U'\U0010FFFF'}) {
        datamodel::appendUtf8(text, character);
    }
    EXPECT_EQ(text, "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF");
}

} // namespace
