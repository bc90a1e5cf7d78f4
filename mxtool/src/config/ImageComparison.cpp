#include "config/ImageComparison.h"

#include <fmt/format.h>

#include <algorithm>

namespace mxtool {

namespace {

using devices::parser::FieldbusType;

unsigned differingBits(const ImageComparison& comparison, std::size_t byte)
{
    return static_cast<unsigned char>(comparison.wanted.bytes[byte] ^ comparison.read.bytes[byte]);
}

bool deviates(const ImageComparison& comparison, const ParameterPlace& place)
{
    const bool isRegister = comparison.wanted.fieldbus == FieldbusType::Modbus;
    const unsigned bits =
        isRegister ? 0xFFU : maskOf(comparison.wanted.device.parameters[place.parameter]);
    const std::size_t end = std::min(place.begin + place.size, comparison.wanted.bytes.size());
    for (std::size_t byte = place.begin; byte < end; ++byte) {
        if ((differingBits(comparison, byte) & bits) != 0) {
            return true;
        }
    }
    return false;
}

} // namespace

ImageComparison compared(Configuration wanted, Configuration read)
{
    ImageComparison comparison{std::move(wanted), std::move(read), {}, {}};
    const auto& places = comparison.wanted.places;
    std::copy_if(places.begin(), places.end(), std::back_inserter(comparison.deviations),
                 [&](const ParameterPlace& place) { return deviates(comparison, place); });
    if (comparison.wanted.fieldbus == FieldbusType::Raw) {
        const std::size_t size = comparison.wanted.bytes.size();
        const auto held = bitsOfParameters(comparison.wanted.device, size);
        for (std::size_t byte = 0; byte < size; ++byte) {
            if ((differingBits(comparison, byte) & ~unsigned{held[byte]}) != 0) {
                comparison.strayBytes.push_back(byte);
            }
        }
    }
    return comparison;
}

std::vector<Diagnostic> notesOf(const ImageComparison& comparison, const std::string& place)
{
    constexpr std::size_t mostNamed = 8;
    std::string named;
    const std::size_t count = comparison.strayBytes.size();
    for (std::size_t i = 0; i < std::min(count, mostNamed); ++i) {
        const std::size_t byte = comparison.strayBytes[i];
        named += fmt::format("{}byte {} is {:#04x}, wanted {:#04x}", i == 0 ? "" : "; ", byte,
                             static_cast<unsigned char>(comparison.read.bytes[byte]),
                             static_cast<unsigned char>(comparison.wanted.bytes[byte]));
    }
    if (count == 0) {
        return {};
    }
    const std::string rest =
        count > mostNamed ? fmt::format("; and {} more", count - mostNamed) : "";
    return {{"warning", place, "Bits of no parameter differ: " + named + rest, ""}};
}

} // namespace mxtool
