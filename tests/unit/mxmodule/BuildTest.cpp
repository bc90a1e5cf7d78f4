#include <mxmodule/Build.h>

#include "MxBuffer.h"
#include "ShownFinding.h"
#include "TemporaryDirectory.h"

#include <gmock/gmock.h>

namespace {

using mxmodule::BuildOptions;
using mxmodule::BuiltFile;
using mxmodule::Failure;
using mxmodule::Origin;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testkit::hexBytes;
using testkit::textBytes;

const std::string refused = "module: {type: 3, id: 0x5a030304}\n"; // it has no catalogue

const std::string accepted = R"(module: {type: 3, id: 0x5a030304}
catalogue:
  BrandId: "41"
  BrandLabelName: L
  BrandVersion: "2.1"
  BrandSerialNumber: "0"
  ProductVersion: P
  BrandOrderCode: O
  BrandHwRevision: H
component: {Component: C, Creator: D}
)";

class Recorder : public mxmodule::Observer
{
public:
    void reads(const std::string& path) override { files.push_back(path); }

    std::vector<std::string> files;
};

std::vector<char> asChars(const std::vector<std::uint8_t>& bytes)
{
    return {bytes.begin(), bytes.end()};
}

std::vector<std::string> shownFindings(const BuiltFile& built)
{
    std::vector<std::string> all;
    for (const mxmodule::Finding& finding : built.findings) {
        all.push_back(shown(finding) + finding.excerpt);
    }
    return all;
}

std::string failureOfBuild(const std::string& content)
{
    try {
        mxmodule::build(content, "m.yaml");
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.findings().size(), 1U);
        EXPECT_EQ(failure.reason().origin, Origin::Input);
        return shown(failure.reason());
    }
    return "no failure";
}

TEST(Build, givesTheBytesOfASoundText)
{
    const BuiltFile built = mxmodule::build(accepted, "m.yaml");
    EXPECT_FALSE(built.isRefused);
    EXPECT_THAT(built.findings, IsEmpty());
    const auto catalogue = testkit::join(
        {hexBytes("0020 0090"), // a line of each entry, 0x90 bytes with the overhead of the group
         textBytes("BrandId,s=41\r\nBrandLabelName,s=L\r\nBrandVersion,s=2.1\r\n"
                   "BrandSerialNumber,s=0\r\nProductVersion,s=P\r\nBrandOrderCode,s=O\r\n"
                   "BrandHwRevision,s=H\r\n"),
         hexBytes("0000")});
    ASSERT_TRUE(built.bytes);
    EXPECT_THAT(std::string(built.bytes->begin(), built.bytes->end()),
                HasSubstr(std::string(catalogue.begin(), catalogue.end())));
}

TEST(Build, givesNoBytesOfAFileThatTheDeviceParserRefuses)
{
    const BuiltFile built = mxmodule::build(refused, "m.yaml");
    EXPECT_TRUE(built.isRefused);
    EXPECT_FALSE(built.bytes);
    EXPECT_THAT(
        shownFindings(built),
        ElementsAre("m.yaml:1:1: error: [group-missing] group 0020 (catalogue) is missing\n"
                    "hint: the key \"catalogue\" states it\n" +
                        refused + "^\n",
                    "m.yaml:1:1: error: [group-missing] group 0040 (component) is missing\n"
                    "hint: the key \"component\" states it\n" +
                        refused + "^\n",
                    "m.yaml:1:1: error: [parser-refuses] Parser::getGroupEntry(): No such group: "
                    "0020\n" +
                        refused + "^\n"));
}

TEST(Build, givesARefusedFileByForce)
{
    const BuiltFile built = mxmodule::build(refused, "m.yaml", {true});
    EXPECT_TRUE(built.isRefused);
    EXPECT_EQ(built.findings.size(), 3U);
    ASSERT_TRUE(built.bytes);
    EXPECT_EQ(*built.bytes,
              asChars(testkit::join(
                  {hexBytes("0000 000a 0053 0003 0000"),               // 0x53 bytes in all
                   hexBytes("0001 0010 fb0500 03 5a030304 0000 0000"), // module identity
                   hexBytes("0011 0039"),
                   textBytes("InData,s=\r\nOutData,s=\r\nParameter,s=\r\nDiagnosis,s=\r\n"),
                   hexBytes("0000")})));
}

TEST(Build, givesEveryErrorOfATextAndNothingElse)
{
    const std::string text = "module: {type: 3, id: 0x5a030304}\n"
                             "channels:\n"
                             "  - {name: A, in: Bitt}\n"
                             "  - {name: B, on: Bit}\n";
    for (const bool force : {false, true}) {
        const BuiltFile built = mxmodule::build(text, "dir/m.yaml", {force});
        EXPECT_FALSE(built.bytes);
        EXPECT_FALSE(built.isRefused);
        ASSERT_EQ(built.findings.size(), 2U);
        EXPECT_EQ(built.findings[0].place, "dir/m.yaml:3:19");
        EXPECT_EQ(built.findings[0].excerpt, "  - {name: A, in: Bitt}\n"
                                             "                  ^\n");
        EXPECT_EQ(built.findings[1].place, "dir/m.yaml:4:15");
    }
}

TEST(Build, readsFilesBesideTheText)
{
    const testkit::TemporaryDirectory directory;
    const std::string raw = directory.write("more.hex", {'0', '1', '0', '2'});
    Recorder recorder;
    const std::string text = accepted + "raw:\n  - {id: 0x20d4, file: more.hex}\n";
    const BuiltFile built =
        mxmodule::build(text, directory.path("m.yaml"), BuildOptions{false, &recorder});
    EXPECT_THAT(recorder.files, ElementsAre(raw));
    ASSERT_TRUE(built.bytes);
    // Identifier, size in all, the two bytes, two zeros.
    const auto group = hexBytes("20d4 0008 0102 0000");
    EXPECT_THAT(std::string(built.bytes->begin(), built.bytes->end()),
                EndsWith(std::string(group.begin(), group.end())));
}

TEST(Build, refusesWhatIsNoTextForm)
{
    EXPECT_EQ(failureOfBuild(""),
              "m.yaml: error: The file is empty, expected the text form of an mx "
              "file\n"
              "hint: mxtool new writes the text of a new module\n");
    const auto mxFile = asChars(hexBytes("0000 000a 001a 0003 0000 0001 0010 fb0500 03 5a030304"
                                         "0000 0000"));
    EXPECT_EQ(failureOfBuild({mxFile.begin(), mxFile.end()}),
              "m.yaml: error: This is an mx file already, expected its text form\n"
              "hint: mxtool dump FILE -o FILE.yaml writes the text form of an mx file\n");
    EXPECT_EQ(failureOfBuild("hello: 1\nworld: 2\n"),
              "m.yaml: error: This text has no key of the text form, such as \"module:\", expected "
              "the text form of an mx file\n"
              "hint: mxtool config FILE --values m.yaml takes a file of parameter values\n");
}

TEST(Build, refusesATextWithoutAName)
{
    try {
        mxmodule::build("hello: 1\nworld: 2\n", "");
        ADD_FAILURE() << "accepted";
    } catch (const mxmodule::Failure& failure) {
        EXPECT_EQ(failure.reason().hint,
                  "mxtool config FILE --values - takes a file of parameter values");
    }
}

} // namespace
