// Everything that mxformat lists is supported in every part of mxauthor: the text form, its schema
// and its document, explain, diff and the places in texts. A failing test names what is missing.

#include "MxBuffer.h"
#include "module/ParameterValues.h"

#include <devices/parser/mx/MxParameterDatatype.h>
#include <mxauthor/Check.h>
#include <mxauthor/Diff.h>
#include <mxauthor/Explain.h>
#include <mxauthor/SourceMap.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <fstream>

namespace {

using mxauthor::Bytes;
using mxauthor::ExplainedPart;
using mxauthor::MxFile;
using testing::HasSubstr;
using testing::Not;

constexpr std::size_t recordSize = mxformat::channelRecordHeaderSize;
constexpr std::uint32_t recordOffset = mxformat::groupHeaderSize;

// The bytes of an input of one bit.
Bytes channelRecord()
{
    Bytes bytes(recordSize);
    bytes[1] = mxformat::inputFlag | mxformat::bitFieldDatatype;
    bytes[3] = 1;
    return bytes;
}

// The record that has a 1 in the byte `at` alone.
mxformat::ChannelRecord withOneIn(std::size_t at)
{
    Bytes bytes(recordSize);
    bytes[at] = 1;
    return mxformat::readRecord<mxformat::ChannelRecord>(bytes.data());
}

std::size_t countAt()
{
    std::size_t at = 0;
    while (withOneIn(at).wordCount == 0) {
        ++at;
    }
    return at;
}

// Where a group begins in the bytes of `file`, which need not have been read.
std::size_t offsetOf(const MxFile& file, std::vector<mxauthor::Group>::const_iterator group)
{
    std::size_t offset = 0;
    for (auto other = file.groups.begin(); other != group; ++other) {
        offset += mxauthor::writePayload(other->content).size() + mxformat::groupOverhead;
    }
    return offset;
}

// A file of one channel, with another value in the byte `at` of its record. The number of words has
// none: words follow.
MxFile fileWithOther(std::size_t at)
{
    Bytes record = channelRecord();
    record[at] = static_cast<std::uint8_t>(record[at] ^ (at == countAt() ? 0 : 2));
    testkit::MxBuffer buffer;
    buffer.group(mxformat::group::channels, record);
    return mxauthor::readMxFile(buffer.chars());
}

std::vector<char> charsOf(const MxFile& file)
{
    const Bytes bytes = mxauthor::writeMxFile(file);
    return {bytes.begin(), bytes.end()};
}

class ChannelByte : public testing::TestWithParam<std::size_t>
{
protected:
    const std::size_t at = GetParam();
    const MxFile changed = fileWithOther(at);
    const bool isCount = at == countAt();
    const bool isUnread = withOneIn(at).unread2 != 0 || withOneIn(at).unread5 != 0;
};

INSTANTIATE_TEST_SUITE_P(OfTheRecord, ChannelByte, testing::Range(std::size_t{0}, recordSize));

TEST_P(ChannelByte, isInTheTextForm)
{
    const std::string text = dumpText(changed);
    EXPECT_THAT(text, Not(HasSubstr("raw")));
    const auto built = mxauthor::buildFromText(text, "");
    ASSERT_TRUE(built.errors.empty());
    EXPECT_EQ(writeMxFile(built.file), writeMxFile(changed));
}

// A byte whose value the text does not state has the place of the record, as the number of words.
TEST_P(ChannelByte, hasItsPlaceInTheText)
{
    if (isCount) {
        return;
    }
    const std::string text = dumpText(changed);
    const auto built = mxauthor::buildFromText(text, "");
    ASSERT_TRUE(built.errors.empty());
    const auto group =
        std::find_if(built.file.groups.begin(), built.file.groups.end(), [](const auto& candidate) {
            return candidate.id == mxformat::group::channels;
        });
    const mxauthor::SourceMap places(text, built);
    const auto columnOf = [&](std::size_t byte) {
        const std::size_t start = offsetOf(built.file, group) + mxformat::groupHeaderSize;
        return places.at(static_cast<std::uint32_t>(start + byte), "").column;
    };
    EXPECT_NE(columnOf(at), columnOf(countAt()));
}

TEST_P(ChannelByte, isExplained)
{
    const auto place = static_cast<std::uint32_t>(recordOffset + at);
    std::size_t found = 0;
    for (const ExplainedPart& part : mxauthor::explain(charsOf(changed)).parts) {
        if (part.place.offset <= place && place < part.place.end()) {
            EXPECT_EQ(part.record, 0);
            EXPECT_NE(part.field, "separator");
            ++found;
        }
    }
    EXPECT_EQ(found, 1U);
}

TEST_P(ChannelByte, isCompared)
{
    if (isCount || isUnread) {
        return; // nothing depends on it
    }
    testkit::MxBuffer before;
    before.group(mxformat::group::channels, channelRecord());
    std::size_t ofChannels = 0;
    for (const auto& difference :
         mxauthor::compare(mxauthor::readMxFile(before.chars()), changed).differences) {
        ofChannels += difference.area == "channel" ? 1 : 0;
    }
    EXPECT_NE(ofChannels, 0U);
}

TEST(Datatypes, areNamedForHosts)
{
    using devices::parser::mx::MxParameterDatatype;
    const std::vector<std::pair<MxParameterDatatype, std::string>> ofHosts = {
        {MxParameterDatatype::UInt8, "UInt8"},   {MxParameterDatatype::UInt16, "UInt16"},
        {MxParameterDatatype::SInt8, "SInt8"},   {MxParameterDatatype::SInt16, "SInt16"},
        {MxParameterDatatype::Byte, "Byte"},     {MxParameterDatatype::UInt32, "UInt32"},
        {MxParameterDatatype::SInt32, "SInt32"}, {MxParameterDatatype::UInt64, "UInt64"},
        {MxParameterDatatype::SInt64, "SInt64"}};
    ASSERT_EQ(ofHosts.size(), mxformat::datatypes.size());
    for (const mxformat::Datatype& type : mxformat::datatypes) {
        const auto& [number, name] = ofHosts[type.number - std::size_t{1}];
        EXPECT_EQ(static_cast<std::uint8_t>(number), type.number);
        EXPECT_EQ(name, type.name);
    }
}

TEST(Datatypes, areInTheDocumentAndTheRule)
{
    std::ifstream in(TEXT_FORM_DOCUMENT);
    const std::string document(std::istreambuf_iterator<char>(in), {});
    for (const mxformat::Datatype& type : mxformat::datatypes) {
        EXPECT_THAT(document, HasSubstr(type.name));
    }
    const auto& rules = mxauthor::checkRules();
    const auto rule = std::find_if(rules.begin(), rules.end(), [](const mxauthor::CheckRule* one) {
        return one->name == std::string("parameter-datatype");
    });
    ASSERT_NE(rule, rules.end());
    EXPECT_THAT((*rule)->explanation, HasSubstr(mxauthor::datatypeNumbers()));
}

} // namespace
