#include "config/ParameterPlace.h"

#include <mxformat/BitPlace.h>

#include <algorithm>
#include <tuple>
#include <unordered_map>

namespace mxtool {

namespace {

using Parameter = DeviceReport::Parameter;

std::size_t sizeInRegisters(const Parameter& parameter)
{
    if (parameter.hasOptionList) {
        return registerSize;
    }
    return (parameter.dataSize + registerSize - 1) / registerSize * registerSize;
}

} // namespace

std::vector<ParameterPlace> placesInImage(const DeviceReport& device)
{
    std::vector<ParameterPlace> places;
    for (std::size_t i = 0; i < device.parameters.size(); ++i) {
        const Parameter& parameter = device.parameters[i];
        places.push_back({i, parameter.byteOffset, parameter.dataSize});
    }
    const auto position = [&device](const ParameterPlace& place) {
        return std::tuple(place.begin, device.parameters[place.parameter].bitOffset);
    };
    std::stable_sort(places.begin(), places.end(),
                     [&position](const ParameterPlace& a, const ParameterPlace& b) {
                         return position(a) < position(b);
                     });
    return places;
}

std::vector<ParameterPlace> placesInRegisters(const DeviceReport& device,
                                              const std::vector<std::string>& ids)
{
    std::unordered_map<std::string, std::size_t> positions;
    for (std::size_t i = 0; i < device.parameters.size(); ++i) {
        positions.emplace(device.parameters[i].id, i);
    }
    std::vector<ParameterPlace> places;
    std::size_t begin = 0;
    for (const std::string& id : ids) {
        const std::size_t parameter = positions.at(id);
        const std::size_t size = sizeInRegisters(device.parameters[parameter]);
        places.push_back({parameter, begin, size});
        begin += size;
    }
    return places;
}

bool liesWithin(const Parameter& parameter, std::size_t imageSize)
{
    return std::size_t{parameter.byteOffset} + parameter.dataSize <= imageSize;
}

unsigned char maskOf(const Parameter& parameter)
{
    return mxformat::bitPlace(parameter.bitLength, parameter.bitOffset).mask();
}

std::vector<unsigned char> bitsOfParameters(const DeviceReport& device, std::size_t imageSize)
{
    std::vector<unsigned char> bits(imageSize);
    for (const Parameter& parameter : device.parameters) {
        for (std::size_t i = 0; i < parameter.dataSize; ++i) {
            if (parameter.byteOffset + i < imageSize) {
                bits[parameter.byteOffset + i] |= maskOf(parameter);
            }
        }
    }
    return bits;
}

} // namespace mxtool
