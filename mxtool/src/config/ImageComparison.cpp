#include "config/ImageComparison.h"

#include <fmt/format.h>

#include <algorithm>

namespace mxtool {

namespace {

using devices::parser::FieldbusType;

bool deviates(const ImageComparison& comparison, const ParameterPlace& place)
{
    const Configuration& wanted = comparison.wanted;
    const Configuration& read = comparison.read;
    if (wanted.fieldbus == FieldbusType::Raw) {
        return wanted.device.parameters[place.parameter].raw !=
               read.device.parameters[place.parameter].raw;
    }
    const char* const registers = wanted.bytes.data() + place.begin;
    return !std::equal(registers, registers + place.size, read.bytes.data() + place.begin);
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
            const auto differing = static_cast<std::uint8_t>(comparison.wanted.bytes[byte] ^
                                                             comparison.read.bytes[byte]);
            if ((differing & ~held[byte]) != 0) {
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
    return {{"warning", place, "Bits of no parameter differ: " + named + rest}};
}

} // namespace mxtool
