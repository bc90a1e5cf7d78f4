#include "HeldMemory.h"

#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <new>

namespace {

std::size_t held = 0;
std::size_t peak = 0;
std::size_t limit = std::numeric_limits<std::size_t>::max();
void (*sayWhere)() = nullptr;

void* allocateOrNull(std::size_t size)
{
    void* const memory = std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) {
        return nullptr;
    }
    held += malloc_usable_size(memory);
    peak = std::max(peak, held);
    if (held > limit) {
        limit = std::numeric_limits<std::size_t>::max(); // the message may allocate memory
        sayWhere();
        std::abort();
    }
    return memory;
}

void* allocate(std::size_t size)
{
    void* const memory = allocateOrNull(size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

void release(void* memory)
{
    held -= memory != nullptr ? malloc_usable_size(memory) : 0;
    std::free(memory);
}

} // namespace

namespace testkit {

std::size_t heldBytes()
{
    return held;
}

void limitMemory(std::size_t bytes, void (*say)())
{
    sayWhere = say;
    limit = bytes;
}

void startPeak()
{
    peak = held;
}

std::size_t peakBytes()
{
    return peak;
}

} // namespace testkit

void* operator new(std::size_t size)
{
    return allocate(size);
}

void* operator new[](std::size_t size)
{
    return allocate(size);
}

void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept
{
    return allocateOrNull(size);
}

void* operator new[](std::size_t size, const std::nothrow_t& /*tag*/) noexcept
{
    return allocateOrNull(size);
}

void operator delete(void* memory) noexcept
{
    release(memory);
}

void operator delete[](void* memory) noexcept
{
    release(memory);
}

void operator delete(void* memory, const std::nothrow_t& /*tag*/) noexcept
{
    release(memory);
}

void operator delete[](void* memory, const std::nothrow_t& /*tag*/) noexcept
{
    release(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept
{
    release(memory);
}

void operator delete[](void* memory, std::size_t /*size*/) noexcept
{
    release(memory);
}
