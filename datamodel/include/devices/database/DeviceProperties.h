#pragma once

#include "datamodel/DatamodelApi.h"

#include <Poco/SharedPtr.h>

#include <cstdint>
#include <string>
#include <vector>

/// Records of module types, and the database that keeps them.
namespace devices::database {

/// The device database record of one module type.
///
/// The byte vectors are shared: a copy of the record refers to the same bytes.
class DATAMODEL_API DeviceProperties
{
public:
    /// Bytes with shared ownership; the count of owners may change in any thread.
    using Bytes = Poco::SharedPtr<std::vector<char>>;

    /// Leaves the texts empty and creates the three byte vectors empty. The two sizes are set by
    /// the translation; until then they are 0.
    DeviceProperties()
        : hostBytes(new std::vector<char>),
          mxFileData(new std::vector<char>),
          defaultParameterBlock(new std::vector<char>)
    {}

    std::string family;          ///< "kv38".
    std::string moduleIdText;    ///< Module identifier as eight lower-case hexadecimal digits.
    std::string brandLabelName;  ///< Label text of the module, bytes as in the mx file.
    std::string text4;           ///< One byte 0x00.
    std::uint32_t inDataSize{};  ///< Input process data, in bytes.
    std::uint32_t outDataSize{}; ///< Output process data, in bytes.
    Bytes hostBytes;             ///< At the host's disposal; created empty.
    std::string text5;           ///< One byte 0x00.
    Bytes mxFileData;            ///< The mx file as it was loaded, followed by one byte 0xFF.
    Bytes defaultParameterBlock; ///< The module's parameter bytes, at most 255.
};

} // namespace devices::database
