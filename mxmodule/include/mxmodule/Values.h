#pragma once

#include "mxmodule/MxmoduleApi.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// What a module consists of, as plain values. Texts are UTF-8.

namespace mxmodule {

/// The form in which a master writes a configuration.
enum class Fieldbus
{
    Raw,   ///< The parameter image as the module holds it.
    Modbus ///< Whole 16-bit registers, parameter after parameter.
};

/// Where the data of a module begins in the process images, in bytes.
struct ImageOffsets
{
    unsigned input = 0;  ///< In the input image.
    unsigned output = 0; ///< In the output image.
};

/// A static property of a module.
struct Property
{
    std::string id;    ///< Identifier in the device, decimal.
    std::string name;  ///< Such as "moduleId".
    std::string value; ///< As text.
};

/// The sizes of a module's data, in bytes, and where they begin in the process images.
struct DataSizes
{
    std::uint32_t input = 0;      ///< Input process data.
    std::uint32_t output = 0;     ///< Output process data.
    std::uint32_t parameters = 0; ///< Parameter image.
    std::uint32_t diagnosis = 0;  ///< Diagnosis data.
    ImageOffsets offsets;         ///< Where the process data begins.
};

/// A channel of a module.
struct Channel
{
    std::string id;                ///< Identifier in the device, decimal.
    std::uint8_t number = 0;       ///< Several channels may have the same.
    std::string name;              ///< May be empty.
    std::string direction;         ///< "in", "out" or empty.
    std::string symbol;            ///< IEC address such as "IW4"; empty: none.
    std::string kind;              ///< Size letter "X", "B", "W", "D" or "L"; empty: no data.
    std::uint32_t byteAddress = 0; ///< First byte in the process image of its direction.
    std::uint8_t bitOffset = 0;    ///< First bit; may be above 7.
    std::uint8_t bitLength = 0;    ///< In bits.
};

/// An option of a parameter.
struct Option
{
    std::string text;     ///< As shown.
    std::string value;    ///< The number, decimal.
    std::uint8_t raw = 0; ///< The lowest byte of the number.
    bool current = false; ///< The parameter has this value.
    std::string callText; ///< Selects it in `Module::compose`: its text, or "#" and its number.
};

/// Where a value lies in the raw parameter image.
struct ImagePlace
{
    std::size_t byte = 0;   ///< First byte.
    std::size_t bytes = 0;  ///< Number of bytes, big-endian.
    unsigned bitOffset = 0; ///< Lowest bit of a bit field.
    unsigned bitLength = 0; ///< Number of bits of a bit field; 0: whole bytes.
};

/// A parameter of a module and its value.
struct Parameter
{
    std::string id;                        ///< Identifier in the device, decimal.
    std::optional<std::uint8_t> channel;   ///< Number of its channel; empty: of the module.
    std::vector<std::string> channelNames; ///< Of the channels with that number.
    std::string name;                      ///< Several parameters may have the same.
    std::string callName; ///< The shortest name that `Module::compose` takes for this parameter.
    std::string type;     ///< Name of the datatype, such as "UInt16".

    std::string stored;  ///< The number in the image, decimal; empty: it is outside the image.
    std::string value;   ///< The value as in the device of the parser.
    std::string digits;  ///< The same without rounding where it is physical; empty: no value.
    std::string shown;   ///< As people read it: "9.9 V", the text of an option, "7 (outside ...)".
    std::string unit;    ///< Empty: none.
    std::string minimum; ///< Least value, in the same unit.
    std::string maximum; ///< Greatest value, in the same unit.

    bool hasOptions = false;     ///< One of `options`, which may be empty; otherwise a number.
    std::vector<Option> options; ///< In the order of the list.
    bool isPhysical = false;     ///< Shown and set in units other than the stored number.
    bool flagBit0 = false;       ///< Bit 0 of the flags, at the module author's disposal.
    bool flagBit1 = false;       ///< Bit 1 of the flags.
    bool isAccepted = true;      ///< The value is in the range or one of the options.
    ImagePlace place;            ///< Of the value.
};

/// A set or role: attributes of the module that belong together.
struct Set
{
    std::string id;                   ///< Identifier in the device, decimal.
    std::string name;                 ///< Such as "channels".
    bool isRole = false;              ///< A role, otherwise a set.
    std::vector<std::string> members; ///< Identifiers of properties, channels, parameters, sets.
};

/// A binary object, such as the picture of the product.
struct BinaryObject
{
    std::string id;       ///< Identifier in the device, decimal.
    std::string name;     ///< Such as "productImage".
    std::string mimeType; ///< Such as "image/svgz".
    std::string encoding; ///< Of `data`: "base64".
    std::string data;     ///< The content.
};

/// The texts of a parameter, byte for byte as in the mx file.
struct RawParameterTexts
{
    std::string name;                 ///< As `Parameter::name`.
    std::string unit;                 ///< As `Parameter::unit`.
    std::vector<std::string> options; ///< As `Option::text`, in the same order.
};

/// The texts of a module, byte for byte as in the mx file, which states no code page. Elsewhere
/// those that are not UTF-8 are read as Windows-1252.
struct RawTexts
{
    std::string label;                         ///< As `Module::label`.
    std::vector<std::string> properties;       ///< As `Property::value`, in the same order.
    std::vector<std::string> channels;         ///< As `Channel::name`, in the same order.
    std::vector<RawParameterTexts> parameters; ///< In the order of the parameters.

    MXMODULE_API std::string json() const; ///< Schema "mxmodule.raw-texts" version 1.
};

} // namespace mxmodule
