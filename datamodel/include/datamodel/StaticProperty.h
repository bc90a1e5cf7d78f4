#pragma once

#include "datamodel/Attribute.h"

#include <string>

namespace datamodel {

/// A fixed property of a module type, such as "moduleId" or "inDataSize".
class DATAMODEL_API StaticProperty : public Attribute
{
public:
    int typeCode() const override { return staticPropertyTypeCode; }

    std::string staticPropertyTag = "StaticProperty"; ///< Class tag.
    std::string name;                                 ///< Key.
    std::string value;                                ///< Value as text.
};

} // namespace datamodel
