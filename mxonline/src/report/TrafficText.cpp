#include "mxonline/Traffic.h"

#include <fmt/format.h>
#include <text/Counted.h>

namespace mxonline {

std::string trafficText(const Traffic& traffic)
{
    return fmt::format("{}, {} read, {} written, {}", text::counted(traffic.requests, "request"),
                       text::counted(traffic.registersRead, "register"),
                       text::counted(traffic.registersWritten, "register"),
                       text::counted(traffic.repetitions, "repetition"));
}

} // namespace mxonline
