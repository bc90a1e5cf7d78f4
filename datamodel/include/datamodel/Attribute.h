#pragma once

#include "datamodel/BaseObject.h"

#include <string>

namespace datamodel {

/// What a device lists: a channel, a parameter, a static property, a set, a role, a binary object.
class DATAMODEL_API Attribute : public BaseObject
{
public:
    int typeCode() const override { return attributeTypeCode; }

    std::string attributeTag = "Attribute"; ///< Class tag.
};

} // namespace datamodel
