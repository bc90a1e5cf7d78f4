#include "bus/RegisterRange.h"

#include <fmt/format.h>

namespace mxonline {

std::string addressesText(const RegisterRange& range)
{
    const std::uint32_t last = range.end() - 1;
    return range.count == 1 ? fmt::format("{} (0x{:04x})", range.address, range.address)
                            : fmt::format("{} to {} (0x{:04x} to 0x{:04x})", range.address, last,
                                          range.address, last);
}

std::string registersText(const RegisterRange& range)
{
    return (range.count == 1 ? "register " : "registers ") + addressesText(range);
}

} // namespace mxonline
