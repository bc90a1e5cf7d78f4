#pragma once

namespace datamodel {

/// The type codes that data-model objects report through `typeCode`.
///
/// Hosts compare against these numbers and store them; they are not contiguous and never change.
enum TypeCode : int
{
    attributeTypeCode = 5,            ///< Of an `Attribute`.
    baseObjectTypeCode = 6,           ///< Of a `BaseObject`.
    binaryObjectTypeCode = 7,         ///< Of a `BinaryObject`.
    catalogDeviceInfoTypeCode = 8,    ///< Of a `CatalogDeviceInfo`.
    channelTypeCode = 9,              ///< Of a `Channel`, `Channel_p` included.
    deviceTypeCode = 10,              ///< Of a `Device`, `Device_p` and `ParamDevice` included.
    parameterOptionTypeCode = 23,     ///< Of a `ParameterOption`.
    parameterValueRangeTypeCode = 24, ///< Of a `ParameterValueRange`.
    parameterTypeCode = 25,           ///< Of a `Parameter`, `Parameter_p` included.
    roleTypeCode = 27,                ///< Of a `Role`.
    setTypeCode = 28,                 ///< Of a `Set`.
    staticPropertyTypeCode = 29       ///< Of a `StaticProperty`.
};

} // namespace datamodel
