// What has no room in the registers of a coupler. By hand: MX0116 has 2 bytes of inputs and 17
// parameter registers, MX0208 a byte of inputs, one of outputs and 9 registers, MX0304 8 bytes of
// inputs and 25 registers, MX0003 neither data nor parameters.

#include "StationFixture.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

// The findings of these modules with these registers, and what to do: "TEXT; HINT".
std::vector<std::string> misfits(const std::string& modbus, const std::string& modules)
{
    const auto plan = planWith("modbus: " + modbus + "\nmodules: " + modules + "\n");
    std::vector<std::string> shown;
    for (const auto& finding : plan.findings) {
        EXPECT_EQ(finding.severity, mxmodule::Severity::Error);
        shown.push_back(finding.text + "; " + finding.hint);
    }
    return shown;
}

TEST(ModbusFit, reportsAtTheRegistersOfTheStation)
{
    const auto plan = planWith("modules: [MX0304.bin]\n"
                               "modbus:\n"
                               "  parameters: {address: 65512, stride: 25}\n");
    EXPECT_THAT(shownFindings(plan.findings),
                ElementsAre("3:3 error the parameter image of module 1 \"MX0304\" takes registers "
                            "65512 to 65536 (0xffe8 to 0x10000), the last register is 65535 "
                            "(0xffff)"));
}

TEST(ModbusFit, takesImagesUpToTheLastRegister)
{
    EXPECT_THAT(misfits("{inputs: {address: 65532}, parameters: {address: 0}}", "[MX0304.bin]"),
                IsEmpty());
    EXPECT_THAT(misfits("{inputs: {address: 65533}, parameters: {address: 0}}", "[MX0304.bin]"),
                ElementsAre("the input image takes registers 65533 to 65536 (0xfffd to 0x10000), "
                            "the last register is 65535 (0xffff); state 65532 (0xfffc) or less for "
                            "\"address\" of \"inputs\""));
}

// 8 + 1 bytes are 5 registers.
TEST(ModbusFit, givesTheLastByteARegisterOfItsOwn)
{
    EXPECT_THAT(misfits("{inputs: {address: 65531}, parameters: {address: 100}}",
                        "[MX0304.bin, MX0208.bin]"),
                IsEmpty());
    EXPECT_THAT(misfits("{inputs: {address: 65532}, parameters: {address: 100}}",
                        "[MX0304.bin, MX0208.bin]"),
                ElementsAre("the input image takes registers 65532 to 65536 (0xfffc to 0x10000), "
                            "the last register is 65535 (0xffff); state 65531 (0xfffb) or less for "
                            "\"address\" of \"inputs\""));
}

// 3 bytes of status before and 3 after the byte of MX0208 are 7 bytes, 4 registers. Where the image
// begins for its master is no matter.
TEST(ModbusFit, countsTheWholeImage)
{
    const std::string layout = "layout: {start: 1001, status_before: {out: 3}, status_behind: "
                               "{out: 3}}\nmodules: [MX0208.bin]\n";
    EXPECT_TRUE(
        planWith("modbus: {outputs: {address: 65532}, parameters: {address: 0}}\n" + layout).ok());
    const auto plan =
        planWith("modbus: {outputs: {address: 65533}, parameters: {address: 0}}\n" + layout);
    EXPECT_THAT(shownFindings(plan.findings),
                ElementsAre("1:9 error the output image takes registers 65533 to 65536 (0xfffd to "
                            "0x10000), the last register is 65535 (0xffff)"));
    EXPECT_EQ(plan.findings[0].hint, "state 65532 (0xfffc) or less for \"address\" of \"outputs\"");
}

// Two reserved places of 65536 bytes, 65536 registers, and a register of MX0116.
TEST(ModbusFit, saysThatAnImageHasNoRoomAtAnyAddress)
{
    EXPECT_THAT(misfits("{parameters: {address: 0}}", "[{reserve: {in: 131072}}]"), IsEmpty());
    EXPECT_THAT(misfits("{parameters: {address: 0}}", "[{reserve: {in: 131073}}]"),
                ElementsAre("the input image takes registers 0 to 65536 (0x0000 to 0x10000), the "
                            "last register is 65535 (0xffff); an image in registers has at most "
                            "131072 bytes"));
}

