#include "config/DecodedImage.h"

#include "Counted.h"
#include "HexBytes.h"
#include "InvalidInput.h"
#include "ParameterText.h"
#include "config/Configuration.h"
#include "config/ModbusRegisters.h"

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

} // namespace mxtool
