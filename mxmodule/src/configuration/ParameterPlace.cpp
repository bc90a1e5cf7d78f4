#include "configuration/ParameterPlace.h"

#include <text/Counted.h>

#include <fmt/format.h>
#include <mxformat/RegisterOrder.h>

#include <algorithm>
#include <tuple>

namespace mxmodule {

namespace {

using DeviceParameter = DeviceReport::Parameter;

std::size_t sizeInRegisters(const DeviceParameter& parameter)
{
    if (parameter.hasOptionList) {
        return registerSize;
    }
    return (parameter.field.size() + registerSize - 1) / registerSize * registerSize;
}

template <typename Item>
std::vector<std::uint8_t> numbersOf(const std::vector<Item>& items, std::uint8_t Item::*number)
{
    std::vector<std::uint8_t> numbers(items.size());
    std::transform(items.begin(), items.end(), numbers.begin(),
                   [number](const Item& item) { return item.*number; });
    return numbers;
}

} // namespace

std::vector<ParameterPlace> placesInImage(const DeviceReport& device)
{
    std::vector<ParameterPlace> places;
    for (std::size_t i = 0; i < device.parameters.size(); ++i) {
        const mxformat::BlockField& field = device.parameters[i].field;
        places.push_back({i, field.begin(), field.size()});
    }
    const auto position = [&device](const ParameterPlace& place) {
        return std::tuple(place.begin, device.parameters[place.parameter].bitOffset());
    };
    std::stable_sort(places.begin(), places.end(),
                     [&position](const ParameterPlace& a, const ParameterPlace& b) {
                         return position(a) < position(b);
                     });
    return places;
}

std::vector<ParameterPlace> placesInRegisters(const DeviceReport& device)
{
    std::vector<ParameterPlace> places;
    std::size_t begin = 0;
    for (const std::size_t parameter :
         mxformat::registerOrder(numbersOf(device.parameters, &DeviceParameter::channelNumber),
                                 numbersOf(device.channels, &DeviceReport::Channel::number))) {
        const std::size_t size = sizeInRegisters(device.parameters[parameter]);
        places.push_back({parameter, begin, size});
        begin += size;
    }
    return places;
}

std::string faultOfBits(const DeviceParameter& parameter)
{
    const unsigned length = parameter.record.bitLength;
    const unsigned offset = parameter.record.bitOffset;
    if (length == 0) {
        return fmt::format("its bit offset is {}, expected 0 to 7", offset);
    }
    return fmt::format("its {} from bit {} {} byte, bits 0 to 7", text::counted(length, "bit"),
                       offset, length == 1 ? "leaves its" : "leave their");
}

std::optional<std::string> whyNotHeld(const DeviceParameter& parameter, std::size_t imageSize)
{
    if (!parameter.field.exists()) {
        return faultOfBits(parameter);
    }
    if (!parameter.field.liesWithin(imageSize)) {
        return "it lies outside the parameter image of " + text::counted(imageSize, "byte");
    }
    return std::nullopt;
}

std::vector<std::uint8_t> bitsOfParameters(const DeviceReport& device, std::size_t imageSize)
{
    constexpr auto allBits = ~std::uint64_t{0};
    std::vector<std::uint8_t> bits(imageSize);
    for (const DeviceParameter& parameter : device.parameters) {
        if (parameter.field.liesWithin(imageSize)) {
            parameter.field.write(bits.data(), allBits);
        }
    }
    return bits;
}

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

text::CsvRow registerColumns()
{
    return {"register_from_0", "register_from_1", "registers"};
}

// Numbers only: spreadsheets would convert a range such as "4-7" to a date.
text::CsvRow registerCells(const ParameterPlace& place)
{
    const std::size_t first = place.begin / registerSize;
    return {std::to_string(first), std::to_string(first + 1),
            std::to_string(place.size / registerSize)};
}

} // namespace mxmodule
