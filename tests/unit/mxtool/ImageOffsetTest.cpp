#include "TranslatedModule.h"

#include <gtest/gtest.h>

namespace {

using mxtool::offsetWarning;

TEST(ImageOffset, isAcceptedWithinTheLargestImage)
{
    EXPECT_EQ(offsetWarning("--in-offset", 0, 8), std::nullopt);
    EXPECT_EQ(offsetWarning("--in-offset", 131064, 8), std::nullopt); // up to 65536 registers
}

TEST(ImageOffset, beyondTheLargestImageIsSaid)
{
    const auto warning = offsetWarning("--in-offset", 131065, 8);
    ASSERT_TRUE(warning.has_value());
    EXPECT_EQ(toText(*warning, false),
              "--in-offset 131065: warning: The module's 8 bytes end at byte 131073, after the "
              "131072 bytes of the largest process image, the 65536 registers of Modbus\n");
}

TEST(ImageOffset, thatNoAddressHoldsIsSaid)
{
    const auto last = offsetWarning("--out-offset", 4294967288, 8);
    ASSERT_TRUE(last.has_value());
    EXPECT_EQ(last->text.find("again at 0"), std::string::npos);
    const auto wrapped = offsetWarning("--out-offset", 4294967289, 8);
    ASSERT_TRUE(wrapped.has_value());
    EXPECT_NE(wrapped->text.find("; byte addresses have 32 bits and begin again at 0"),
              std::string::npos);
}

} // namespace
