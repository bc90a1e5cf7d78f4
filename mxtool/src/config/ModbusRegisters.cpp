#include "config/ModbusRegisters.h"

#include "Counted.h"
#include "HexBytes.h"
#include "InvalidInput.h"
#include "ParameterText.h"

#include <text/Utf8.h>

#include <fmt/format.h>

namespace mxtool {

namespace {

using Parameter = DeviceReport::Parameter;

// The bytes of one parameter, as far as they are in its registers.
struct RegisterValue
{
    const Parameter& parameter;
    const ParameterPlace& place;
    const std::vector<char>& registers;

    unsigned char byte(std::size_t i) const
    {
        return static_cast<unsigned char>(registers[place.begin + i]);
    }

    [[noreturn]] void reject(const std::string& expected) const
    {
        throw InvalidInput(fmt::format("{}: found {} in byte {} of the registers, expected {}",
                                       text::toUtf8(described(parameter)),
                                       hexOfBytes(registers, place.begin, place.size), place.begin,
                                       expected));
    }
};

unsigned char rawOption(const RegisterValue& value)
{
    const auto& options = value.parameter.options;
    if (value.byte(0) >= options.size() || value.byte(1) != 0) {
        value.reject(options.empty()
                         ? "no value at all: its option list is empty"
                         : fmt::format("00 00 to {:02x} 00, the position of one of its options {}",
                                       options.size() - 1,
                                       text::toUtf8(acceptedValues(value.parameter))));
    }
    return options[value.byte(0)].raw;
}

std::uint64_t rawNumber(const RegisterValue& value)
{
    std::uint64_t number = 0;
    for (std::uint32_t i = 0; i < value.parameter.field.size(); ++i) {
        number = number << 8U | value.byte(i);
    }
    return number;
}

void writeParameter(const RegisterValue& value, std::vector<char>& image)
{
    const Parameter& parameter = value.parameter;
    const mxformat::BlockField& field = parameter.field;
    if (const auto reason = whyNotHeld(parameter, image.size())) {
        value.reject("none: " + *reason);
    }
    if (parameter.hasOptionList && field.size() > 1) { // an option sets only the first byte
        image[field.begin()] = static_cast<char>(rawOption(value));
        return;
    }
    const std::uint64_t raw =
        field.fromSlot(parameter.hasOptionList ? rawOption(value) : rawNumber(value));
    if (!field.holds(field.number(raw))) {
        value.reject(
            fmt::format("00 to {:02x}, its {}", field.highest(), counted(field.bits(), "bit")));
    }
    field.write(reinterpret_cast<std::uint8_t*>(image.data()), raw);
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
        throw InvalidInput(fmt::format("Found {}, expected the {} of the module's Modbus registers",
                                       counted(registers.size(), "byte"),
                                       counted(sizeOfRegisters(places), "byte")));
    }
    for (const ParameterPlace& place : places) {
        writeParameter({device.parameters[place.parameter], place, registers}, image);
    }
    return image;
}

} // namespace mxtool
