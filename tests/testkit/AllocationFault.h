#pragma once

#include <cstddef>

namespace testkit {

/// Lets one allocation of this thread fail while it lives: the `number`-th from its construction
/// on, counted from 1, throws `std::bad_alloc`. For programs that are linked with
/// AllocationFault.cpp, which replaces operator new for all libraries of the process.
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

/// Counts one allocation and returns whether it is the one to fail: for allocators beside operator
/// new.
bool allocationFails();

/// Returns how many blocks of operator new the process holds.
std::size_t heldBlocks();

} // namespace testkit
