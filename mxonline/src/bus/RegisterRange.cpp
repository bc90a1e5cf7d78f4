#include "bus/RegisterRange.h"

#include <fmt/format.h>

namespace mxonline {

std::string registersText(const RegisterRange& range)
{
    const std::uint32_t last = range.end() - 1;
    return range.count == 1 ? fmt::format("register {} (0x{:04x})", range.address, range.address)
                            : fmt::format("registers {} to {} (0x{:04x} to 0x{:04x})",
                                          range.address, last, range.address, last);
}

} // namespace mxonline
