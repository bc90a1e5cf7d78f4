#include "configuration/Composition.h"

#include "ImageWriter.h"
#include "InvalidInput.h"
#include "ParameterText.h"
#include "ProcessParser.h"
#include "configuration/ParameterNames.h"
#include "configuration/ParameterPlace.h"

#include <text/Utf8.h>

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <unordered_map>

namespace mxmodule {

namespace {

using DeviceParameter = DeviceReport::Parameter;
using Raw = std::optional<mxformat::WholeNumber>;

// A value that was accepted.
struct Setting
{
    const Assignment* assignment;
    std::size_t parameter; // position in the report
    std::string text;      // as set through the library
    Raw alone;             // the parameter's number after setting it alone
};

constexpr std::size_t mostErrors = 50; // each searches for the nearest names

std::string placeOf(const Assignment& assignment)
{
    return assignment.place.empty() ? assignment.name : assignment.place;
}

class Composer
{
public:
    Composer(const TranslatedModule& usedModule, const DeviceReport& baseDevice,
             const ImageWriter& imageWriter)
        : module(usedModule), before(baseDevice), writer(imageWriter)
    {}

    void take(const Assignment& assignment, ValueCheck check)
    {
        if (errors == mostErrors) {
            ++unchecked;
            return;
        }
        try {
            add(assignment, check);
        } catch (const InvalidInput& invalid) {
            reject(assignment, invalid);
        }
    }

    // The result; `images` reads the values in the composed image.
    Composition result(const ImageReader& images)
    {
        if (unchecked != 0) {
            note(Severity::Note, module.name(),
                 fmt::format("{} more values were not checked", unchecked));
        }
        if (errors == 0) {
            writeAll(images);
        }
        if (errors != 0) {
            composition.image.clear();
        }
        return std::move(composition);
    }

private:
    void reject(const Assignment& assignment, const InvalidInput& invalid)
    {
        composition.findings.push_back(findingOf(invalid, placeOf(assignment), assignment.origin));
        ++errors;
    }

    void note(Severity severity, const std::string& place, const std::string& text)
    {
        composition.findings.push_back({severity, place, text});
    }

    void add(const Assignment& assignment, ValueCheck check)
    {
        const DeviceParameter& named = parameterCalled(assignment.name, module.names());
        const auto position =
            static_cast<std::size_t>(&named - module.names().device().parameters.data());
        const DeviceParameter& parameter = before.parameters[position];
        const auto earlier = settingOf.find(position);
        if (earlier != settingOf.end()) {
            throw InvalidInput(fmt::format("{} is set twice, first by {}",
                                           text::toUtf8(described(parameter)),
                                           placeOf(*settings[earlier->second].assignment)));
        }
        Setting setting{
            &assignment, position, acceptedValue(parameter, assignment.value, check), {}};
        setting.alone = setAlone(setting);
        if (check == ValueCheck::NumberOnly) {
            warnOfForced(assignment, parameter);
        }
        settingOf[position] = settings.size();
        settings.push_back(std::move(setting));
        noteRounding(settings.back());
    }

    void warnOfForced(const Assignment& assignment, const DeviceParameter& parameter)
    {
        try {
            acceptedValue(parameter, assignment.value, ValueCheck::Full);
        } catch (const InvalidInput&) {
            const std::string unit =
                parameter.hasOptionList || parameter.unit.empty() ? "" : " " + parameter.unit;
            note(Severity::Warning, placeOf(assignment),
                 fmt::format("{} is forced to \"{}\", accepted otherwise: {}",
                             text::toUtf8(described(parameter)), assignment.value,
                             text::toUtf8(acceptedValues(parameter) + unit)));
        }
    }

    // The present value changes nothing, and may be a text that is no number.
    bool isPresent(const Setting& setting) const
    {
        const DeviceParameter& parameter = before.parameters[setting.parameter];
        return setting.text == parameter.value && parameter.raw;
    }

