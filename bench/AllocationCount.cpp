#include "AllocationCount.h"

#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <new>

namespace {

std::size_t held = 0;
std::size_t peak = 0;

} // namespace

namespace bench {

std::size_t heldBytes()
{
    return held;
}

void startPeak()
{
    peak = held;
}

std::size_t peakBytes()
{
    return peak;
}

} // namespace bench

void* operator new(std::size_t size)
{
    void* const memory = std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    held += malloc_usable_size(memory);
    peak = std::max(peak, held);
    return memory;
}

void operator delete(void* memory) noexcept
{
    held -= memory != nullptr ? malloc_usable_size(memory) : 0;
    std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept
{
    operator delete(memory);
}
