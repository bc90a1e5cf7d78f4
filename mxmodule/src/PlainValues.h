#pragma once

#include "DeviceReport.h"
#include "configuration/ParameterNames.h"
#include "configuration/ParameterPlace.h"

#include <mxmodule/Configuration.h>
#include <mxmodule/Values.h>

#include <vector>

// The content of reports as the plain values of the public headers, in UTF-8.

namespace mxmodule {

std::vector<Property> plainProperties(const DeviceReport& device);
Channel plainChannel(const DeviceReport::Channel& channel);
std::vector<Channel> plainChannels(const std::vector<DeviceReport::Channel>& channels);

/// `names` are those of the module; values do not change them.
std::vector<Parameter> plainParameters(const DeviceReport& device, const ParameterNames& names);

RawTexts rawTexts(const DeviceReport& device);
std::vector<Set> plainSets(const DeviceReport& device);
std::vector<BinaryObject> plainBinaryObjects(const DeviceReport& device);
std::vector<PlacedParameter> plainPlaces(const std::vector<ParameterPlace>& places);

} // namespace mxmodule