    Raw setAlone(const Setting& setting) const
    {
        const DeviceParameter& parameter = before.parameters[setting.parameter];
        if (isPresent(setting)) {
            return parameter.raw;
        }
        try {
            return writer.alone(parameter, setting.parameter, setting.text);
        } catch (const std::runtime_error& failure) {
            throw InvalidInput(text::toUtf8(described(parameter)) + ": " + failure.what());
        }
    }

    void noteRounding(const Setting& setting)
    {
        const DeviceParameter& parameter = before.parameters[setting.parameter];
        const auto wanted = mxformat::Decimal::ofText(setting.text);
        if (parameter.converted && setting.alone && wanted && setting.text != parameter.value &&
            !parameter.scale.states(*wanted, *setting.alone)) {
            note(Severity::Note, placeOf(*setting.assignment),
                 fmt::format("{} is set to {}, the nearest value that the module can hold",
                             text::toUtf8(described(parameter)),
                             parameter.scale.text(*setting.alone)));
        }
    }

    // A companion library of the host may reject values only together.
    void writeAll(const ImageReader& images)
    {
        try {
            composition.image = composedImage();
        } catch (const std::runtime_error& failure) {
            note(Severity::Error, module.name(), failure.what());
            ++errors;
            return;
        }
        compareWith(composition.image, images);
    }

    std::vector<char> composedImage() const
    {
        std::vector<SetParameter> values;
        values.reserve(settings.size());
        for (const Setting& setting : settings) {
            if (!isPresent(setting)) {
                values.emplace_back(setting.parameter, setting.text);
            }
        }
        return writer.imageWith(values);
    }

    // Parameters may share bits: report every side effect.
    void compareWith(const std::vector<char>& image, const ImageReader& images)
    {
        for (std::size_t i = 0; i < before.parameters.size(); ++i) {
            const auto found = settingOf.find(i);
            const DeviceParameter& parameter = before.parameters[i];
            const Raw& expected =
                found == settingOf.end() ? parameter.raw : settings[found->second].alone;
            if (rawIn(image, parameter) == expected) {
                continue;
            }
            DeviceParameter after = parameter;
            images.show(image, i, after);
            if (found != settingOf.end()) {
                reject(*settings[found->second].assignment, overwritten(after));
            } else {
                note(Severity::Warning, module.name(),
                     fmt::format("{} changes from {} to {}: it shares bits of the image with a "
                                 "parameter that is set",
                                 text::toUtf8(described(after)), valueDigits(parameter),
                                 valueDigits(after)));
            }
        }
    }

    static InvalidInput overwritten(const DeviceParameter& parameter)
    {
        return InvalidInput(
            fmt::format("{}: another value of this call overwrites it with \"{}\": they share bits "
                        "of the image",
                        text::toUtf8(described(parameter)), valueDigits(parameter)));
    }

    const TranslatedModule& module;
    const DeviceReport& before; // the module with the image that is written into
    const ImageWriter& writer;
    std::vector<Setting> settings;
    std::unordered_map<std::size_t, std::size_t> settingOf; // by the parameter's position
    Composition composition;
    std::size_t errors = 0;
    std::size_t unchecked = 0;
};

} // namespace

Composition compose(const TranslatedModule& module, const std::vector<char>& base,
                    const std::vector<Assignment>& assignments, ValueCheck check)
{
    std::optional<DeviceReport> changed;
    if (base != module.report().parameterBlock) {
        changed = module.reportWith(base);
    }
    Composition composition;
    withParser(nullptr, [&](TranslatedModule::Parser& parser) {
        const ImageReader reader(parser, module);
        const ImageWriter writer(parser, module, base);
        Composer composer(module, changed ? *changed : module.report(), writer);
        for (const Assignment& assignment : assignments) {
            composer.take(assignment, check);
        }
        composition = composer.result(reader);
    });
    return composition;
}

} // namespace mxmodule
