#pragma once

#include "datamodel/Set.h"

#include <string>

namespace datamodel {

/// The set of sets that a consumer starts from.
class DATAMODEL_API Role : public Set
{
public:
    int typeCode() const override { return roleTypeCode; }

    std::string roleTag = "Role"; ///< Class tag.
};

} // namespace datamodel
