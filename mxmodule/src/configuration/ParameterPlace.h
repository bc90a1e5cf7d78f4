#pragma once

#include "DeviceReport.h"

#include <text/Csv.h>

#include <optional>
#include <string>
#include <vector>

namespace mxmodule {

constexpr std::size_t registerSize = 2; ///< Bytes of a Modbus register.

/// The place of a parameter in a buffer: the raw image or the Modbus registers.
struct ParameterPlace
{
    std::size_t parameter; ///< Position in the device's list of parameters.
    std::size_t begin;     ///< First byte.
    std::size_t size;      ///< Number of bytes.
};

/// Returns the places of all parameters in the raw image, by byte and bit.
std::vector<ParameterPlace> placesInImage(const DeviceReport& device);

/// Returns the places in the Modbus registers, in order. A parameter that is listed twice has two
/// places.
std::vector<ParameterPlace> placesInRegisters(const DeviceReport& device);

/// Returns why the bits of a parameter are invalid, such as "its 3 bits from bit 6 leave their
/// byte, bits 0 to 7".
std::string faultOfBits(const DeviceReport::Parameter& parameter);

/// Returns why a raw image of `imageSize` bytes does not contain the parameter; nothing if it does.
[[nodiscard]] std::optional<std::string> whyNotHeld(const DeviceReport::Parameter& parameter,
                                                    std::size_t imageSize);

/// Returns the bits of an image of `imageSize` bytes that belong to parameters, as a mask for each
/// byte.
std::vector<std::uint8_t> bitsOfParameters(const DeviceReport& device, std::size_t imageSize);

// The place of a parameter in outputs.

/// Returns "4" or "4-7".
std::string rangeText(std::size_t begin, std::size_t size);

/// Returns the bits of a bit field, empty for whole bytes.
std::string bitsText(const DeviceReport::Parameter& parameter);

/// Returns the registers of a place, counted from 0.
std::string registersText(const ParameterPlace& place);

/// The CSV columns of `registerCells`: the first register, counted from 0 (address) and from 1
/// (number), and the count.
text::CsvRow registerColumns();
text::CsvRow registerCells(const ParameterPlace& place);

} // namespace mxmodule
