#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace mxonline {

/// Consecutive registers.
struct RegisterRange
{
    std::uint32_t address = 0; ///< The first.
    std::uint32_t count = 0;   ///< Number of registers.

    std::uint32_t end() const { return address + count; } ///< Address after the last.

    /// Returns whether the two have a common register.
    bool overlaps(const RegisterRange& other) const
    {
        return address < other.end() && other.address < end();
    }

    bool operator==(const RegisterRange& other) const
    {
        return address == other.address && count == other.count;
    }
};

/// Returns "16384 (0x4000)" or "16384 to 16391 (0x4000 to 0x4007)".
std::string addressesText(const RegisterRange& range);

/// Returns "register 16384 (0x4000)" or "registers 16384 to 16391 (0x4000 to 0x4007)".
std::string registersText(const RegisterRange& range);

} // namespace mxonline
