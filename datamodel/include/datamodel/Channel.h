#pragma once

#include "datamodel/Attribute.h"

#include <string>

namespace datamodel {

/// One process-data channel of a module.
class DATAMODEL_API Channel : public Attribute
{
public:
    int typeCode() const override { return channelTypeCode; }

    std::string channelTag = "Channel"; ///< Class tag.
    std::string name;        ///< Display text, never empty once the channel is in a device.
    std::string dataType;    ///< IEC size letter "X", "B", "W", "D" or "L"; empty: no process data.
    std::string direction;   ///< "in" or "out", seen from the controller.
    std::string numberText1; ///< "0.0".
    std::string numberText2; ///< "0.0".
    std::string extraText;   ///< Empty.
    std::string iecSymbol;   ///< Address in the process image, such as IX3_2 or QW4; may be empty.
};

} // namespace datamodel
