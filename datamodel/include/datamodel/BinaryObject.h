#pragma once

#include "datamodel/Attribute.h"

#include <string>

namespace datamodel {

/// Opaque content in a textual encoding, such as the product image.
class DATAMODEL_API BinaryObject : public Attribute
{
public:
    int typeCode() const override { return binaryObjectTypeCode; }

    std::string binaryObjectTag = "BinaryObject"; ///< Class tag.
    std::string name;                             ///< For example "productImage".
    std::string mimeType;                         ///< For example "image/svgz".
    std::string encoding;                         ///< For example "base64".
    std::string data;                             ///< The encoded content, on one line.
};

} // namespace datamodel
