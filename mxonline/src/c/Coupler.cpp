#include "c/OnlineHandles.h"

#include <mxonline/ReadBack.h>

namespace {

using mxonline::SharedCoupler;

mxmodule_bytes* ofCoupler(const mxonline_coupler* handle, mxmodule_error** error,
                          std::string (*resultOf)(SharedCoupler&))
{
    return mxmodule::callFromC(
        error, [&] { return mxmodule::newBytes(resultOf(*mxonline::sharedOf(handle))); });
}

} // namespace

mxonline_coupler* mxonline_connect(const mxstation_plan* plan, const char* target,
                                   mxmodule_error** error)
{
    return mxmodule::callFromC(error, [&] {
        const auto planned = mxstation::plannedStationOf(plan);
        const mxonline::Target stated =
            mxonline::targetOf(mxmodule::requireText(target, "the target of a coupler"));
        return new mxonline_coupler{std::make_shared<SharedCoupler>(
            SharedCoupler{planned, stated, mxonline::Coupler(planned->plan, stated)})};
    });
}

void mxonline_coupler_free(mxonline_coupler* coupler)
{
    delete coupler;
}

mxmodule_bytes* mxonline_coupler_target(const mxonline_coupler* coupler, mxmodule_error** error)
{
    return ofCoupler(coupler, error,
                     [](SharedCoupler& shared) { return targetText(shared.target); });
}

mxmodule_bytes* mxonline_coupler_traffic(const mxonline_coupler* coupler, mxmodule_error** error)
{
    return ofCoupler(coupler, error,
                     [](SharedCoupler& shared) { return trafficJson(shared.coupler.traffic()); });
}

mxmodule_bytes* mxonline_read_station(mxonline_coupler* coupler, mxmodule_error** error)
{
    return ofCoupler(coupler, error, [](SharedCoupler& shared) {
        return withParametersOf(shared.planned->station, shared.planned->plan, shared.target,
                                shared.coupler.read());
    });
}

mxonline_difference* mxonline_difference_of(mxonline_coupler* coupler, mxmodule_error** error)
{
    return mxmodule::callFromC(error, [&] {
        return new mxonline_difference{mxonline::sharedOf(coupler)->coupler.difference()};
    });
}

// The handle is made first: a report must not be lost because there is no memory for it.
mxonline_report* mxonline_apply(mxonline_coupler* coupler, const mxonline_difference* confirmed,
                                mxmodule_error** error)
{
    return mxmodule::callFromC(error, [&] {
        auto made = std::make_unique<mxonline_report>();
        made->report = mxonline::sharedOf(coupler)->coupler.apply(
            mxmodule::requirePointer(confirmed, "a difference").difference);
        return made.release();
    });
}
