#include "TypeWords.h"

#include "Section.h"

#include <Poco/String.h>

#include <text/NearestWords.h>

#include <mxformat/Datatype.h>

#include <map>

namespace mxauthor {

const std::string bitWord = "Bit";

namespace {

using mxformat::datatypes;

// Null for another word.
const mxformat::Datatype* typeOfWord(const std::string& word)
{
    for (const mxformat::Datatype& type : datatypes) {
        if (type.name == word) {
            return &type;
        }
    }
    return nullptr;
}

// The types of IEC 61131-3 and of C, which authors know, in lower case.
const std::map<std::string, std::string>& foreignWords()
{
    static const std::map<std::string, std::string> words = {
        {"bool", "Bit"},        {"usint", "UInt8"},     {"sint", "SInt8"},
        {"uint", "UInt16"},     {"int", "SInt16"},      {"udint", "UInt32"},
        {"dint", "SInt32"},     {"ulint", "UInt64"},    {"lint", "SInt64"},
        {"word", "UInt16"},     {"dword", "UInt32"},    {"lword", "UInt64"},
        {"int8", "SInt8"},      {"int16", "SInt16"},    {"int32", "SInt32"},
        {"int64", "SInt64"},    {"int8_t", "SInt8"},    {"int16_t", "SInt16"},
        {"int32_t", "SInt32"},  {"int64_t", "SInt64"},  {"uint8_t", "UInt8"},
        {"uint16_t", "UInt16"}, {"uint32_t", "UInt32"}, {"uint64_t", "UInt64"}};
    return words;
}

bool isFloatWord(const std::string& lower)
{
    return lower == "real" || lower == "lreal" || lower == "float" || lower == "double";
}

std::string unknownType(const std::string& word, const std::vector<std::string>& words)
{
    const std::string lower = Poco::toLower(word);
    const auto foreign = foreignWords().find(lower);
    const std::string meant = foreign == foreignWords().end() ? word : foreign->second;
    std::string text = "unknown type \"" + word + "\"";
    if (isFloatWord(lower)) {
        text += ", values are whole numbers, which a conversion turns into physical ones";
    } else if ((meant == bitWord || Poco::toLower(meant) == "bit") && &words == &typeWords()) {
        return text + ", a parameter of one bit has {type: Byte, bits: 1}" +
               text::acceptedWords("", words);
    }
    return text + text::acceptedWords(meant, words);
}

} // namespace

const std::vector<std::string>& typeWords()
{
    static const std::vector<std::string> words = [] {
        std::vector<std::string> names;
        names.reserve(datatypes.size());
        for (const mxformat::Datatype& type : datatypes) {
            names.emplace_back(type.name);
        }
        return names;
    }();
    return words;
}

const std::vector<std::string>& kindWords()
{
    static const std::vector<std::string> words = [] {
        std::vector<std::string> all = typeWords();
        all.push_back(bitWord);
        return all;
    }();
    return words;
}

std::string typeWord(std::uint8_t type)
{
    const auto* const found = mxformat::findDatatype(type);
    return found == nullptr ? std::to_string(type) : found->name;
}

std::uint8_t bitsOfKindWord(const std::string& word)
{
    if (word == bitWord) {
        return 1;
    }
    const auto* const type = typeOfWord(word);
    return type == nullptr ? std::uint8_t{0} : static_cast<std::uint8_t>(8 * type->bytes);
}

std::uint8_t readTypeWord(const YAML::Node& node, const std::vector<std::string>& words,
                          std::uint8_t limit, SourceErrors& errors)
{
    const auto word = readScalar(node, errors);
    if (!word) {
        return 0;
    }
    if (*word == bitWord && &words == &kindWords()) {
        return mxformat::bitFieldDatatype;
    }
    if (const auto* const type = typeOfWord(*word)) {
        return type->number;
    }
    if (parseInteger(*word)) {
        return static_cast<std::uint8_t>(readNumber(node, limit, errors).value_or(0));
    }
    errors.add(node, unknownType(*word, words));
    return 0;
}

} // namespace mxauthor