// Those of module 2 begin 128 registers after those of module 1.
TEST(ModbusFit, takesParametersUpToTheLastRegister)
{
    const std::string row = "[MX0116.bin, {reserve: {in: 4}}, MX0304.bin]";
    EXPECT_THAT(misfits("{parameters: {address: 65383}}", row), IsEmpty());
    EXPECT_THAT(misfits("{parameters: {address: 65384}}", row),
                ElementsAre("the parameter image of module 2 \"MX0304\" takes registers 65512 to "
                            "65536 (0xffe8 to 0x10000), the last register is 65535 (0xffff); state "
                            "65383 (0xff67) or less for \"address\" of \"parameters\""));
    EXPECT_THAT(misfits("{parameters: {address: 10, stride: 65535}}", row),
                ElementsAre("the parameter image of module 2 \"MX0304\" takes registers 65545 to "
                            "65569 (0x10009 to 0x10021), the last register is 65535 (0xffff); "
                            "state a smaller \"stride\" of \"parameters\""));
}

// The first one is named, the number is that for all.
TEST(ModbusFit, reportsTheFirstOfSeveralModulesBeyondTheEnd)
{
    EXPECT_THAT(misfits("{parameters: {address: 65500, stride: 20}}",
                        "[MX0116.bin, MX0116.bin, MX0208.bin]"),
                ElementsAre("the parameter image of module 2 \"MX0116_2\" takes registers 65520 to "
                            "65536 (0xfff0 to 0x10000), the last register is 65535 (0xffff); state "
                            "65487 (0xffcf) or less for \"address\" of \"parameters\""));
}

TEST(ModbusFit, takesIdentifiersUpToTheLastRegister)
{
    const std::string row = "[MX0116.bin, MX0208.bin]";
    EXPECT_THAT(misfits("{parameters: {address: 100}, identity: {address: 65532}}", row),
                IsEmpty());
    EXPECT_THAT(misfits("{parameters: {address: 100}, identity: {address: 65533, read: 4}}", row),
                ElementsAre("the identifier of module 2 \"MX0208\" takes registers 65535 to 65536 "
                            "(0xffff to 0x10000), the last register is 65535 (0xffff); state 65532 "
                            "(0xfffc) or less for \"address\" of \"identity\""));
    EXPECT_THAT(misfits("{parameters: {address: 100}, identity: {address: 7, stride: 65535}}", row),
                ElementsAre("the identifier of module 2 \"MX0208\" takes registers 65542 to 65543 "
                            "(0x10006 to 0x10007), the last register is 65535 (0xffff); state a "
                            "smaller \"stride\" of \"identity\""));
}

TEST(ModbusFit, takesParametersThatTheStrideLeavesRoomFor)
{
    const std::string row = "[MX0116.bin, MX0304.bin]";
    EXPECT_THAT(misfits("{parameters: {address: 0x4000, stride: 25}}", row), IsEmpty());
    EXPECT_THAT(misfits("{parameters: {address: 0x4000, stride: 24}}", row),
                ElementsAre("the parameter image of module 2 \"MX0304\" takes 25 registers, 16408 "
                            "to 16432 (0x4018 to 0x4030), the stride leaves 24; state 25 or more "
                            "for \"stride\" of \"parameters\""));
    EXPECT_THAT(misfits("{parameters: {address: 0x4000, stride: 16}}", row),
                ElementsAre("the parameter image of module 1 \"MX0116\" takes 17 registers, 16384 "
                            "to 16400 (0x4000 to 0x4010), the stride leaves 16; those of 1 more "
                            "module do not fit either; state 25 or more for \"stride\" of "
                            "\"parameters\""));
}

TEST(ModbusFit, keepsThePurposesOfHoldingRegistersApart)
{
    const std::string row = "[MX0116.bin, MX0208.bin]";
    EXPECT_THAT(misfits("{parameters: {address: 0}, outputs: {address: 0}}", row),
                ElementsAre("the output image and the parameter image of module 1 \"MX0116\" both "
                            "take register 0 (0x0000); state another \"address\" of \"outputs\" or "
                            "of \"parameters\""));
    EXPECT_THAT(
        misfits("{parameters: {address: 0}, outputs: {address: 17}, commit: {address: 16}}", row),
        ElementsAre("the parameter image of module 1 \"MX0116\" and the commit register "
                    "both take register 16 (0x0010); state another \"address\" of "
                    "\"parameters\" or of \"commit\""));
    EXPECT_THAT(misfits("{parameters: {address: 2}, outputs: {address: 1, write: 6}, commit: "
                        "{address: 1}}",
                        row),
                ElementsAre("the output image and the commit register both take register 1 "
                            "(0x0001); state another \"address\" of \"outputs\" or of \"commit\""));
    EXPECT_THAT(misfits("{parameters: {address: 200}, outputs: {address: 1}, inputs: {address: 0, "
                        "read: 3}}",
                        row),
                ElementsAre("the input image and the output image both take register 1 (0x0001); "
                            "state another \"address\" of \"inputs\" or of \"outputs\""));
}

