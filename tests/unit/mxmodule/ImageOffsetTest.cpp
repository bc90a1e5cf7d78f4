#include "MxBuffer.h"
#include "ShownFinding.h"

#include <mxmodule/Module.h>

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

// The warnings of a module with 8 bytes of input data and 8 of output data.
std::vector<std::string> warningsAt(unsigned input, unsigned output)
{
    mxmodule::ModuleOptions options;
    options.offsets = {input, output};
    const auto module = mxmodule::Module::fromBytes(
        testkit::minimalModule({"InData DD", "OutData DD"}).chars(), "a.bin", options);
    std::vector<std::string> lines;
    for (const auto& finding : module.offsetFindings("--in-offset", "--out-offset")) {
        EXPECT_EQ(finding.origin, mxmodule::Origin::Request);
        lines.push_back(shown(finding));
    }
    return lines;
}

TEST(ImageOffset, isAcceptedWithinTheLargestImage)
{
    EXPECT_THAT(warningsAt(0, 0), ElementsAre());
    EXPECT_THAT(warningsAt(131064, 131064), ElementsAre()); // up to 65536 registers
}

TEST(ImageOffset, beyondTheLargestImageIsSaid)
{
    EXPECT_THAT(warningsAt(131065, 0),
                ElementsAre("--in-offset 131065: warning: The module's 8 bytes end at byte 131073, "
                            "after the 131072 bytes of the largest process image, the 65536 "
                            "registers of Modbus\n"));
}

TEST(ImageOffset, thatNoAddressHoldsIsSaid)
{
    EXPECT_THAT(warningsAt(0, 4294967288), ElementsAre(Not(HasSubstr("again at 0"))));
    EXPECT_THAT(
        warningsAt(4294967289, 4294967289),
        ElementsAre(HasSubstr("; byte addresses have 32 bits and begin again at 0"),
                    HasSubstr("--out-offset 4294967289: warning: The module's 8 bytes end at byte "
                              "4294967297")));
}

} // namespace
