#include "config/Configuration.h"

#include "ParameterText.h"

#include <text/Utf8.h>

#include <fmt/format.h>

#include <algorithm>
#include <set>

namespace mxtool {

namespace {

using devices::parser::FieldbusType;

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
                                const Configuration& configuration)
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
        causes.empty() ? "" : "; " + beginningOfList(causes, mostNamed, "; ", "; ");
    throw Failure(ExitCode::Input, file, text + all);
}

std::vector<char> bytesFor(TranslatedModule& module, TranslatedModule::Device& device,
                           const Configuration& configuration)
{
    try {
        return *module.parser().getCalculatedRawConfig(configuration.fieldbus, module.bytes(),
                                                       &device, nullptr);
    } catch (const std::runtime_error& failure) {
        failRegisters(module.name(), failure.what(), configuration);
    }
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

void noteStrayBits(const Configuration& configuration, const std::string& place,
                   std::vector<Diagnostic>& notes)
{
    const std::vector<char>& image = configuration.image;
    const std::vector<char>& standard = configuration.defaults.parameterBlock;
    std::vector<std::string> named;
    for (const std::size_t i : strayBytesOf(image, standard, configuration.device)) {
        named.push_back(fmt::format("byte {} is {:#04x} (default {:#04x})", i,
                                    static_cast<unsigned char>(image[i]),
                                    static_cast<unsigned char>(standard[i])));
    }
    if (!named.empty()) {
        notes.push_back({"note", place,
                         "The image differs from the default in bits of no parameter: " +
                             beginningOfList(named, mostNamed, ", ", " ")});
    }
}

void noteAbsentParameters(const Configuration& configuration, std::vector<bool> isPlaced,
                          const std::string& place, std::vector<Diagnostic>& notes)
{
    for (const ParameterPlace& placed : configuration.places) {
        isPlaced[placed.parameter] = true;
    }
    for (std::size_t i = 0; i < isPlaced.size(); ++i) {
        if (!isPlaced[i]) {
            notes.push_back({"note", place,
                             text::toUtf8(described(configuration.device.parameters[i])) +
                                 " is in no Modbus register"});
        }
    }
}

void noteUnreadable(const Configuration& configuration, const std::string& place,
                    std::vector<Diagnostic>& notes)
{
    for (const auto& parameter : configuration.device.parameters) {
        if (const auto reason = whyNotHeld(parameter, configuration.image.size())) {
            notes.push_back(
                {"note", place, text::toUtf8(described(parameter)) + " has no value: " + *reason});
        }
    }
}

bool deviates(const ImageComparison& comparison, const ParameterPlace& place)
{
    const Configuration& wanted = comparison.wanted;
    const Configuration& read = comparison.read;
    if (wanted.fieldbus == FieldbusType::Raw) {
        return wanted.device.parameters[place.parameter].raw !=
               read.device.parameters[place.parameter].raw;
    }
    const char* const registers = wanted.bytes.data() + place.begin;
    return !std::equal(registers, registers + place.size, read.bytes.data() + place.begin);
}

} // namespace

bool Configuration::isChanged(std::size_t position) const
{
    return device.parameters[position].raw != defaults.parameters[position].raw;
}

Configuration configurationOf(TranslatedModule& module, const std::vector<char>& image,
                              FieldbusType fieldbus)
{
    Configuration configuration{module.report(), {}, fieldbus, image, {}, {}};
    const auto device = module.withParameterBlock(image);
    configuration.device = module.report(*device);
    configuration.places = fieldbus == FieldbusType::Modbus
                               ? placesInRegisters(configuration.device)
                               : placesInImage(configuration.device);
    configuration.bytes = bytesFor(module, *device, configuration);
    return configuration;
}

std::vector<Diagnostic> notesOf(const Configuration& configuration, const std::string& place)
{
    std::vector<Diagnostic> notes;
    noteStrayBits(configuration, place, notes);
    noteUnreadable(configuration, place, notes);
    if (configuration.fieldbus == FieldbusType::Modbus) {
        noteAbsentParameters(
            configuration, std::vector<bool>(configuration.device.parameters.size()), place, notes);
    }
    return notes;
}

ImageComparison compared(Configuration wanted, Configuration read)
{
    ImageComparison comparison{std::move(wanted), std::move(read), {}, {}};
    const auto& places = comparison.wanted.places;
    std::copy_if(places.begin(), places.end(), std::back_inserter(comparison.deviations),
                 [&](const ParameterPlace& place) { return deviates(comparison, place); });
    if (comparison.wanted.fieldbus == FieldbusType::Raw) {
        comparison.strayBytes =
            strayBytesOf(comparison.wanted.bytes, comparison.read.bytes, comparison.wanted.device);
    }
    return comparison;
}

std::vector<Diagnostic> notesOf(const ImageComparison& comparison, const std::string& place)
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
    return {{"warning", place,
             "Bits of no parameter differ: " + beginningOfList(named, mostNamed, "; ", "; ")}};
}

} // namespace mxtool