// Module 1 has registers 100 to 116, module 2 registers 228 to 236.
TEST(ModbusFit, letsOthersUseTheRegistersBetweenModules)
{
    const std::string row = "[MX0116.bin, MX0208.bin]";
    EXPECT_THAT(misfits("{parameters: {address: 100}, outputs: {address: 117}, identity: {address: "
                        "118}, commit: {address: 227}}",
                        row),
                IsEmpty());
    EXPECT_THAT(misfits("{parameters: {address: 100}, identity: {address: 117, stride: 128}}", row),
                IsEmpty());
    EXPECT_THAT(misfits("{parameters: {address: 100}, identity: {address: 225}}", row),
                ElementsAre("the parameter image of module 2 \"MX0208\" and the identifier of "
                            "module 2 \"MX0208\" both take register 228 (0x00e4); state another "
                            "\"address\" of \"parameters\" or of \"identity\""));
}

// Only the first place that both take: the others follow from the same numbers.
TEST(ModbusFit, reportsTwoPurposesOnce)
{
    EXPECT_THAT(misfits("{parameters: {address: 64}, outputs: {address: 0}, identity: {address: 64,"
                        " stride: 128}}",
                        "[MX0116.bin, MX0208.bin, MX0116.bin]"),
                ElementsAre("the parameter image of module 1 \"MX0116\" and the identifier of "
                            "module 1 \"MX0116\" both take registers 64 to 65 (0x0040 to 0x0041); "
                            "state another \"address\" of \"parameters\" or of \"identity\""));
}

// The input image of 1000 bytes has registers 0 to 499. Others in it end before its later ones.
TEST(ModbusFit, reportsEveryPurposeWithinALargeImage)
{
    EXPECT_THAT(
        misfits("{inputs: {read: 3}, parameters: {address: 100}, identity: {address: 90}, commit: "
                "{address: 498}, outputs: {address: 499}}",
                "[{reserve: {in: 1000, out: 3}}, MX0116.bin]"),
        ElementsAre("the input image and the identifier of module 1 \"MX0116\" both take registers "
                    "90 to 91 (0x005a to 0x005b); state another \"address\" of \"inputs\" or of "
                    "\"identity\"",
                    "the input image and the parameter image of module 1 \"MX0116\" both take "
                    "registers 100 to 116 (0x0064 to 0x0074); state another \"address\" of "
                    "\"inputs\" or of \"parameters\"",
                    "the input image and the commit register both take register 498 (0x01f2); "
                    "state another \"address\" of \"inputs\" or of \"commit\"",
                    "the input image and the output image both take registers 499 to 500 (0x01f3 "
                    "to 0x01f4); state another \"address\" of \"inputs\" or of \"outputs\""));
}

// Module 1 has registers 0 to 24, module 2, which begins later, only 1 to 9.
TEST(ModbusFit, comparesWithTheModuleThatEndsLast)
{
    EXPECT_THAT(misfits("{parameters: {address: 0, stride: 1}, outputs: {address: 300}, commit: "
                        "{address: 20}}",
                        "[MX0304.bin, MX0208.bin]"),
                ElementsAre("the parameter image of module 1 \"MX0304\" takes 25 registers, 0 to "
                            "24 (0x0000 to 0x0018), the stride leaves 1; those of 1 more module do "
                            "not fit either; state 25 or more for \"stride\" of \"parameters\"",
                            "the parameter image of module 1 \"MX0304\" and the commit register "
                            "both take register 20 (0x0014); state another \"address\" of "
                            "\"parameters\" or of \"commit\""));
}

