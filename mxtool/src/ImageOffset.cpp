#include "ImageOffset.h"

#include "Counted.h"

#include <fmt/format.h>

namespace mxtool {

namespace {

constexpr std::uint64_t mostAddressed = std::uint64_t{1} << 32U;
constexpr std::uint64_t mostOfModbus = std::uint64_t{2} * 65536; // registers have 16-bit numbers

} // namespace

std::optional<Diagnostic> offsetWarning(const std::string& option, std::uint64_t offset,
                                        std::uint64_t size)
{
    const std::uint64_t end = offset + size;
    if (end <= mostOfModbus) {
        return std::nullopt;
    }
    const std::string wrapped =
        end > mostAddressed ? "; byte addresses have 32 bits and begin again at 0" : "";
    return Diagnostic{"warning", fmt::format("{} {}", option, offset),
                      fmt::format("The module's {} end at byte {}, after the {} bytes of the "
                                  "largest process image, the 65536 registers of Modbus{}",
                                  counted(size, "byte"), end, mostOfModbus, wrapped)};
}

} // namespace mxtool
