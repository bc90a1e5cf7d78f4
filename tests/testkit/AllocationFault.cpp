#include "AllocationFault.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

thread_local std::size_t countdown = 0; // 0: none fails
thread_local bool failed = false;
std::atomic<std::size_t> held{0};

void* allocate(std::size_t size) noexcept
{
    if (testkit::allocationFails()) {
        return nullptr;
    }
    void* const memory = std::malloc(size == 0 ? 1 : size);
    held += memory != nullptr ? 1U : 0U;
    return memory;
}

void release(void* memory) noexcept
{
    held -= memory != nullptr ? 1U : 0U;
    std::free(memory);
}

} // namespace

namespace testkit {

AllocationFault::AllocationFault(std::size_t number)
{
    failed = false;
    countdown = number;
}

AllocationFault::~AllocationFault()
{
    countdown = 0;
}

bool AllocationFault::happened() const
{
    return failed;
}

bool allocationFails()
{
    if (countdown == 0 || --countdown != 0) {
        return false;
    }
    failed = true;
    return true;
}

std::size_t heldBlocks()
{
    return held;
}

} // namespace testkit

void* operator new(std::size_t size)
{
    void* const memory = allocate(size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

void* operator new[](std::size_t size)
{
    return operator new(size);
}

void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept
{
    return allocate(size);
}

void* operator new[](std::size_t size, const std::nothrow_t& /*tag*/) noexcept
{
    return allocate(size);
}

void operator delete(void* memory) noexcept
{
    release(memory);
}

void operator delete[](void* memory) noexcept
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

void operator delete(void* memory, const std::nothrow_t& /*tag*/) noexcept
{
    release(memory);
}

void operator delete[](void* memory, const std::nothrow_t& /*tag*/) noexcept
{
    release(memory);
}
