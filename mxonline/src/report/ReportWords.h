#pragma once

#include <mxonline/ApplyReport.h>

#include <string>
#include <vector>

// Texts that the forms of a report share.

namespace mxonline {

/// Returns what is known of a parameter: "written and read back".
std::string resultText(const AppliedParameter& parameter);

/// Returns whether the commit is confirmed, or that there is none.
std::string commitText(const ApplyReport& report);

/// Returns what limits the meaning of the report, such as modules that are not identified.
std::vector<std::string> notesOf(const ApplyReport& report);

/// Returns the registers of a parameter: "1000 (0x03e8)".
std::string addressesOf(const AppliedParameter& parameter);

/// Returns the value before; that of the station if it was as planned.
std::string beforeText(const AppliedParameter& parameter);

/// Returns the value read back, or "not known".
std::string nowText(const AppliedParameter& parameter);

} // namespace mxonline
