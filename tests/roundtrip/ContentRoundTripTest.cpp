// Bytes read as typed content and written again are the same bytes.

#include "GeneratedFiles.h"
#include "RoundTripFiles.h"

#include <mxauthor/Check.h>
#include <mxauthor/Diff.h>
#include <mxauthor/Explain.h>
#include <mxauthor/MxFile.h>

#include <gmock/gmock.h>

namespace {

using mxauthor::MxFile;
using mxauthor::readMxFile;
using mxauthor::writeMxFile;
using roundtrip::asBytes;
using roundtrip::examples;
using roundtrip::loadExample;

// Fails unless the parts are adjacent from the first byte to the last.
void expectEveryByteOnce(const mxauthor::Explanation& explanation, std::size_t size)
{
    std::size_t next = 0;
    for (const mxauthor::ExplainedPart& part : explanation.parts) {
        ASSERT_EQ(part.place.offset, next) << part.field;
        ASSERT_GT(part.place.length, 0U) << part.field;
        next += part.place.length;
    }
    ASSERT_EQ(next, size);
}

class ExampleContent : public testing::TestWithParam<std::string>
{};

TEST_P(ExampleContent, isWrittenAsItWasRead)
{
    const std::vector<char> chars = loadExample(GetParam());
    EXPECT_EQ(writeMxFile(readMxFile(chars)), asBytes(chars));
}

TEST_P(ExampleContent, isTypedButForTheGroupsOfTheMaker)
{
    for (const mxauthor::Group& group : readMxFile(loadExample(GetParam())).groups) {
        const bool isMakers = group.id == 0x20D4 || group.id == 0x7ABC;
        EXPECT_EQ(std::holds_alternative<mxauthor::RawGroup>(group.content), isMakers) << group.id;
    }
}

TEST_P(ExampleContent, isExplainedEveryByteOnce)
{
    const std::vector<char> chars = loadExample(GetParam());
    const mxauthor::Explanation explanation = mxauthor::explain(chars);
    expectEveryByteOnce(explanation, chars.size());
    EXPECT_EQ(explanation.failure, std::nullopt);
}

TEST_P(ExampleContent, isTheSameAsItself)
{
    const MxFile file = readMxFile(loadExample(GetParam()));
    EXPECT_TRUE(compare(file, file).differences.empty());
    EXPECT_TRUE(compare(file, file).imageStaysValid);
}

// Every finding of these files was reviewed: an error among them would be a mistake of the checker.
TEST_P(ExampleContent, holdsNoError)
{
    for (const mxauthor::Finding& finding : mxauthor::check(loadExample(GetParam()))) {
        EXPECT_NE(finding.rule->severity, mxauthor::Severity::Error) << describe(finding);
    }
}

INSTANTIATE_TEST_SUITE_P(Files, ExampleContent, testing::ValuesIn(examples()));

TEST(GeneratedContent, isWrittenAsItWasRead)
{
    roundtrip::GeneratedFiles files(20240531);
    unsigned rawGroups = 0;
    unsigned typedGroups = 0;
    for (int i = 0; i < 10000; ++i) {
        const std::vector<char> chars = files.next();
        const MxFile file = readMxFile(chars);
        ASSERT_EQ(writeMxFile(file), asBytes(chars)) << "file " << i;
        for (const mxauthor::Group& group : file.groups) {
            ++(std::holds_alternative<mxauthor::RawGroup>(group.content) ? rawGroups : typedGroups);
        }
    }
    // The generator makes both: otherwise this test would not show what it claims.
    EXPECT_GT(rawGroups, 5000U);
    EXPECT_GT(typedGroups, 50000U);
}

TEST(GeneratedContent, isExplainedEveryByteOnceAndCheckedWithoutHarm)
{
    roundtrip::GeneratedFiles files(41);
    std::vector<char> before = files.next();
    unsigned findings = 0;
    for (int i = 0; i < 500; ++i) {
        const std::vector<char> chars = files.next();
        expectEveryByteOnce(mxauthor::explain(chars), chars.size());
        ASSERT_FALSE(HasFatalFailure()) << "file " << i;
        findings += static_cast<unsigned>(mxauthor::check(chars).size());
        compare(readMxFile(before), readMxFile(chars));
        before = chars;
    }
    EXPECT_GT(findings, 2500U);
}

TEST(GeneratedContent, isExplainedAndCheckedAtEveryLengthOfAFile)
{
    const std::vector<char> whole = loadExample("MX0304.bin");
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const std::vector<char> cut(whole.begin(),
                                    whole.begin() + static_cast<std::ptrdiff_t>(length));
        expectEveryByteOnce(mxauthor::explain(cut), length);
        ASSERT_FALSE(HasFatalFailure()) << length;
        EXPECT_FALSE(mxauthor::check(cut).empty()) << length;
    }
}

TEST(GeneratedContent, failsCleanlyAtEveryLengthOfAFile)
{
    const std::vector<char> whole = loadExample("MX0304.bin");
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const std::vector<char> cut(whole.begin(),
                                    whole.begin() + static_cast<std::ptrdiff_t>(length));
        if (length <= 4) {
            EXPECT_EQ(writeMxFile(readMxFile(cut)), asBytes(cut)) << length;
        } else {
            EXPECT_THROW(readMxFile(cut), std::runtime_error) << length;
        }
    }
}

} // namespace
