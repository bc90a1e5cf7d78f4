#pragma once

#include "datamodel/DatamodelApi.h"
#include "datamodel/TypeCode.h"

#include <string>

/// What a module is made of: plain objects that a parser fills and a host reads.
namespace datamodel {

/// Root of everything that a device holds.
///
/// Every class of the data model stores its own unqualified name as the first member of its level
/// and reports its type code through `typeCode`. Members are public data: the parser fills them,
/// the host reads them. Texts are bytes, copied from the mx file without any conversion. Objects
/// have no locks: any number of threads may read one while none changes it.
class DATAMODEL_API BaseObject
{
public:
    virtual ~BaseObject() = default;

    /// Returns the type code of the class.
    virtual int typeCode() const { return baseObjectTypeCode; }

    std::string baseObjectTag = "BaseObject"; ///< Class tag.
    std::string id;      ///< Decimal text, unique within one device; empty until assigned.
    std::string auxText; ///< Empty; at the host's disposal.
};

} // namespace datamodel
