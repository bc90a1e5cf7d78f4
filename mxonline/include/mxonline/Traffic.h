#pragma once

#include "mxonline/MxonlineApi.h"

#include <cstddef>
#include <string>

namespace mxonline {

/// What went over the bus.
struct Traffic
{
    std::size_t requests = 0; ///< Requests that were answered, also by an exception, each once.
    std::size_t registersRead = 0;    ///< Registers in the answers, gaps included.
    std::size_t registersWritten = 0; ///< Registers written.
    std::size_t repetitions = 0;      ///< Requests sent again after a fault or a busy coupler.
};

/// Returns `traffic` for people: "3 requests, 40 registers read, 2 registers written, 0
/// repetitions".
MXONLINE_API std::string trafficText(const Traffic& traffic);

/// Returns `traffic` as JSON, schema "mxonline.traffic" version 1.
MXONLINE_API std::string trafficJson(const Traffic& traffic);

} // namespace mxonline
