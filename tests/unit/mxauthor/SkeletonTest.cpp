// A skeleton is a complete module: it builds, and has no findings.

#include <mxauthor/CheckText.h>
#include <mxauthor/Skeleton.h>

#include <gmock/gmock.h>

#include <random>

namespace {

using mxauthor::SkeletonError;
using mxauthor::SkeletonRequest;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

SkeletonRequest requestFor(const std::string& channels)
{
    SkeletonRequest request;
    request.channels = channels;
    request.schema = "mx.json";
    return request;
}

std::string textFor(const std::string& channels)
{
    return mxauthor::skeletonText(requestFor(channels));
}

// The text; any error or finding in it fails the test.
void expectSound(const std::string& text)
{
    const mxauthor::BuildResult built = mxauthor::buildFromText(text, "");
    for (const mxauthor::SourceError& error : built.errors) {
        ADD_FAILURE() << error.line << ":" << error.column << ": " << error.text << "\n" << text;
    }
    if (!built.errors.empty()) {
        return;
    }
    for (const mxauthor::TextFinding& finding : mxauthor::checkText(text, built)) {
        ADD_FAILURE() << finding.rule->name << " " << finding.where.text << "\n" << text;
    }
}

class Skeleton : public testing::TestWithParam<const char*>
{};

TEST_P(Skeleton, isAModuleWithoutFindings)
{
    expectSound(textFor(GetParam()));
}

// Limits: 255 channels; a block of 255 bytes, 85 analog channels of 3 bytes are one byte too many.
INSTANTIATE_TEST_SUITE_P(Channels, Skeleton,
                         testing::Values("", "1 DI", "3 AI, 2 DO", "255 DI", "255 AO",
                                         "255 in UInt64", "84 AI", "85 AI", "200 DI, 55 AO",
                                         "8 DI, 8 DI", "16 DI, 16 DO, 4 AI, 2 AO",
                                         "3di,1 In uint32", "1 in Byte, 1 in UInt64",
                                         "2 out Bit, 1 out SInt8"));

TEST(SkeletonOfAnyChannels, isAModuleWithoutFindings)
{
    std::mt19937 random(38);
    const std::vector<std::string> kinds = {"DI",       "DO",        "AI",        "AO",
                                            "in Byte",  "in UInt32", "in SInt64", "out UInt8",
                                            "out Byte", "in SInt8",  "out UInt64"};
    for (int i = 0; i < 30; ++i) {
        std::string channels;
        for (std::size_t groups = 1 + random() % 5; groups > 0; --groups) {
            channels += (channels.empty() ? "" : ", ") + std::to_string(1 + random() % 20) + " " +
                        kinds[random() % kinds.size()];
        }
        SCOPED_TRACE(channels);
        expectSound(textFor(channels));
    }
}

TEST(SkeletonText, hasTheLineForEditorsFirst)
{
    EXPECT_THAT(textFor(""), StartsWith("# yaml-language-server: $schema=mx.json\n"));
}

TEST(SkeletonText, keepsTheOrderOfChannelsWhereAddressesAllowIt)
{
    EXPECT_THAT(textFor("2 DI, 3 AI"), HasSubstr("  - {repeat: 2, name: DI <n>, in: Bit}\n"
                                                 "  - {repeat: 3, name: AI <n>, in: SInt16}\n"));
    // After a bit the address of four bytes would be 2.
    EXPECT_THAT(textFor("2 DI, 1 in UInt32"),
                HasSubstr("  - {name: Input 1, in: UInt32}\n"
                          "  - {repeat: 2, name: DI <n>, in: Bit}\n"));
}

TEST(SkeletonText, numbersChannelsOfOneKindThrough)
{
    EXPECT_THAT(textFor("8 DI, 2 AI, 4 DI, 1 DI"),
                testing::AllOf(HasSubstr("{repeat: 4, name: DI <n+8>, in: Bit}"),
                               HasSubstr("{name: DI 13, in: Bit}")));
}

TEST(SkeletonText, takesTheTypeFromTheChannels)
{
    const std::vector<std::pair<const char*, const char*>> types = {
        {"", "type: 0"},           {"8 DI", "type: 1"},       {"8 DO", "type: 2"},
        {"8 DO, 1 DI", "type: 1"}, {"2 DO, 3 AI", "type: 3"}, {"4 AO", "type: 4"},
        {"4 AO, 4 AI", "type: 3"}};
    for (const auto& [channels, type] : types) {
        EXPECT_THAT(textFor(channels), HasSubstr("module: {" + std::string(type))) << channels;
    }
    SkeletonRequest request = requestFor("8 DI");
    request.type = "9";
    EXPECT_THAT(mxauthor::skeletonText(request), HasSubstr("module: {type: 9, id: 0x00000001}"));
}

TEST(SkeletonText, namesTheModule)
{
    for (const char* name : {"4 AI ±10 V", "yes", "a: {b} #\"\\", " ", "1.10", "<n>", "*x", "%"}) {
        SkeletonRequest request = requestFor("1 DI");
        request.name = name;
        request.id = "4294967295";
        const std::string text = mxauthor::skeletonText(request);
        EXPECT_THAT(text, HasSubstr("id: 0xffffffff"));
        expectSound(text);
    }
}

TEST(SkeletonText, explainsEveryModuleType)
{
    for (const mxauthor::ModuleType& type : mxauthor::moduleTypes()) {
        EXPECT_THAT(textFor(""), HasSubstr(std::to_string(type.number) + " " + type.meaning));
    }
}

std::string errorOf(const SkeletonRequest& request)
{
    try {
        return mxauthor::skeletonText(request);
    } catch (const SkeletonError& error) {
        return error.member() + ": " + error.what();
    }
}

TEST(WrongSkeleton, saysWhatIsAccepted)
{
    const std::vector<std::pair<const char*, const char*>> wrong = {
        {"3 AX",
         "unknown kind of channels \"AX\", did you mean \"AI\"? (accepted: DI, DO, AI, AO, "},
        {"3", "\"3\": a number and a kind expected, such as \"3 AI, 2 DO\""},
        {"AI", "\"AI\": a number and a kind expected"},
        {"AI 3", "\"AI 3\": a number and a kind expected"},
        {"-3 AI", "\"-3 AI\": a number and a kind expected"},
        {"3 AI 2 DO", "\"AI 2\" is more than one kind, a comma separates them"},
        {"3 AI,, 2 DO", "a comma with nothing before or after it"},
        {"3 AI,", "a comma with nothing"},
        {"0 AI", "0 channels are not accepted"},
        {"256 DI", "256 channels are too many, a module has 255 at most"},
        {"200 DI, 56 DO", "256 channels are too many"},
        {"99999999999999999999 DI", "99999999999999999999 channels are too many"},
        {"2 in", "\"in\" needs a kind (accepted: UInt8, "},
        {"2 in Bitt", "unknown kind \"Bitt\", did you mean \"Bit\"?"}};
    for (const auto& [channels, text] : wrong) {
        EXPECT_THAT(errorOf(requestFor(channels)), HasSubstr("channels: " + std::string(text)));
    }
}

TEST(WrongSkeleton, namesWhatIsWrong)
{
    SkeletonRequest request = requestFor("");
    request.id = "0x100000000";
    EXPECT_EQ(errorOf(request), "id: \"0x100000000\" is not a number from 0 to 0xffffffff");
    request.id = "5a0303aa";
    EXPECT_EQ(errorOf(request),
              "id: \"5a0303aa\" is not a number from 0 to 0xffffffff, did you mean 0x5a0303aa?");
    request = requestFor("");
    request.type = "256";
    EXPECT_EQ(errorOf(request), "type: \"256\" is not a number from 0 to 255");
    request.type = "33";
    EXPECT_THAT(errorOf(request), StartsWith("type: 33 is not a module type in use (accepted: 0 "
                                             "supply, 1 digital inputs, 2 digital outputs, "));
    request = requestFor("");
    request.name = "a\nb";
    EXPECT_THAT(errorOf(request), HasSubstr("name: one line of text expected"));
    request.name = "日";
    EXPECT_THAT(errorOf(request), HasSubstr("name: \"日\" is not a character of Windows-1252"));
    request.name = "a\xFC";
    EXPECT_THAT(errorOf(request), HasSubstr("UTF-8"));
    request = requestFor("");
    for (const char* schema : {"", "a b", "a\nmodule: x", "ä.json", "a\xff"}) {
        request.schema = schema;
        EXPECT_THAT(errorOf(request), HasSubstr("schema: a path or an address expected"));
    }
}

} // namespace
