#pragma once

#include "MxBuffer.h"
#include "ParserAccess.h"

#include <devices/parser/mx/LoadFile.h>

#include <stdexcept>
#include <string>

/// A module with the parser that translated it and the buffer that its records point into.
struct ConfiguredModule
{
    explicit ConfiguredModule(std::vector<char> bytes)
        : mxData(std::move(bytes)), device(parser.parse(mxData, nullptr, 0, 0))
    {
        user.deviceTypeId = device->deviceTypeId;
    }

    /// The parameter called `name`; the n-th of that name, counted from 0.
    testkit::ParserAccess::ParameterP& parameter(const std::string& name, unsigned nth = 0) const
    {
        for (const auto& attribute : device->attributes) {
            if (attribute->typeCode() != datamodel::parameterTypeCode) {
                continue;
            }
            auto& found = static_cast<testkit::ParserAccess::ParameterP&>(*attribute);
            if (found.name == name && nth-- == 0) {
                return found;
            }
        }
        throw std::invalid_argument("no such parameter: " + name);
    }

    /// Writes a user's value into the parameterised copy.
    void set(const std::string& name, const std::string& value, unsigned nth = 0)
    {
        auto changed = std::make_shared<datamodel::Parameter>();
        changed->id = parameter(name, nth).id;
        changed->value = value;
        user.attributes.push_back(changed);
    }

    /// The configuration for `fieldbus` with what was set; with `untouched` without a copy.
    testkit::Bytes configuration(devices::parser::FieldbusType fieldbus, bool untouched = false)
    {
        const auto bytes = parser.getCalculatedRawConfig(fieldbus, mxData, device.get(),
                                                         untouched ? nullptr : &user);
        return {bytes->begin(), bytes->end()};
    }

    testkit::ParserAccess parser;
    std::vector<char> mxData;
    std::shared_ptr<testkit::ParserAccess::DeviceP> device;
    datamodel::ParamDevice user;
};

/// Loads one of the example modules.
inline ConfiguredModule exampleModule(const std::string& file)
{
    std::vector<char> bytes;
    devices::parser::mx::loadFile(std::string(EXAMPLE_MODULES) + "/" + file, bytes);
    return ConfiguredModule(std::move(bytes));
}
