#pragma once

#include <cstddef>
#include <cstring>

namespace testkit {

/// Returns the slot of the virtual `operation` in the virtual table of its class, as the Itanium
/// C++ ABI encodes it in a pointer to member (x86-64: 1 + offset in bytes).
template <class Operation>
std::ptrdiff_t slotOf(Operation operation)
{
    std::ptrdiff_t offsetPlusOne = 0;
    std::memcpy(&offsetPlusOne, &operation, sizeof offsetPlusOne);
    return (offsetPlusOne - 1) / static_cast<std::ptrdiff_t>(sizeof(void*));
}

/// Returns the virtual table of `object`, whose first base is polymorphic.
inline void* const* virtualTableOf(const void* object)
{
    void* const* table = nullptr;
    std::memcpy(&table, object, sizeof table);
    return table;
}

} // namespace testkit
