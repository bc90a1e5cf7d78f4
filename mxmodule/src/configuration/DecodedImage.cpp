#include "configuration/DecodedImage.h"

#include "FindingAdvice.h"
#include "InvalidInput.h"
#include "ParameterText.h"
#include "configuration/ConfiguredImage.h"
#include <mxmodule/Finding.h>
#include <text/Counted.h>

#include <text/Hexadecimal.h>
#include <text/Utf8.h>

#include <fmt/format.h>

#include <algorithm>

namespace mxmodule {

namespace {

// Registers that cannot be a configuration: a parameter listed twice with two values, padding other
// than 0.
void checkRegisters(const std::vector<char>& registers, const ConfiguredImage& again,
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
    throw Failure(Origin::Input, place,
                  fmt::format("{}: found {} in byte {} of the registers, expected {} as in its "
                              "other registers, or 00 where there is padding",
                              text::toUtf8(described(again.device.parameters[holder->parameter])),
                              text::hexOfBytes(registers, at, 1), at,
                              text::hexOfBytes(again.bytes, at, 1)));
}

// The size shows whether the bytes are of the other fieldbus type.
void rejectOtherKind(std::size_t size, Fieldbus fieldbus, const TranslatedModule& module,
                     const std::string& place)
{
    const bool isModbus = fieldbus == Fieldbus::Modbus;
    const Fieldbus other = isModbus ? Fieldbus::Raw : Fieldbus::Modbus;
    if (size == decodedSize(fieldbus, module) || size != decodedSize(other, module)) {
        return;
    }
    Finding finding{Severity::Error, place,
                    fmt::format("Found {}, expected the {} of the module's {}",
                                text::counted(size, "byte"),
                                text::counted(decodedSize(fieldbus, module), "byte"),
                                isModbus ? "Modbus registers" : "parameter image")};
    giveAdvice(finding, isModbus ? Advice::ReadAsRaw : Advice::ReadAsModbus);
    throw Failure(std::move(finding));
}

using DeviceParameter = DeviceReport::Parameter;

// The bytes of one parameter, as far as they are in its registers.
struct RegisterValue
{
    const DeviceParameter& parameter;
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
                                       text::hexOfBytes(registers, place.begin, place.size),
                                       place.begin, expected));
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
    const DeviceParameter& parameter = value.parameter;
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
        value.reject(fmt::format("00 to {:02x}, its {}", field.highest(),
                                 text::counted(field.bits(), "bit")));
    }
    field.write(reinterpret_cast<std::uint8_t*>(image.data()), raw);
}

} // namespace

std::size_t decodedSize(Fieldbus fieldbus, const TranslatedModule& module)
{
    const DeviceReport& device = module.report();
    return fieldbus == Fieldbus::Raw ? device.parameterBlock.size()
                                     : sizeOfRegisters(placesInRegisters(device));
}

std::optional<Finding> sizeFinding(const std::vector<char>& image, const std::vector<char>& own,
                                   const std::string& place)
{
    if (image.size() == own.size()) {
        return std::nullopt;
    }
    return Finding{Severity::Error, place,
                   fmt::format("Found {}, expected the {} of the module's parameter image",
                               text::counted(image.size(), "byte"),
                               text::counted(own.size(), "byte"))};
}

void requireImageSize(const std::vector<char>& image, const std::vector<char>& own,
                      const std::string& place)
{
    if (auto finding = sizeFinding(image, own, place)) {
        throw Failure(std::move(*finding));
    }
}

std::vector<char> decodedImage(const std::vector<char>& bytes, Fieldbus fieldbus,
                               const TranslatedModule& module, const std::string& place)
{
    rejectOtherKind(bytes.size(), fieldbus, module, place);
    const DeviceReport& device = module.report();
    if (fieldbus == Fieldbus::Raw) {
        requireImageSize(bytes, device.parameterBlock, place);
        return bytes;
    }
    try {
        std::vector<char> image =
            imageOfRegisters(bytes, placesInRegisters(device), device, device.parameterBlock);
        checkRegisters(bytes, configurationOf(module, image, Fieldbus::Modbus), place);
        return image;
    } catch (const InvalidInput& invalid) {
        throw Failure(findingOf(invalid, place, Origin::Input));
    }
}

void requireIdentity(const std::string& deviceTypeId, const DeviceReport& device,
                     const std::string& module, const std::string& place)
{
    if (!deviceTypeId.empty() && deviceTypeId != device.deviceTypeId) {
        throw Failure(Origin::Input, place,
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
                                       text::counted(registers.size(), "byte"),
                                       text::counted(sizeOfRegisters(places), "byte")));
    }
    for (const ParameterPlace& place : places) {
        writeParameter({device.parameters[place.parameter], place, registers}, image);
    }
    return image;
}

} // namespace mxmodule
