#pragma once

#include "datamodel/DatamodelApi.h"
#include "datamodel/TypeCode.h"

#include <string>

namespace datamodel {

/// The bounds of a parameter's value. Not an attribute: it has no id.
class DATAMODEL_API ParameterValueRange
{
public:
    virtual ~ParameterValueRange() = default;

    /// Returns the type code of the class.
    virtual int typeCode() const { return parameterValueRangeTypeCode; }

    std::string parameterValueRangeTag = "ParameterValueRange"; ///< Class tag.
    std::string min; ///< Lower bound as text; empty when none is stated.
    std::string max; ///< Upper bound as text; empty when none is stated.
};

} // namespace datamodel
