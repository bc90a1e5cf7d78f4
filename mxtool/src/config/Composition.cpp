#include "config/Composition.h"

#include "InvalidInput.h"
#include "ParameterText.h"
#include "config/ParameterNames.h"
#include "config/ParameterPlace.h"

#include <text/Utf8.h>

#include <fmt/format.h>

#include <algorithm>
#include <map>

namespace mxtool {

namespace {

using Parameter = DeviceReport::Parameter;

// A value that was accepted.
struct Setting
{
    const Assignment* assignment;
    std::size_t parameter; // position in the report
    std::string text;      // as set through the library
    Parameter alone;       // the parameter after setting it alone
};

constexpr std::size_t mostErrors = 50; // each searches for the nearest names

class Composer
{
public:
    Composer(TranslatedModule& usedModule, TranslatedModule::Device& baseDevice)
        : module(usedModule), base(baseDevice), before(usedModule.report(baseDevice))
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
            reject(assignment, invalid.what(), invalid.hint);
        }
    }

    Composition result()
    {
        if (unchecked != 0) {
            warn("note", module.name(), fmt::format("{} more values were not checked", unchecked));
        }
        if (composition.code == ExitCode::Done) {
            composition.image = imageWith(settings);
            compareWith(reportOf(composition.image));
        }
        if (composition.code != ExitCode::Done) {
            composition.image.clear();
        }
        return std::move(composition);
    }

private:
    void reject(const Assignment& assignment, const std::string& text, const std::string& hint = {})
    {
        composition.findings.push_back({"error", assignment.place, text, hint});
        ++errors;
        if (composition.code == ExitCode::Done) {
            composition.code = assignment.code;
        }
    }

    void warn(const std::string& severity, const std::string& place, const std::string& text)
    {
        composition.findings.push_back({severity, place, text, ""});
    }

    void add(const Assignment& assignment, ValueCheck check)
    {
        const Parameter& parameter = parameterCalled(assignment.name, before);
        const auto position = static_cast<std::size_t>(&parameter - before.parameters.data());
        const auto earlier =
            std::find_if(settings.begin(), settings.end(), [position](const Setting& setting) {
                return setting.parameter == position;
            });
        if (earlier != settings.end()) {
            throw InvalidInput(fmt::format("{} is set twice, first by {}",
                                           text::toUtf8(described(parameter)),
                                           earlier->assignment->place));
        }
        Setting setting{
            &assignment, position, acceptedValue(parameter, assignment.value, check), {}};
        setting.alone = setAlone(setting);
        if (check == ValueCheck::NumberOnly) {
            warnOfForced(assignment, parameter);
        }
        settings.push_back(setting);
        noteRounding(settings.back());
    }

    void warnOfForced(const Assignment& assignment, const Parameter& parameter)
    {
        try {
            acceptedValue(parameter, assignment.value, ValueCheck::Full);
        } catch (const InvalidInput&) {
            const std::string unit =
                parameter.hasOptionList || parameter.unit.empty() ? "" : " " + parameter.unit;
            warn("warning", assignment.place,
                 fmt::format("{} is forced to \"{}\", accepted otherwise: {}",
                             text::toUtf8(described(parameter)), assignment.value,
                             text::toUtf8(acceptedValues(parameter) + unit)));
        }
    }

    Parameter setAlone(const Setting& setting)
    {
        const Parameter& parameter = before.parameters[setting.parameter];
        if (setting.text == parameter.value && parameter.raw) {
            return parameter; // the present value changes nothing
        }
        try {
            return reportOf(imageWith({setting})).parameters[setting.parameter];
        } catch (const Failure&) {
            throw;
        } catch (const std::runtime_error& failure) {
            throw InvalidInput(text::toUtf8(described(parameter)) + ": " + failure.what());
        }
    }

    void noteRounding(const Setting& setting)
    {
        const Parameter& parameter = setting.alone;
        const auto wanted = mxformat::Decimal::ofText(setting.text);
        if (parameter.converted && parameter.raw && wanted && setting.text != parameter.value &&
            !parameter.scale.states(*wanted, *parameter.raw)) {
            warn("note", setting.assignment->place,
                 fmt::format("{} is set to {}, the nearest value that the module can hold",
                             text::toUtf8(described(parameter)), valueDigits(parameter)));
        }
    }

    std::vector<char> imageWith(const std::vector<Setting>& set)
    {
        datamodel::ParamDevice user;
        user.deviceTypeId = base.deviceTypeId;
        for (const Setting& setting : set) {
            auto parameter = std::make_shared<datamodel::Parameter>();
            parameter->id = before.parameters[setting.parameter].id;
            parameter->value = setting.text;
            user.attributes.push_back(parameter);
        }
        return *module.parser().getCalculatedRawConfig(devices::parser::FieldbusType::Raw,
                                                       module.bytes(), &base, &user);
    }

    DeviceReport reportOf(const std::vector<char>& image)
    {
        return module.report(*module.withParameterBlock(image));
    }

    // Parameters may share bits: report every side effect.
    void compareWith(const DeviceReport& after)
    {
        std::map<std::size_t, const Setting*> set;
        for (const Setting& setting : settings) {
            set[setting.parameter] = &setting;
        }
        for (std::size_t i = 0; i < after.parameters.size(); ++i) {
            const Parameter& parameter = after.parameters[i];
            const auto found = set.find(i);
            if (found != set.end() && parameter.raw != found->second->alone.raw) {
                reject(*found->second->assignment,
                       fmt::format("{}: another value of this call overwrites it with \"{}\": they "
                                   "share bits of the image",
                                   text::toUtf8(described(parameter)), valueDigits(parameter)));
            } else if (found == set.end() && parameter.raw != before.parameters[i].raw) {
                warn("warning", module.name(),
                     fmt::format("{} changes from {} to {}: it shares bits of the image with a "
                                 "parameter that is set",
                                 text::toUtf8(described(parameter)),
                                 valueDigits(before.parameters[i]), valueDigits(parameter)));
            }
        }
    }

    TranslatedModule& module;
    TranslatedModule::Device& base;
    DeviceReport before;
    std::vector<Setting> settings;
    Composition composition;
    std::size_t errors = 0;
    std::size_t unchecked = 0;
};

} // namespace

Composition compose(TranslatedModule& module, TranslatedModule::Device& base,
                    const std::vector<Assignment>& assignments, ValueCheck check)
{
    Composer composer(module, base);
    for (const Assignment& assignment : assignments) {
        composer.take(assignment, check);
    }
    return composer.result();
}

} // namespace mxtool
