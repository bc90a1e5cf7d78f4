#pragma once

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define LEAKS_ARE_LOOKED_FOR
#endif
#elif defined(__SANITIZE_ADDRESS__)
#define LEAKS_ARE_LOOKED_FOR
#endif
#if defined(LEAKS_ARE_LOOKED_FOR)
#include <sanitizer/lsan_interface.h>
#endif

namespace testkit {

/// While it lives, memory that is allocated and lost is not reported as a leak.
class LostMemoryExpected
{
public:
#if defined(LEAKS_ARE_LOOKED_FOR)
    LostMemoryExpected()
    {
        __lsan_disable();
    }
    ~LostMemoryExpected()
    {
        __lsan_enable();
    }
#else
    LostMemoryExpected() {}
    ~LostMemoryExpected() {}
#endif
    LostMemoryExpected(const LostMemoryExpected&) = delete;
    LostMemoryExpected& operator=(const LostMemoryExpected&) = delete;
};

} // namespace testkit
