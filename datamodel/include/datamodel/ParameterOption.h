#pragma once

#include "datamodel/DatamodelApi.h"
#include "datamodel/TypeCode.h"

#include <string>

namespace datamodel {

/// One choice of a parameter's option list. Not an attribute: it has no id.
class DATAMODEL_API ParameterOption
{
public:
    virtual ~ParameterOption() = default;

    /// Returns the type code of the class.
    virtual int typeCode() const { return parameterOptionTypeCode; }

    std::string parameterOptionTag = "ParameterOption"; ///< Class tag.
    std::string text;                                   ///< Display text.
    std::string value;                                  ///< Raw value as decimal text.
};

} // namespace datamodel
