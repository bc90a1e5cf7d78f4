#include "config/DecodedImage.h"

#include "Counted.h"
#include "Diagnostic.h"
#include "HexBytes.h"
#include "InvalidInput.h"
#include "ParameterText.h"
#include "config/Configuration.h"

#include <text/Utf8.h>

#include <fmt/format.h>

#include <algorithm>

namespace mxtool {

namespace {

using devices::parser::FieldbusType;

// Registers that cannot be a configuration: a parameter listed twice with two values, padding other
// than 0.
void checkRegisters(const std::vector<char>& registers, const Configuration& again,
                    const std::string& place)
{
    const auto differing = std::mismatch(registers.begin(), registers.end(), again.bytes.begin());
    if (differing.first == registers.end()) {
        return;
    }
    const auto at = static_cast<std::size_t>(differing.first - registers.begin());
    const auto holder =
        std::find_if(again.places.begin(), again.places.end(),
                     [at](const ParameterPlace& one) { return at < one.begin + one.size; });
    throw Failure(ExitCode::Input, place,
                  fmt::format("{}: found {} in byte {} of the registers, expected {} as in its "
                              "other registers, or 00 where there is padding",
                              text::toUtf8(described(again.device.parameters[holder->parameter])),
                              hexOfBytes(registers, at, 1), at, hexOfBytes(again.bytes, at, 1)));
}

// The size shows whether the bytes are of the other fieldbus type.
void rejectOtherKind(std::size_t size, FieldbusType fieldbus, TranslatedModule& module,
                     const std::string& place)
{
    const bool isModbus = fieldbus == FieldbusType::Modbus;
    const FieldbusType other = isModbus ? FieldbusType::Raw : FieldbusType::Modbus;
    if (size == decodedSize(fieldbus, module) || size != decodedSize(other, module)) {
        return;
    }
    throw Failure(ExitCode::Input, place,
                  fmt::format("Found {}, expected the {} of the module's {}", counted(size, "byte"),
                              counted(decodedSize(fieldbus, module), "byte"),
                              isModbus ? "Modbus registers" : "parameter image"),
                  isModbus ? "they may be the raw parameter image: leave out --fieldbus modbus"
                           : "they may be the module's Modbus registers: add --fieldbus modbus");
}

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

std::size_t decodedSize(FieldbusType fieldbus, TranslatedModule& module)
{
    const DeviceReport device = module.report();
    return fieldbus == FieldbusType::Raw ? device.parameterBlock.size()
                                         : sizeOfRegisters(placesInRegisters(device));
}

void requireImageSize(const std::vector<char>& image, const DeviceReport& device,
                      const std::string& place)
{
    if (image.size() != device.parameterBlock.size()) {
        throw Failure(ExitCode::Input, place,
                      fmt::format("Found {}, expected the {} of the module's parameter image",
                                  counted(image.size(), "byte"),
                                  counted(device.parameterBlock.size(), "byte")));
    }
}

std::vector<char> decodedImage(const std::vector<char>& bytes, FieldbusType fieldbus,
                               TranslatedModule& module, const std::string& place)
{
    rejectOtherKind(bytes.size(), fieldbus, module, place);
    const DeviceReport device = module.report();
    if (fieldbus == FieldbusType::Raw) {
        requireImageSize(bytes, device, place);
        return bytes;
    }
    try {
        std::vector<char> image =
            imageOfRegisters(bytes, placesInRegisters(device), device, device.parameterBlock);
        checkRegisters(bytes, configurationOf(module, image, FieldbusType::Modbus), place);
        return image;
    } catch (const InvalidInput& invalid) {
        throw Failure(ExitCode::Input, place, invalid.what(), invalid.hint);
    }
}

void requireIdentity(const std::string& deviceTypeId, const DeviceReport& device,
                     const std::string& module, const std::string& place)
{
    if (!deviceTypeId.empty() && deviceTypeId != device.deviceTypeId) {
        throw Failure(ExitCode::Input, place,
                      fmt::format("The values are those of a {}, expected a {} as {} is",
                                  deviceTypeId, device.deviceTypeId, module));
    }
}

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
