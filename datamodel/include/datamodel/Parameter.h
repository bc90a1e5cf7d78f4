#pragma once

#include "datamodel/Attribute.h"
#include "datamodel/ParameterOption.h"
#include "datamodel/ParameterValueRange.h"

#include <memory>
#include <string>
#include <vector>

namespace datamodel {

/// One configurable parameter of a module or of a channel.
class DATAMODEL_API Parameter : public Attribute
{
public:
    int typeCode() const override { return parameterTypeCode; }

    std::string parameterTag = "Parameter"; ///< Class tag.
    std::string name;                       ///< Display text.
    std::string value;          ///< Current value as decimal text, physical where it is converted.
    std::string unit;           ///< Unit text; may be empty.
    bool flagBit0 = false;      ///< Bit 0 of the record's flag byte.
    bool flagBit1 = false;      ///< Bit 1 of the record's flag byte.
    bool hasOptionList = false; ///< The value is chosen from `options`.
    /// The choices, in the order of the option list.
    std::vector<std::shared_ptr<ParameterOption>> options;
    /// Bounds of `value`; never null in a new parameter.
    std::shared_ptr<ParameterValueRange> valueRange = std::make_shared<ParameterValueRange>();
};

} // namespace datamodel
