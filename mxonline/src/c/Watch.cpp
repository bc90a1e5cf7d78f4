#include "c/OnlineHandles.h"

#include <mxonline/SampleText.h>

mxonline_watch* mxonline_watch_of(mxonline_coupler* coupler, const char* const* names, size_t count,
                                  mxmodule_error** error)
{
    return mxmodule::callFromC(error, [&] {
        const auto& shared = mxonline::sharedOf(coupler);
        return new mxonline_watch{
            shared, mxonline::Watch(shared->coupler,
                                    mxmodule::requireTexts(names, count, "names of channels",
                                                           "the name of a channel"))};
    });
}

void mxonline_watch_free(mxonline_watch* watch)
{
    delete watch;
}

mxmodule_bytes* mxonline_watch_channels(const mxonline_watch* watch, mxmodule_error** error)
{
    return mxmodule::bytesOfHandle(watch, "a watch", error, [](const mxonline_watch& one) {
        return channelsJson(one.watch.channels());
    });
}

mxmodule_bytes* mxonline_watch_sample(mxonline_watch* watch, mxmodule_error** error)
{
    return mxmodule::bytesOfHandle(watch, "a watch", error, [](mxonline_watch& one) {
        return sampleJson(one.watch.channels(), one.watch.sample());
    });
}
