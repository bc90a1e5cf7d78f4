#pragma once

#include <datamodel/DataModel.h>

#include <string>
#include <utility>
#include <vector>

/// The attributes of `device` with the type code `code`, as the class that it stands for.
template <class Class>
std::vector<const Class*> attributesOf(const datamodel::Device& device, int code)
{
    std::vector<const Class*> found;
    for (const auto& attribute : device.attributes) {
        if (attribute->typeCode() == code) {
            found.push_back(static_cast<const Class*>(attribute.get()));
        }
    }
    return found;
}

using NamesAndValues = std::vector<std::pair<std::string, std::string>>;

/// The static properties of `device`, in its order.
inline NamesAndValues propertiesOf(const datamodel::Device& device)
{
    NamesAndValues properties;
    for (const auto* property : attributesOf<datamodel::StaticProperty>(device, 29)) {
        properties.emplace_back(property->name, property->value);
    }
    return properties;
}

/// The value of the static property `name` of `device`, or "(none)".
inline std::string propertyOf(const datamodel::Device& device, const std::string& name)
{
    for (const auto& [key, value] : propertiesOf(device)) {
        if (key == name) {
            return value;
        }
    }
    return "(none)";
}
