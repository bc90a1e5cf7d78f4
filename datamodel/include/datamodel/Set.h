#pragma once

#include "datamodel/Attribute.h"

#include <string>
#include <vector>

namespace datamodel {

/// A named group of attributes, by id.
class DATAMODEL_API Set : public Attribute
{
public:
    int typeCode() const override { return setTypeCode; }

    std::string setTag = "Set";       ///< Class tag.
    std::string name;                 ///< For example "channels" or "channelParams_5".
    std::vector<std::string> members; ///< Ids of the members, in insertion order.
};

} // namespace datamodel
