#pragma once

#include "ToolObserver.h"
#include "station/StationChoice.h"

#include <mxonline/Coupler.h>

#include <string>

namespace mxtool {

/// The options of a verb that reaches the coupler of a station.
struct CouplerChoice
{
    StationChoice station;
    std::string target;
    bool isVerbose = false; ///< Tell at the end what went over the bus.
};

/// Adds FILE, --db, --target and --verbose to `verb`. `choice` must outlive the parsing.
void addCouplerChoice(CLI::App& verb, CouplerChoice& choice);

/// Tells of repeated requests, and ends an operation between two writes after an `Interruption`.
class CouplerObserver : public ToolObserver
{
public:
    void progress(std::size_t done, std::size_t total, const char* things) override;
};

/// The coupler of a planned station. Repeated requests are reported while it is used; with
/// --verbose what went over the bus is reported at its end, also after a failure.
class StationCoupler
{
public:
    /// Checks the target, then reads and plans the station. Sends nothing. Throws a `Failure`.
    explicit StationCoupler(const CouplerChoice& choice);

    /// Of a station that was planned before, with the target of `choice`.
    StationCoupler(const CouplerChoice& choice, const mxonline::Target& checked,
                   const mxstation::Plan& planned);

    ~StationCoupler();
    StationCoupler(const StationCoupler&) = delete;
    StationCoupler& operator=(const StationCoupler&) = delete;

    const mxstation::Plan& plan() const { return stationPlan; }
    mxonline::Coupler& coupler() { return connection; }

private:
    StationCoupler(const CouplerChoice& choice, const mxonline::Target& checked);

    std::string target;
    bool tellsTraffic;
    CouplerObserver observer;
    mxstation::Plan stationPlan;
    mxonline::Coupler connection;
};

} // namespace mxtool
