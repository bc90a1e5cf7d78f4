#include "config/Configuration.h"

#include "ParameterText.h"

#include <text/Utf8.h>

#include <fmt/format.h>

#include <set>

namespace mxtool {

namespace {

using devices::parser::FieldbusType;

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
    constexpr std::size_t mostNamed = 8;
    std::string all = text;
    std::set<std::size_t> seen;
    for (const ParameterPlace& place : configuration.places) {
        const auto& parameter = configuration.device.parameters[place.parameter];
        const auto reason = obstacle(parameter, configuration.image.size());
        if (reason && seen.insert(place.parameter).second && seen.size() <= mostNamed) {
            all += fmt::format("; {}: {}", text::toUtf8(described(parameter)), *reason);
        }
    }
    if (seen.size() > mostNamed) {
        all += fmt::format("; and {} more", seen.size() - mostNamed);
    }
    throw Failure(ExitCode::Input, file, all);
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

void noteStrayBits(const Configuration& configuration, const std::string& place,
                   std::vector<Diagnostic>& notes)
{
    constexpr std::size_t mostNamed = 8;
    const auto held = bitsOfParameters(configuration.device, configuration.image.size());
    std::string named;
    std::size_t count = 0;
    for (std::size_t i = 0; i < configuration.image.size(); ++i) {
        const auto found = static_cast<unsigned char>(configuration.image[i]);
        const auto standard = static_cast<unsigned char>(configuration.defaults.parameterBlock[i]);
        if (((found ^ standard) & ~held[i]) != 0 && ++count <= mostNamed) {
            named += fmt::format("{}byte {} is {:#04x} (default {:#04x})", count == 1 ? "" : ", ",
                                 i, found, standard);
        }
    }
    if (count > mostNamed) {
        named += fmt::format(" and {} more", count - mostNamed);
    }
    if (count > 0) {
        notes.push_back({"note", place,
                         "The image differs from the default in bits of no parameter: " + named});
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

} // namespace mxtool
