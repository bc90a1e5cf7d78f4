#include "configuration/ConfiguredImage.h"

#include "ParameterText.h"
#include "PlainValues.h"
#include "ProcessParser.h"
#include "mxmodule/Registers.h"

#include <text/Beginning.h>
#include <text/Utf8.h>

#include <fmt/format.h>

#include <algorithm>
#include <set>

namespace mxmodule {

namespace {

constexpr std::size_t mostNamed = 8; // bytes or parameters in one message

// Why the Modbus registers cannot contain a parameter; nothing if they can.
std::optional<std::string> obstacle(const DeviceReport::Parameter& parameter, std::size_t imageSize)
{
    auto reason = whyNotHeld(parameter, imageSize);
    if (!reason && parameter.hasOptionList && parameter.currentOption() == nullptr) {
        return fmt::format("its value {} is none of its options {}", parameter.value,
                           text::toUtf8(acceptedValues(parameter)));
    }
    return reason;
}

// The library's error text, and every parameter that may be its cause.
[[noreturn]] void failRegisters(const std::string& file, const std::string& text,
                                const ConfiguredImage& configuration)
{
    std::vector<std::string> causes;
    std::set<std::size_t> seen;
    for (const ParameterPlace& place : configuration.places) {
        const auto& parameter = configuration.device.parameters[place.parameter];
        const auto reason = obstacle(parameter, configuration.image.size());
        if (reason && seen.insert(place.parameter).second) {
            causes.push_back(text::toUtf8(described(parameter)) + ": " + *reason);
        }
    }
    const std::string all =
        causes.empty() ? "" : "; " + text::beginningOfList(causes, mostNamed, "; ", "; ");
    throw Failure(Origin::Input, file, text + all);
}

// Throws `std::runtime_error` with the parser's text.
std::vector<char> registerBytes(const TranslatedModule& module, const std::vector<char>& image)
{
    std::vector<char> registers;
    const auto calculate = [&](TranslatedModule::Device& device) {
        withParser(nullptr, [&](TranslatedModule::Parser& parser) {
            registers = *parser.getCalculatedRawConfig(devices::parser::FieldbusType::Modbus,
                                                       module.bytes(), &device, nullptr);
        });
    };
    if (image == *module.device().privateProps.defaultParameterBlock) {
        calculate(module.device());
    } else {
        TranslatedModule::Device changed = module.deviceWith(image);
        calculate(changed);
    }
    return registers;
}

// The bytes in which two images of `device` differ in bits of no parameter.
std::vector<std::size_t> strayBytesOf(const std::vector<char>& image,
                                      const std::vector<char>& other, const DeviceReport& device)
{
    const auto held = bitsOfParameters(device, image.size());
    std::vector<std::size_t> bytes;
    for (std::size_t i = 0; i < image.size(); ++i) {
        const auto differing = static_cast<std::uint8_t>(image[i] ^ other[i]);
        if ((differing & ~held[i]) != 0) {
            bytes.push_back(i);
        }
    }
    return bytes;
}

void noteStrayBits(const ConfiguredImage& configuration, const std::string& place,
                   std::vector<Finding>& notes)
{
    const std::vector<char>& image = configuration.image;
    const std::vector<char>& standard = configuration.defaults->parameterBlock;
    std::vector<std::string> named;
    for (const std::size_t i : strayBytesOf(image, standard, configuration.device)) {
        named.push_back(fmt::format("byte {} is {:#04x} (default {:#04x})", i,
                                    static_cast<unsigned char>(image[i]),
                                    static_cast<unsigned char>(standard[i])));
    }
    if (!named.empty()) {
        notes.push_back({Severity::Note, place,
                         "The image differs from the default in bits of no parameter: " +
                             text::beginningOfList(named, mostNamed, ", ", " ")});
    }
}

void noteAbsentParameters(const ConfiguredImage& configuration, std::vector<bool> isPlaced,
                          const std::string& place, std::vector<Finding>& notes)
{
    for (const ParameterPlace& placed : configuration.places) {
        isPlaced[placed.parameter] = true;
    }
    for (std::size_t i = 0; i < isPlaced.size(); ++i) {
        if (!isPlaced[i]) {
            notes.push_back({Severity::Note, place,
                             text::toUtf8(described(configuration.device.parameters[i])) +
                                 " is in no Modbus register"});
        }
    }
}

void noteUnreadable(const ConfiguredImage& configuration, const std::string& place,
                    std::vector<Finding>& notes)
{
    for (const auto& parameter : configuration.device.parameters) {
        if (const auto reason = whyNotHeld(parameter, configuration.image.size())) {
            notes.push_back({Severity::Note, place,
                             text::toUtf8(described(parameter)) + " has no value: " + *reason});
        }
    }
}

bool deviates(const ImageComparison& comparison, const ParameterPlace& place)
{
    const ConfiguredImage& wanted = comparison.wanted;
    const ConfiguredImage& read = comparison.read;
    if (wanted.fieldbus == Fieldbus::Raw) {
        return wanted.device.parameters[place.parameter].raw !=
               read.device.parameters[place.parameter].raw;
    }
    const char* const registers = wanted.bytes.data() + place.begin;
    return !std::equal(registers, registers + place.size, read.bytes.data() + place.begin);
}

} // namespace

bool ConfiguredImage::isChanged(std::size_t position) const
{
    return device.parameters.at(position).raw != defaults->parameters.at(position).raw;
}

ConfiguredImage configurationOf(const TranslatedModule& module, const std::vector<char>& image,
                                Fieldbus fieldbus)
{
    ConfiguredImage made{&module.report(), module.reportWith(image), fieldbus, image, image, {},
                         module.name()};
    if (fieldbus == Fieldbus::Modbus) {
        made.places = placesInRegisters(made.device);
        try {
            made.bytes = registerBytes(module, image);
        } catch (const std::runtime_error& failure) {
            failRegisters(module.name(), failure.what(), made);
        }
    } else {
        made.places = placesInImage(made.device);
    }
    return made;
}

std::vector<std::uint16_t> registersOf(const TranslatedModule& module,
                                       const std::vector<char>& image)
{
    try {
        return registersOfBytes(registerBytes(module, image));
    } catch (const std::runtime_error&) {
        return registersOfBytes(configurationOf(module, image, Fieldbus::Modbus).bytes); // says why
    }
}

std::vector<Finding> notesOf(const ConfiguredImage& configuration, const std::string& place)
{
    std::vector<Finding> notes;
    noteStrayBits(configuration, place, notes);
    noteUnreadable(configuration, place, notes);
    if (configuration.fieldbus == Fieldbus::Modbus) {
        noteAbsentParameters(
            configuration, std::vector<bool>(configuration.device.parameters.size()), place, notes);
    }
    return notes;
}

ImageComparison compared(ConfiguredImage wanted, ConfiguredImage read)
{
    ImageComparison comparison{std::move(wanted), std::move(read), {}, {}};
    const auto& places = comparison.wanted.places;
    std::copy_if(places.begin(), places.end(), std::back_inserter(comparison.deviations),
                 [&](const ParameterPlace& place) { return deviates(comparison, place); });
    if (comparison.wanted.fieldbus == Fieldbus::Raw) {
        comparison.strayBytes =
            strayBytesOf(comparison.wanted.bytes, comparison.read.bytes, comparison.wanted.device);
    }
    return comparison;
}

std::vector<Finding> notesOf(const ImageComparison& comparison, const std::string& place)
{
    std::vector<std::string> named;
    for (const std::size_t byte : comparison.strayBytes) {
        named.push_back(fmt::format("byte {} is {:#04x}, wanted {:#04x}", byte,
                                    static_cast<unsigned char>(comparison.read.bytes[byte]),
                                    static_cast<unsigned char>(comparison.wanted.bytes[byte])));
    }
    if (named.empty()) {
        return {};
    }
    return {
        {Severity::Warning, place,
         "Bits of no parameter differ: " + text::beginningOfList(named, mostNamed, "; ", "; ")}};
}

} // namespace mxmodule
