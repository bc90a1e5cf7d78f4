// The variety that the example modules cover.

#include "RoundTripFiles.h"

#include <mxauthor/MxFile.h>

#include <gmock/gmock.h>
#include <text/Gzip.h>

#include <fstream>
#include <set>

namespace {

using mxauthor::MxFile;
using mxauthor::readMxFile;
using roundtrip::examples;
using roundtrip::loadExample;

template <typename Content>
const Content* contentOf(const MxFile& file)
{
    for (const mxauthor::Group& group : file.groups) {
        if (const auto* content = std::get_if<Content>(&group.content)) {
            return content;
        }
    }
    return nullptr;
}

bool isMadeFromADrawing(const std::string& name)
{
    return std::ifstream(std::string(EXAMPLE_MODULES) + "/" + name.substr(0, name.find('.')) +
                         ".svg")
        .good();
}

TEST(Catalogue, hasModulesEnough)
{
    EXPECT_GE(examples().size(), 24U);
}

TEST(Catalogue, hasImagesThatAreDrawingsAndAllDifferent)
{
    std::set<std::string> drawings;
    std::size_t images = 0;
    for (const std::string& name : examples()) {
        const MxFile file = readMxFile(loadExample(name));
        const auto* image = contentOf<mxauthor::ProductImage>(file);
        EXPECT_TRUE(image != nullptr || !isMadeFromADrawing(name)) << name;
        if (image == nullptr) {
            continue;
        }
        const auto drawing = text::gunzipped(image->bytes.value, 0x100000);
        ASSERT_TRUE(drawing) << name;
        EXPECT_EQ(drawing->compare(0, 5, "<svg "), 0) << name;
        drawings.insert(*drawing);
        ++images;
    }
    EXPECT_GE(images, 27U);
    EXPECT_EQ(drawings.size(), images);
}

TEST(Catalogue, hasEveryDatatypeAndEveryKindOfChannel)
{
    const MxFile file = readMxFile(loadExample("MX0990.bin"));
    std::set<int> datatypes;
    for (const auto& record : contentOf<mxauthor::Parameters>(file)->records) {
        datatypes.insert(record.datatype.value);
    }
    EXPECT_EQ(datatypes, (std::set<int>{1, 2, 3, 4, 5, 6, 7, 8, 9}));
    std::set<int> kinds;
    for (const auto& record : contentOf<mxauthor::Channels>(file)->records) {
        kinds.insert(record.kind.value & 0x1F);
    }
    EXPECT_EQ(kinds.size(), 32U);
}

TEST(Catalogue, hasAFileNearTheLargestSize)
{
    const std::size_t size = loadExample("MX0960.bin").size();
    EXPECT_GT(size, 65000U);
    EXPECT_LE(size, 65535U);
}

} // namespace
