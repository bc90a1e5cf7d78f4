#pragma once

namespace datamodel {

/// The type codes that data-model objects report through `typeCode`.
///
/// Hosts compare against these numbers and store them; they are not contiguous and never change.
enum TypeCode : int
{
    attributeTypeCode = 5,
    baseObjectTypeCode = 6,
    binaryObjectTypeCode = 7,
    catalogDeviceInfoTypeCode = 8,
    channelTypeCode = 9,
    deviceTypeCode = 10,
    parameterOptionTypeCode = 23,
    parameterValueRangeTypeCode = 24,
    parameterTypeCode = 25,
    roleTypeCode = 27,
    setTypeCode = 28,
    staticPropertyTypeCode = 29
};

} // namespace datamodel
