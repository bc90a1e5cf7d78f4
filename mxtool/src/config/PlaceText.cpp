#include "config/PlaceText.h"

#include <fmt/format.h>

namespace mxtool {

std::string rangeText(std::size_t begin, std::size_t size)
{
    return size < 2 ? std::to_string(begin) : fmt::format("{}-{}", begin, begin + size - 1);
}

std::string bitsText(const DeviceReport::Parameter& parameter)
{
    return parameter.bitLength() == 0 ? ""
                                      : rangeText(parameter.bitOffset(), parameter.bitLength());
}

std::string registersText(const ParameterPlace& place)
{
    return rangeText(place.begin / registerSize, place.size / registerSize);
}

CsvRow registerColumns()
{
    return {"register_from_0", "register_from_1", "registers"};
}

// Numbers only: spreadsheets would convert a range such as "4-7" to a date.
CsvRow registerCells(const ParameterPlace& place)
{
    const std::size_t first = place.begin / registerSize;
    return {std::to_string(first), std::to_string(first + 1),
            std::to_string(place.size / registerSize)};
}

} // namespace mxtool
