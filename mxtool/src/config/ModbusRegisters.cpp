#include "config/ModbusRegisters.h"

#include "Counted.h"
#include "HexBytes.h"
#include "ParameterText.h"
#include "Refusal.h"
#include "ShownText.h"

#include <fmt/format.h>
#include <mxformat/BitPlace.h>

#include <algorithm>

namespace mxtool {

namespace {

using Parameter = DeviceReport::Parameter;

// The bytes of one parameter, as far as its registers hold it.
struct RegisterValue
{
    const Parameter& parameter;
    const ParameterPlace& place;
    const std::vector<char>& registers;

    unsigned char byte(std::size_t i) const
    {
        return static_cast<unsigned char>(registers[place.begin + i]);
    }

    [[noreturn]] void refuse(const std::string& expected) const
    {
        throw Refusal(fmt::format(
            "{}: found {} in byte {} of the registers, expected {}", toUtf8(described(parameter)),
            hexOfBytes(registers, place.begin, place.size), place.begin, expected));
    }
};

unsigned char rawOption(const RegisterValue& value)
{
    const auto& options = value.parameter.options;
    if (value.byte(0) >= options.size() || value.byte(1) != 0) {
        value.refuse(options.empty()
                         ? "no value at all: its option list is empty"
                         : fmt::format("00 00 to {:02x} 00, the position of one of its options {}",
                                       options.size() - 1,
                                       toUtf8(acceptedValues(value.parameter))));
    }
    return options[value.byte(0)].raw;
}

// Writes the shifted-down `raw` into its bits.
void writeField(const RegisterValue& value, unsigned raw, char& byte)
{
    const auto place = mxformat::bitPlace(value.parameter.bitLength, value.parameter.bitOffset);
    const unsigned highest = place.mask() >> place.shift;
    if (raw > highest) {
        value.refuse(fmt::format("00 to {:02x}, its {}", highest, counted(place.count, "bit")));
    }
    byte =
        static_cast<char>((static_cast<unsigned char>(byte) & ~place.mask()) | raw << place.shift);
}

void writeParameter(const RegisterValue& value, std::vector<char>& image)
{
    const Parameter& parameter = value.parameter;
    if (!liesWithin(parameter, image.size())) {
        value.refuse(
            fmt::format("none: it lies outside the image of {}", counted(image.size(), "byte")));
    }
    if (!mxformat::bitPlace(parameter.bitLength, parameter.bitOffset).exists()) {
        value.refuse("none: its bits lie outside its byte");
    }
    const std::size_t count =
        parameter.hasOptionList ? std::min<std::size_t>(parameter.dataSize, 1) : parameter.dataSize;
    for (std::size_t i = 0; i < count; ++i) {
        const unsigned char byte = parameter.hasOptionList ? rawOption(value) : value.byte(i);
        char& place = image[parameter.byteOffset + i];
        if (parameter.bitLength == 0 && parameter.bitOffset == 0) {
            place = static_cast<char>(byte);
        } else {
            writeField(value, byte, place);
        }
    }
}

} // namespace

std::size_t sizeOfRegisters(const std::vector<ParameterPlace>& places)
{
    return places.empty() ? 0 : places.back().begin + places.back().size;
}

std::vector<char> imageOfRegisters(const std::vector<char>& registers,
                                   const std::vector<ParameterPlace>& places,
                                   const DeviceReport& device, std::vector<char> image)
{
    if (registers.size() != sizeOfRegisters(places)) {
        throw Refusal(fmt::format("Found {}, expected the {} of the module's Modbus registers",
                                  counted(registers.size(), "byte"),
                                  counted(sizeOfRegisters(places), "byte")));
    }
    for (const ParameterPlace& place : places) {
        writeParameter({device.parameters[place.parameter], place, registers}, image);
    }
    return image;
}

} // namespace mxtool
