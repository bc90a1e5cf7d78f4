#include "text/IecNames.h"

#include <Poco/String.h>
#include <Poco/StringTokenizer.h>

#include "text/Beginning.h"
#include "text/TextWidth.h"
#include "text/Utf8.h"

#include <array>
#include <cctype>

namespace text {

namespace {

constexpr const char* prefix = "Ch_";
constexpr std::size_t longestIdentifier = 97; // without the prefix
constexpr std::size_t bytesLookedAt = 1000;   // at the beginning of a name

// Keywords, which are invalid as names of variables.
constexpr const char* keywords =
    "ABS ABSTRACT ACOS ACTION ADD AND ANDN ANY ANY_BIT ANY_DATE ANY_INT ANY_NUM ANY_REAL "
    "ARRAY ASIN AT ATAN BOOL BY BYTE CAL CALC CALCN CASE CHAR CLASS CONCAT CONFIGURATION "
    "CONSTANT CONTINUE COS CTD CTU CTUD DATE DATE_AND_TIME DELETE DINT DIV DO DT DWORD ELSE "
    "ELSIF EN END_ACTION END_CASE END_CLASS END_CONFIGURATION END_FOR END_FUNCTION "
    "END_FUNCTION_BLOCK END_IF END_INTERFACE END_METHOD END_NAMESPACE END_PROGRAM "
    "END_REPEAT END_RESOURCE END_STEP END_STRUCT END_TRANSITION END_TYPE END_VAR END_WHILE "
    "ENO EQ EXIT EXP EXPT EXTENDS FALSE FINAL FIND FOR FROM FUNCTION FUNCTION_BLOCK F_EDGE "
    "F_TRIG GE GT IF IMPLEMENTS INITIAL_STEP INSERT INT INTERFACE INTERNAL INTERVAL JMP "
    "JMPC JMPCN LD LDATE LDN LDT LE LEFT LEN LIMIT LINT LN LOG LREAL LT LTIME LTOD LWORD "
    "MAX METHOD MID MIN MOD MOVE MUL MUX NAMESPACE NE NON_RETAIN NOT NULL OF ON OR ORN "
    "OVERLAP OVERRIDE PRIORITY PRIVATE PROGRAM PROTECTED PUBLIC R READ_ONLY READ_WRITE REAL "
    "REF REF_TO REPEAT REPLACE RESOURCE RET RETAIN RETC RETCN RETURN RIGHT ROL ROR RS "
    "R_EDGE R_TRIG S SEL SEMA SHL SHR SIN SINGLE SINT SQRT SR ST STEP STN STRING STRUCT SUB "
    "SUPER TAN TASK THEN THIS TIME TIME_OF_DAY TO TOD TOF TON TP TRANSITION TRUE TRUNC TYPE "
    "UDINT UINT ULINT UNTIL USING USINT VAR VAR_ACCESS VAR_CONFIG VAR_EXTERNAL VAR_GLOBAL "
    "VAR_INPUT VAR_IN_OUT VAR_OUTPUT VAR_TEMP WCHAR WHILE WITH WORD WSTRING XOR XORN";

// ASCII letters for the letters from U+00C0 on.
constexpr std::array<const char*, 64> latin1 = {
    "A", "A", "A", "A", "Ae", "A", "Ae", "C", "E", "E", "E", "E", "I",  "I", "I",  "I",
    "D", "N", "O", "O", "O",  "O", "Oe", "",  "O", "U", "U", "U", "Ue", "Y", "Th", "ss",
    "a", "a", "a", "a", "ae", "a", "ae", "c", "e", "e", "e", "e", "i",  "i", "i",  "i",
    "d", "n", "o", "o", "o",  "o", "oe", "",  "o", "u", "u", "u", "ue", "y", "th", "y"};

// Other characters in device texts that represent letters or digits.
const std::map<char32_t, const char*> otherLetters = {
    {0x00B0, "deg"}, {0x00B2, "2"},   {0x00B3, "3"},  {0x00B5, "u"},     {0x00B9, "1"},
    {0x0152, "Oe"},  {0x0153, "oe"},  {0x0160, "S"},  {0x0161, "s"},     {0x0178, "Y"},
    {0x017D, "Z"},   {0x017E, "z"},   {0x0192, "f"},  {0x0394, "Delta"}, {0x03A9, "Ohm"},
    {0x03BC, "u"},   {0x03C6, "phi"}, {0x1E9E, "Ss"}, {0x2126, "Ohm"}};

bool isKeyword(const std::string& identifier)
{
    static const std::set<std::string> all = [] {
        const Poco::StringTokenizer words(keywords, " ");
        return std::set<std::string>(words.begin(), words.end());
    }();
    return all.count(Poco::toUpper(identifier)) != 0;
}

bool isPlain(char32_t point)
{
    return point < 0x80 && std::isalnum(static_cast<unsigned char>(point)) != 0;
}

// The ASCII letters and digits for `point`; empty for a separator.
std::string plainLetters(char32_t point)
{
    if (isPlain(point)) {
        return {static_cast<char>(point)};
    }
    if (point >= 0xC0 && point <= 0xFF) {
        return latin1[point - 0xC0];
    }
    const auto found = otherLetters.find(point);
    return found == otherLetters.end() ? "" : found->second;
}

} // namespace

std::string iecIdentifier(const std::string& bytes)
{
    std::string identifier;
    bool separated = false;
    for (const char32_t point : codePoints(beginningOf(bytes, bytesLookedAt))) {
        const std::string letters = plainLetters(point);
        const bool needsSeparator = separated && !identifier.empty();
        if (identifier.size() + letters.size() + (needsSeparator ? 1 : 0) > longestIdentifier) {
            break;
        }
        if (!letters.empty()) {
            identifier += (needsSeparator ? "_" : "") + letters;
        }
        separated = letters.empty();
    }
    const bool startsWithDigit = !identifier.empty() && identifier[0] <= '9';
    if (startsWithDigit || isKeyword(identifier)) {
        identifier.insert(0, prefix);
    }
    return identifier;
}

std::string iecCommentText(const std::string& bytes)
{
    std::string comment;
    for (const char c : labelOf(bytes)) {
        const char before = comment.empty() ? ' ' : comment.back();
        if ((before == '*' && c == ')') || (before == '(' && c == '*')) {
            comment += ' ';
        }
        comment += c;
    }
    return comment;
}

std::string IecNames::unique(const std::string& identifier)
{
    std::string name = identifier;
    unsigned& number = next.try_emplace(Poco::toUpper(identifier), 2).first->second;
    while (!used.insert(Poco::toUpper(name)).second) {
        name = identifier + "_" + std::to_string(number++);
    }
    return name;
}

} // namespace text