TEST(ModbusFit, keepsInputRegistersApartFromHoldingRegisters)
{
    const std::string row = "[MX0116.bin, MX0208.bin]";
    EXPECT_THAT(misfits("{parameters: {address: 0}, outputs: {address: 300}}", row), IsEmpty());
    EXPECT_THAT(
        misfits("{parameters: {address: 0}, outputs: {address: 300}, inputs: {read: 3}}", row),
        SizeIs(1));
    EXPECT_THAT(misfits("{parameters: {address: 1}, identity: {address: 1, read: 4}}", row),
                ElementsAre("the input image and the identifier of module 1 \"MX0116\" both take "
                            "register 1 (0x0001); state another \"address\" of \"inputs\" or of "
                            "\"identity\""));
    EXPECT_THAT(misfits("{parameters: {address: 1}, outputs: {address: 0, read: 4}}", row),
                ElementsAre("the input image and the output image both take register 0 (0x0000); "
                            "state another \"address\" of \"inputs\" or of \"outputs\""));
    EXPECT_THAT(misfits("{parameters: {address: 1}, outputs: {address: 1, read: 4}, inputs: "
                        "{address: 2}}",
                        row),
                ElementsAre("the output image and the parameter image of module 1 \"MX0116\" both "
                            "take register 1 (0x0001); state another \"address\" of \"outputs\" or "
                            "of \"parameters\""));
}

TEST(ModbusFit, takesNoRegistersForWhatIsNotThere)
{
    EXPECT_THAT(misfits("{parameters: {address: 65535, stride: 1}, outputs: {address: 65535}, "
                        "inputs: {address: 65535, read: 3}}",
                        "[MX0003.bin, MX0003.bin]"),
                IsEmpty());
    EXPECT_THAT(misfits("{parameters: {address: 65535}, commit: {address: 65535}}", "[]"),
                IsEmpty());
}

TEST(ModbusFit, reportsEverythingInOneRun)
{
    EXPECT_THAT(misfits("{inputs: {address: 65535}, outputs: {address: 0}, parameters: {address: "
                        "0, stride: 8}, identity: {address: 65535}}",
                        "[MX0304.bin, MX0208.bin]"),
                SizeIs(4));
}

// The images may be others than those that are meant.
TEST(ModbusFit, isNotComparedAfterErrorsOfTheText)
{
    EXPECT_THAT(misfits("{inputs: {address: 65535}, parameters: {address: 0}}", "[MX0304.bin, x]"),
                SizeIs(1));
    EXPECT_THAT(
        shownFindings(planWith("modbus: {inputs: {address: 65535}, parameters: {address: "
                               "0}}\nlayout: {align: 0}\nmodules: [MX0304.bin]")
                          .findings),
        ElementsAre("2:17 error found \"0\", expected a whole number from 1 to 2147483647"));
}

// The reader of stations takes none of these.
TEST(ModbusFit, refusesNumbersThatAHostMayState)
{
    auto station = stationWith("modbus: {parameters: {address: 0}}\nmodules: [MX0304.bin]\n");
    auto& map = *station.modbus;
    map.inputs.readFunction = 2;
    map.outputs.readFunction = 0;
    map.outputs.writeFunction = 5;
    map.parameters.stride = 0;
    map.identity.emplace();
    map.identity->readFunction = 17;
    map.identity->stride = 1;
    map.mostRead = 126;
    map.mostWritten = 0;
    map.timeout = 0;
    map.busyTime = 600001;
    map.retries = 11;
    const auto plan = mxstation::plan(station);
    EXPECT_THAT(
        shownFindings(plan.findings),
        ElementsAre(
            "1:9 error \"read\" of \"inputs\" of \"modbus\" is 2, expected 3 or 4",
            "1:9 error \"read\" of \"outputs\" of \"modbus\" is 0, expected 3 or 4",
            "1:9 error \"write\" of \"outputs\" of \"modbus\" is 5, expected 6 or 16 or 22",
            "1:9 error \"stride\" of \"parameters\" of \"modbus\" is 0, expected 1 to 65535",
            "1:9 error \"read\" of \"identity\" of \"modbus\" is 17, expected 3 or 4",
            "1:9 error \"stride\" of \"identity\" of \"modbus\" is 1, expected 2 to 65535",
            "1:9 error \"most_read\" of \"modbus\" is 126, expected 4 to 125",
            "1:9 error \"most_written\" of \"modbus\" is 0, expected 4 to 123",
            "1:9 error \"timeout\" of \"modbus\" is 0, expected 1 to 60000",
            "1:9 error \"busy\" of \"modbus\" is 600001, expected 0 to 600000",
            "1:9 error \"retries\" of \"modbus\" is 11, expected 0 to 10"));
}

} // namespace
