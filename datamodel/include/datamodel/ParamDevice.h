#pragma once

#include "datamodel/Device.h"

namespace datamodel {

/// The user's parameterised copy of a device.
///
/// A parser reads `deviceTypeId` and `attributes` only; each attribute is a `Parameter` whose `id`
/// names a parameter of the original device and whose `value` is the user's.
class DATAMODEL_API ParamDevice : public Device
{};

} // namespace datamodel
