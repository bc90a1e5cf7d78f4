// What abidw describes of libmxonline, as a host sees it: its headers, without the types that the
// library uses inside. One function for each group of headers takes their classes.

#include <mxonline/Coupler.h>
#include <mxonline/OutputSetting.h>
#include <mxonline/ReadBack.h>
#include <mxonline/SampleText.h>
#include <mxonline/SimulatedFault.h>
#include <mxonline/Simulator.h>
#include <mxonline/SimulatorScript.h>
#include <mxonline/TimeText.h>
#include <mxonline/Watch.h>
#include <mxonline/mxonline.h>

using namespace mxonline;

namespace described {

void targets(Target, TcpTarget, SerialTarget, Traffic) {}

void couplers(Coupler*, CouplerState, ModuleState, CouplerDifference, ModuleDifference,
              ParameterDifference, NeededWrites, DifferenceUse, Identification)
{}

void reports(ApplyReport, AppliedModule, AppliedParameter, WriteOutcome) {}

void channels(NamedChannel, ChannelValue, Watch*, Sample, SampleTable) {}

void outputs(OutputSetting*, OutputValue, SetOutput, OutputReport) {}

void simulators(Simulator*, SimulatorOptions, SimulatorCounts, SimulatorObserver*, SimulatorEvent,
                SimulatorEventKind, SimulatorScript*, SimulatorScriptHost*)
{}

void cInterface(mxonline_coupler*, mxonline_difference*, mxonline_difference_use, mxonline_report*,
                mxonline_watch*, mxonline_outputs*, mxonline_output_value, mxonline_simulator*)
{}

void faults(SimulatedFault, FaultDescription, FaultKind) {}

} // namespace described
