#include <gmock/gmock.h>
#include <mxmodule/Registers.h>

namespace {

using mxmodule::bytesOfRegisters;
using mxmodule::registersOfBytes;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(Registers, HaveTheirHighByteFirst)
{
    EXPECT_THAT(registersOfBytes({'\x12', '\x34', '\xFF', '\x80'}), ElementsAre(0x1234, 0xFF80));
    EXPECT_THAT(bytesOfRegisters({0x1234, 0xFF80}), ElementsAre('\x12', '\x34', '\xFF', '\x80'));
}

TEST(Registers, LeaveOutASingleByteAtTheEnd)
{
    EXPECT_THAT(registersOfBytes({'\x12', '\x34', '\x56'}), ElementsAre(0x1234));
    EXPECT_THAT(registersOfBytes({'\x12'}), IsEmpty());
    EXPECT_THAT(bytesOfRegisters({}), IsEmpty());
}

} // namespace
