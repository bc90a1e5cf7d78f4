#include <mxmodule/FileKind.h>

#include <gtest/gtest.h>

using mxmodule::FileKind;
using mxmodule::kindOf;

namespace {

TEST(FileKind, ofAStationIsToldByTheKeyOfItsModules)
{
    for (const char* text : {
             "modules:\n  - a.bin\n", "modules: [a.bin, b.bin]\n",
             "# pumps\n---\n\"modules\":\n  - a.bin\n", "\xEF\xBB\xBFmodules:\r\n  - a.bin\r\n",
             "layout: words\nmodules:\n  - module: a.bin\n    name: A\n",
             "station: Pump house\nmodules: [unclosed\n", // no YAML yet
             "{\"station\": \"S\", \"modules\": [{\"module\": \"a.bin\"}]}",
             "station: S\nmodule: a.bin\nmodules:\n  - a.bin\n", // a mistake, but not a text form
         }) {
        EXPECT_EQ(kindOf(text), FileKind::Station) << text;
    }
}

TEST(FileKind, ofOtherTextsWithAListOfModulesIsTheirOwn)
{
    EXPECT_EQ(kindOf("{\"schema\": \"mxtool.station 1\", \"station\": \"S\", \"modules\": []}"),
              FileKind::Result);
    EXPECT_EQ(kindOf("modules: {type: 1, id: 1}\ncatalogue: {}\nchannels: []\n"),
              FileKind::TextForm);
    EXPECT_EQ(kindOf("gate:\n  modules: [a.bin]\n"), FileKind::Other);
    EXPECT_EQ(kindOf("station: Pump house\n"), FileKind::Other);
}

TEST(FileKind, namesTheCallForAStation)
{
    EXPECT_EQ(callThatTakes(FileKind::Station, "pumps.yaml"),
              "mxtool station show pumps.yaml shows its modules and their addresses");
    EXPECT_EQ(callThatTakes(FileKind::Station, "<standard input>"), "");
}

} // namespace
