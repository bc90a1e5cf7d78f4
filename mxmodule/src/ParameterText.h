#pragma once

#include "DeviceReport.h"

#include <string>

namespace mxmodule {

// The text of a parameter and its values in the output of the verbs. Texts are the bytes of the mx
// file.

/// Returns the owner of `parameter`: "module", or the channel's number and name.
std::string ownerOf(const DeviceReport::Parameter& parameter);

// Physical values have the fewest digits that convert back to the raw value and are as exact as the
// factor: "9.9". The library's texts have six decimals of a binary32: "9.900001".

/// Returns the value of `parameter` as a number; empty if it lies outside the image.
std::string valueDigits(const DeviceReport::Parameter& parameter);

/// Returns the lower bound of its range.
std::string minimumDigits(const DeviceReport::Parameter& parameter);

/// Returns the upper bound of its range.
std::string maximumDigits(const DeviceReport::Parameter& parameter);

/// Returns the text of the selected option, or the number.
std::string valueText(const DeviceReport::Parameter& parameter);

/// Whether the value is in the option list or in the range.
bool isInRange(const DeviceReport::Parameter& parameter);

/// Returns `valueText` with the unit after a number, marked where it lies outside the range.
std::string valueWithUnit(const DeviceReport::Parameter& parameter);

/// Returns the accepted values: the options, the current one in brackets, or the range.
std::string acceptedValues(const DeviceReport::Parameter& parameter);

/// Returns `parameter` for messages: its name, owner, identifier and place in the image.
std::string described(const DeviceReport::Parameter& parameter);

} // namespace mxmodule
