#include "SourcePlace.h"

#include <gtest/gtest.h>

namespace {

TEST(SourcePlace, offsetsInFilesAreHexadecimal)
{
    EXPECT_EQ(mxmodule::placeInFile("a.bin", 420), "a.bin:0x0001a4");
}

TEST(SourcePlace, placesInTextsAreLineAndColumn)
{
    EXPECT_EQ(mxmodule::placeInText("a.yaml", {3, 14, "", 0}), "a.yaml:3:14");
}

} // namespace
