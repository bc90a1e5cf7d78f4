// The text of an mx file builds the same bytes.

#include "GeneratedFiles.h"
#include "RoundTripFiles.h"

#include <mxauthor/CheckText.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <random>

namespace {

using mxauthor::Bytes;
using mxauthor::MxFile;
using roundtrip::asBytes;
using roundtrip::loadExample;

// The bytes that the text of `file` builds; the errors fail the test.
Bytes builtAgain(const std::string& text)
{
    const mxauthor::BuildResult built = mxauthor::buildFromText(text, "");
    for (const mxauthor::SourceError& error : built.errors) {
        ADD_FAILURE() << error.line << ":" << error.column << ": " << error.text << "\n" << text;
    }
    return built.errors.empty() ? mxauthor::writeMxFile(built.file) : Bytes();
}

bool hasSection(const std::string& text, const std::string& key)
{
    return text.compare(0, key.size() + 1, key + ":") == 0 ||
           text.find("\n" + key + ":") != std::string::npos;
}

class ExampleText : public testing::TestWithParam<std::string>
{};

TEST_P(ExampleText, buildsTheSameBytes)
{
    const std::vector<char> chars = loadExample(GetParam());
    const std::string text = mxauthor::dumpText(mxauthor::readMxFile(chars));
    EXPECT_EQ(builtAgain(text), asBytes(chars)) << text;
}

TEST_P(ExampleText, isTheFormForPeople)
{
    const std::string text = mxauthor::dumpText(mxauthor::readMxFile(loadExample(GetParam())));
    EXPECT_FALSE(hasSection(text, "unread")) << text;
    // In one of them a unit is before the options, so that its identifier has to be stated.
    const bool hasFixedText = GetParam() == "MX0803.bin";
    EXPECT_EQ(text.find("  fixed:\n    100: A\nimage") != std::string::npos, hasFixedText) << text;
    EXPECT_EQ(text.find("fixed:") != std::string::npos, hasFixedText) << text;
}

INSTANTIATE_TEST_SUITE_P(Files, ExampleText, testing::ValuesIn(roundtrip::examples()));

TEST(GeneratedText, buildsTheSameBytes)
{
    roundtrip::GeneratedFiles files(19770707);
    int readable = 0;
    for (int i = 0; i < TEXT_ROUND_TRIPS; ++i) {
        const std::vector<char> chars = files.next();
        const std::string text = mxauthor::dumpText(mxauthor::readMxFile(chars));
        ASSERT_EQ(builtAgain(text), asBytes(chars)) << "file " << i << "\n" << text;
        readable += hasSection(text, "raw") || text.find("fixed:") != std::string::npos ? 0 : 1;
    }
    // Otherwise all could be raw bytes. Most files have texts that nothing uses, or odd payloads.
    EXPECT_GT(readable, TEXT_ROUND_TRIPS / 20);
}

// Puts some random bytes, or a piece of the text itself, over or into the text.
std::string mutated(std::string text, std::mt19937& random)
{
    const auto below = [&random](std::size_t limit) { return random() % limit; };
    static const std::string signs = "\n :,-[]{}\"'|>&*#!%@0123456789aZ\xFF\xC3\0\t";
    for (std::size_t i = 1 + below(4); i > 0; --i) {
        const std::size_t pos = below(text.size());
        switch (below(3)) {
        case 0:
            text[pos] = signs[below(signs.size())];
            break;
        case 1:
            text.erase(pos, 1 + below(20));
            break;
        default:
            text.insert(pos, text.substr(below(text.size()), 1 + below(30)));
        }
    }
    return text;
}

TEST(MutatedText, isBuiltOrExplained)
{
    std::mt19937 random(65535);
    std::size_t errors = 0;
    std::size_t files = 0;
    for (const std::string& name : roundtrip::examples()) {
        const MxFile file = mxauthor::readMxFile(loadExample(name));
        const std::string text = name == "MX0960.bin" ? "" : mxauthor::dumpText(file);
        for (int i = 0; i < 10 && !text.empty(); ++i) {
            const std::string source = mutated(text, random);
            const mxauthor::BuildResult built = mxauthor::buildFromText(source, "");
            for (const mxauthor::SourceError& error : built.errors) {
                EXPECT_EQ(mxauthor::sourceExcerpt(source, error).line.find('\n'),
                          std::string::npos);
                EXPECT_FALSE(error.text.empty());
                ++errors;
            }
            files += built.errors.empty() ? mxauthor::writeMxFile(built.file).size() > 0 : 0;
        }
    }
    EXPECT_GT(errors, 100U);
    EXPECT_GT(files, 50U);
}

// Whether the position is a character of the text, or the end of a line.
bool isInText(const std::string& source, const mxauthor::SourceError& error)
{
    const auto lines = static_cast<std::size_t>(std::count(source.begin(), source.end(), '\n')) + 1;
    const std::string line =
        source.substr(error.lineStart, source.find('\n', error.lineStart) - error.lineStart);
    return error.line >= 1 && error.line <= lines && error.column >= 1 &&
           error.column <= line.size() + 1;
}

TEST(MutatedText, hasItsErrorsAndFindingsWithinTheText)
{
    std::mt19937 random(255);
    std::size_t findings = 0;
    for (const char* name : {"MX0502.bin", "MX0990.bin", "MX0304.bin", "MX0602.bin"}) {
        const std::string text = mxauthor::dumpText(mxauthor::readMxFile(loadExample(name)));
        for (int i = 0; i < 100; ++i) {
            const std::string source = mutated(text, random);
            const mxauthor::BuildResult built = mxauthor::buildFromText(source, "");
            for (const mxauthor::SourceError& error : built.errors) {
                EXPECT_TRUE(isInText(source, error)) << error.text;
            }
            if (!built.errors.empty()) {
                continue;
            }
            for (const mxauthor::TextFinding& finding : mxauthor::checkText(source, built)) {
                EXPECT_TRUE(isInText(source, finding.where)) << finding.where.text;
                ++findings;
            }
        }
    }
    EXPECT_GT(findings, 100U);
}

TEST(CutText, isBuiltOrExplainedWithinTheText)
{
    const std::string text = mxauthor::dumpText(mxauthor::readMxFile(loadExample("MX0502.bin")));
    for (std::size_t length = 0; length < text.size(); ++length) {
        const std::string source = text.substr(0, length);
        for (const mxauthor::SourceError& error : mxauthor::buildFromText(source, "").errors) {
            EXPECT_TRUE(isInText(source, error)) << length << ": " << error.text;
        }
    }
}

TEST(MutatedText, mayBeDeeplyNested)
{
    for (const char* bracket : {"[", "{a: ", "- "}) {
        std::string text = "raw: ";
        for (int i = 0; i < 100000; ++i) {
            text += bracket;
        }
        EXPECT_FALSE(mxauthor::buildFromText(text, "").errors.empty());
    }
}

TEST(DamagedText, buildsTheSameBytesAtEveryLengthOfAFile)
{
    const std::vector<char> whole = loadExample("MX0502.bin");
    for (std::size_t length = 0; length < whole.size(); length += 7) {
        const std::vector<char> cut(whole.begin(),
                                    whole.begin() + static_cast<std::ptrdiff_t>(length));
        const auto [file, failure] = mxauthor::readDamagedMxFile(cut);
        const std::string text = mxauthor::dumpText(file);
        EXPECT_EQ(!failure.has_value(), length <= 4) << length;
        ASSERT_EQ(builtAgain(text), asBytes(cut)) << length << "\n" << text;
    }
}

TEST(DamagedText, hasAFormForTheGroupsInFrontOfTheDamage)
{
    const std::vector<char> chars = loadExample("MX9999.bin");
    const auto [file, failure] = mxauthor::readDamagedMxFile(chars);
    const std::string text = mxauthor::dumpText(file);
    EXPECT_EQ(failure, "Parser::parse(): Truncated mx buffer");
    EXPECT_TRUE(hasSection(text, "module"));
    EXPECT_TRUE(hasSection(text, "tail"));
    EXPECT_EQ(builtAgain(text), asBytes(chars));
}

} // namespace
