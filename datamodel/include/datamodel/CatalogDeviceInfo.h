#pragma once

#include "datamodel/Attribute.h"

#include <string>

namespace datamodel {

/// What a catalogue says about a device type.
class DATAMODEL_API CatalogDeviceInfo : public Attribute
{
public:
    int typeCode() const override { return catalogDeviceInfoTypeCode; }

    std::string catalogDeviceInfoTag = "CatalogDeviceInfo"; ///< Class tag.
    std::string brandLabelName;                             ///< The label text of the module.
    std::string deviceTypeId; ///< "kv38." and the module identifier as eight hexadecimal digits.
};

} // namespace datamodel
