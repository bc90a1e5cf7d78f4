#include "ContainerAccess.h"
#include "VirtualSlot.h"

#include <gmock/gmock.h>

#include <type_traits>

namespace {

using devices::parser::mx::Parser;
using testing::IsEmpty;

TEST(ContainerLayout, FreshReaderIsEmpty)
{
    testkit::ContainerAccess reader;
    EXPECT_THAT(reader.groupOrder, IsEmpty());
    EXPECT_EQ(reader.buffer, nullptr);
    EXPECT_THAT(reader.groupIndex, IsEmpty());
    EXPECT_EQ(reader.groupIndex.bucket_count(), 1U);
    EXPECT_FLOAT_EQ(reader.groupIndex.max_load_factor(), 1.0F);
    std::uint32_t size = 77;
    EXPECT_EQ(reader.getGroup(0x0001, &size), nullptr);
    EXPECT_EQ(size, 77U);
}

TEST(ContainerLayout, MembersAreInThisOrder)
{
    const testkit::ContainerAccess reader;
    const auto* start = reinterpret_cast<const char*>(static_cast<const Parser*>(&reader));
    const auto offset = [start](const void* member) {
        return static_cast<std::size_t>(static_cast<const char*>(member) - start);
    };
    const std::size_t order = sizeof(void*);
    const std::size_t buffer = order + sizeof(reader.groupOrder);
    EXPECT_EQ(offset(&reader.groupOrder), order);
    EXPECT_EQ(offset(&reader.buffer), buffer);
    EXPECT_EQ(offset(&reader.groupIndex), buffer + sizeof(void*));
}

TEST(ContainerLayout, ParseContentFollowsTheTwoDestructors)
{
    EXPECT_TRUE(std::has_virtual_destructor_v<Parser>);
    EXPECT_EQ(testkit::slotOf(&Parser::parseContent), 2);
}

TEST(ContainerLayout, OperationsHaveTheseTypes)
{
    using std::is_same_v;
    EXPECT_TRUE((is_same_v<decltype(&Parser::getGroup),
                           const std::uint8_t* (Parser::*)(std::uint16_t, std::uint32_t*)>));
    EXPECT_TRUE((is_same_v<decltype(&Parser::getGroupEntry),
                           const std::string& (Parser::*)(std::uint16_t, const std::string&)>));
    EXPECT_TRUE((is_same_v<decltype(&Parser::calculateCrc),
                           std::uint16_t (Parser::*)(const std::uint8_t*, std::uint32_t)>));
    EXPECT_TRUE((is_same_v<decltype(&Parser::getModuleIdAndType),
                           void (Parser::*)(std::uint32_t*, std::uint8_t*)>));
}

} // namespace
