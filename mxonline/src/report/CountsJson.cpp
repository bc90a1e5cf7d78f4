#include <mxonline/Simulator.h>
#include <mxonline/Traffic.h>
#include <text/JsonText.h>

namespace mxonline {

std::string trafficJson(const Traffic& traffic)
{
    return text::jsonText({{"schema", text::jsonSchema("mxonline.traffic", 1)},
                           {"requests", traffic.requests},
                           {"registers_read", traffic.registersRead},
                           {"registers_written", traffic.registersWritten},
                           {"repetitions", traffic.repetitions}});
}

std::string countsJson(const SimulatorCounts& counts)
{
    return text::jsonText({{"schema", text::jsonSchema("mxonline.simulator-counts", 1)},
                           {"connections", counts.connections},
                           {"requests", counts.requests},
                           {"exceptions", counts.exceptions},
                           {"faults", counts.faults},
                           {"registers_read", counts.registersRead},
                           {"registers_written", counts.registersWritten}});
}

} // namespace mxonline
