#include "ContainerAccess.h"
#include "FailedAssertion.h"
#include "Failure.h"
#include "MxBuffer.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

class ModuleIdentity : public testing::Test
{
protected:
    void load(std::uint16_t group, const std::string& payload)
    {
        data = testkit::MxBuffer().group(group, testkit::hexBytes(payload)).chars();
        reader.index(data);
    }

    std::string failure()
    {
        return testkit::failureOf([&] { reader.getModuleIdAndType(&id, &type); });
    }

    std::vector<char> data;
    testkit::ContainerAccess reader;
    std::uint32_t id = 0xDEADBEEF;
    std::uint8_t type = 0xEE;
};

TEST_F(ModuleIdentity, Bytes3And0001And2AreType3AndIdentifier258)
{
    load(0x0001, "fb 05 00 03 00000102 0000");
    reader.getModuleIdAndType(&id, &type);
    EXPECT_EQ(type, 3);
    EXPECT_EQ(id, 258U);
}

TEST_F(ModuleIdentity, IdentifierHas32BitsMostSignificantFirst)
{
    load(0x0001, "fb 05 00 ff fedcba98 0000");
    reader.getModuleIdAndType(&id, &type);
    EXPECT_EQ(type, 255);
    EXPECT_EQ(id, 0xFEDCBA98U);
}

TEST_F(ModuleIdentity, IsFoundAfterOtherDatasets)
{
    load(0x0001, "01 02 00 aabb 0000 fb 05 00 09 00000007 0000");
    reader.getModuleIdAndType(&id, &type);
    EXPECT_EQ(type, 9);
    EXPECT_EQ(id, 7U);
}

TEST_F(ModuleIdentity, DatasetCutAtThePayloadsEndIsReadWithinTheBuffer)
{
    // Six bytes of payload; the identifier's last two bytes are the group's checksum, 0.
    load(0x0001, "fb 05 00 03 0a0b");
    reader.getModuleIdAndType(&id, &type);
    EXPECT_EQ(type, 3);
    EXPECT_EQ(id, 0x0A0B0000U);
}

TEST_F(ModuleIdentity, FourDataBytesHaveAnUnexpectedSize)
{
    load(0x0001, "fb 04 00 03 000001 0000");
    EXPECT_EQ(failure(), "Parser::getModuleIdAndType(): Unexpected tavo dataset size");
    EXPECT_EQ(id, 0xDEADBEEF);
    EXPECT_EQ(type, 0xEE);
}

TEST_F(ModuleIdentity, SixDataBytesHaveAnUnexpectedSize)
{
    load(0x0001, "fb 06 00 03 0000010203 0000");
    EXPECT_EQ(failure(), "Parser::getModuleIdAndType(): Unexpected tavo dataset size");
}

TEST_F(ModuleIdentity, MissingDatasetFails)
{
    load(0x0001, "fa 05 00 03 00000102 0000");
    EXPECT_EQ(failure(), "Parser::getModuleIdAndType(): Tavo dataset not found");
}

TEST_F(ModuleIdentity, MissingGroupFails)
{
    load(0x0002, "fb 05 00 03 00000102 0000");
    EXPECT_EQ(failure(), "Parser::getTavoDatasetFromGroup(): No such group: 0001");
}

std::string assertion(const std::string& expression)
{
    return testkit::failedAssertion(
        "vendor/mx/src/mxparser",
        "void devices::parser::mx::Parser::getModuleIdAndType(uint32_t*, uint8_t*)", expression);
}

using ModuleIdentityDeathTest = ModuleIdentity;

TEST_F(ModuleIdentityDeathTest, NullModuleIdIsAFailedAssertion)
{
    load(0x0001, "fb 05 00 03 00000102 0000");
    EXPECT_DEATH(reader.getModuleIdAndType(nullptr, &type), assertion("moduleId"));
}

TEST_F(ModuleIdentityDeathTest, NullModuleTypeIsAFailedAssertion)
{
    load(0x0001, "fb 05 00 03 00000102 0000");
    EXPECT_DEATH(reader.getModuleIdAndType(&id, nullptr), assertion("moduleType"));
}

TEST_F(ModuleIdentityDeathTest, ModuleIdIsTestedFirstAndBeforeTheGroup)
{
    load(0x0002, "00");
    EXPECT_DEATH(reader.getModuleIdAndType(nullptr, nullptr), assertion("moduleId"));
}

} // namespace
