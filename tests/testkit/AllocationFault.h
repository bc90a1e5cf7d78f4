#pragma once

#include <cstddef>

namespace testkit {

/// While it lives, one allocation of this thread fails: the `number`-th from its construction on,
/// counted from 1, throws `std::bad_alloc`. For programs that are linked with AllocationFault.cpp,
/// which replaces operator new for all libraries of the process.
class AllocationFault
{
public:
    explicit AllocationFault(std::size_t number);
    ~AllocationFault();
    AllocationFault(const AllocationFault&) = delete;
    AllocationFault& operator=(const AllocationFault&) = delete;

    /// Returns whether there were so many allocations.
    bool happened() const;
};

/// Counts one allocation and returns whether it is to fail: for allocators other than operator new.
bool allocationFails();

/// Returns how many blocks of operator new the process holds.
std::size_t heldBlocks();

} // namespace testkit
