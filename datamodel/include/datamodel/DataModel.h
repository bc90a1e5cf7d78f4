#pragma once

/// Includes every class of the data model, and the functions for their texts.

#include "datamodel/Attribute.h"
#include "datamodel/BaseObject.h"
#include "datamodel/BinaryObject.h"
#include "datamodel/CatalogDeviceInfo.h"
#include "datamodel/Channel.h"
#include "datamodel/Device.h"
#include "datamodel/ParamDevice.h"
#include "datamodel/Parameter.h"
#include "datamodel/ParameterOption.h"
#include "datamodel/ParameterValueRange.h"
#include "datamodel/PrivateProps.h"
#include "datamodel/Role.h"
#include "datamodel/Set.h"
#include "datamodel/StaticProperty.h"
#include "datamodel/TypeCode.h"
#include "datamodel/Utf8Text.h"
