#pragma once

#include "datamodel/CatalogDeviceInfo.h"

#include <memory>
#include <string>
#include <vector>

namespace datamodel {

/// A module: one flat list of everything that describes it.
class DATAMODEL_API Device : public CatalogDeviceInfo
{
public:
    int typeCode() const override { return deviceTypeCode; }

    std::string deviceTag = "Device"; ///< Class tag.
    /// Every channel, parameter, static property, set, role and binary object, in the order in
    /// which they were given their ids. The device shares ownership; sets refer to members by id
    /// only.
    std::vector<std::shared_ptr<Attribute>> attributes;
};

} // namespace datamodel
