#include "station/CouplerChoice.h"

#include "CommandLineOptions.h"
#include "Diagnostic.h"
#include "Interruption.h"

#include <CLI/CLI.hpp>

namespace mxtool {

void addCouplerChoice(CLI::App& verb, CouplerChoice& choice)
{
    addStationChoice(verb, choice.station);
    CLI::Option* const target =
        verb.add_option("--target", choice.target,
                        "The coupler: tcp:HOST[:PORT] or rtu:DEVICE[,BAUD[,PARITY[,STOPBITS]]]");
    target->type_name("TARGET")->required();
    rejectEmptyValue(*target);
    verb.add_flag("--verbose", choice.isVerbose,
                  "Tell at the end how many requests were sent and registers read and written");
}

void CouplerObserver::progress(std::size_t done, std::size_t total, const char* things)
{
    ToolObserver::progress(done, total, things);
    if (done < total && Interruption::isRequested()) {
        throw Failure(Origin::Output, "",
                      "interrupted by a signal, so that the rest was not written",
                      "run the same call again: it writes what still differs");
    }
}

StationCoupler::StationCoupler(const CouplerChoice& choice)
    : StationCoupler(choice, mxonline::targetOf(choice.target))
{}

// After the target is checked: arguments of one call have no order.
StationCoupler::StationCoupler(const CouplerChoice& choice, const mxonline::Target& checked)
    : StationCoupler(choice, checked, loadPlan(choice.station))
{}

StationCoupler::StationCoupler(const CouplerChoice& choice, const mxonline::Target& checked,
                               const mxstation::Plan& planned)
    : target(mxonline::targetText(checked)),
      tellsTraffic(choice.isVerbose),
      stationPlan(planned),
      connection(stationPlan, checked, &observer)
{}

StationCoupler::~StationCoupler()
{
    try {
        if (tellsTraffic) {
            report({Severity::Note, target, mxonline::trafficText(connection.traffic())});
        }
    } catch (const std::exception&) { // without memory; a destructor must not throw
    }
}

} // namespace mxtool
