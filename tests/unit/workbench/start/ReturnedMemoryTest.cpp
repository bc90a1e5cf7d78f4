#include "start/ReturnedMemory.h"

#include <gtest/gtest.h>

#include <list>
#include <string>

namespace {

using workbench::ReturnedMemory;

constexpr std::size_t mebi = std::size_t{1} << 20U;

// A sanitizer keeps freed memory in order to find its use.
constexpr bool hasPlainAllocator()
{
#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
    return false;
#endif
#endif
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    return false;
#else
    return true;
#endif
}

// 100 MiB in small parts, of which the last stays in use.
std::list<std::string> grown()
{
    std::list<std::string> parts;
    for (int i = 0; i < 100 * 1024; ++i) {
        parts.emplace_back(1000, 'x');
    }
    parts.erase(parts.begin(), std::prev(parts.end()));
    return parts;
}

TEST(ReturnedMemory, givesBackWhatIsBelowMemoryInUse)
{
    const std::size_t before = ReturnedMemory::bytesInUse();
    ReturnedMemory memory;
    const auto last = grown();
    EXPECT_GT(ReturnedMemory::bytesInUse(), before + 64 * mebi);
    memory.giveBack();
    if (hasPlainAllocator()) {
        EXPECT_LT(ReturnedMemory::bytesInUse(), before + 32 * mebi);
    }
    EXPECT_EQ(last.front().size(), 1000U);
}

TEST(ReturnedMemory, keepsWhatIsLessThanAStep)
{
    ReturnedMemory memory(200 * mebi);
    const auto last = grown();
    const std::size_t grownTo = ReturnedMemory::bytesInUse();
    memory.giveBack();
    EXPECT_GT(ReturnedMemory::bytesInUse() + mebi, grownTo);
}

} // namespace
